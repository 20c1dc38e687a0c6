#include "Core/HotKey/HotKeyManager.h"

#include "Core/Storage/ConfigStore.h"
#include "Platform/Fake/FakePlatform.h"
#include "support/ActionDesk.h"
#include "support/CapturedOutput.h"
#include "support/TemporaryFolder.h"
#include "support/Wait.h"

#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using Testing::CapturedOutput;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using State = HotKeyRegistration::State;

class Manager : public testing::Test {
protected:
    void SetUp() override
    {
        folder.write(QStringLiteral("Tavrin/shortcuts.json"), "[]");
        store = std::make_unique<ConfigStore>(folder.path());
        executor = std::make_unique<ActionExecutor>(desk.services());
    }
    HotKeyManager& manager()
    {
        if (!m_manager)
            m_manager = std::make_unique<HotKeyManager>(backend, *store, *executor, accessibility);
        return *m_manager;
    }
    void endManager() { m_manager.reset(); }

    static ShortcutItem script(const QString& name, std::uint32_t keyCode, bool isEnabled = true)
    {
        return {QUuid::createUuid(), name, keyCode, 256, ActionType::shellScript, name, isEnabled, 0};
    }
    std::vector<std::pair<std::uint32_t, QString>> table()
    {
        std::vector<std::pair<std::uint32_t, QString>> rows;
        for (const auto& [id, item] : manager().idToShortcut())
            rows.emplace_back(id, item.name);
        return rows;
    }

    Testing::TemporaryFolder folder;
    FakeHotKeyBackend backend;
    Testing::ActionDesk desk;
    FakeScriptRunner& scripts = desk.scripts;
    FakeAccessibility accessibility;
    std::unique_ptr<ConfigStore> store;
    std::unique_ptr<ActionExecutor> executor;

private:
    std::unique_ptr<HotKeyManager> m_manager;
};

TEST_F(Manager, GivesDenseIdsAndReusesThatOfAFailedItem)
{
    backend.failures[2] = eventHotKeyExistsErr;
    CapturedOutput output;
    manager().syncShortcuts(std::vector{
        script(QStringLiteral("a"), 1), script(QStringLiteral("b"), 2), script(QStringLiteral("c"), 3)});
    EXPECT_EQ(output.lines(), QStringList{QStringLiteral("Đăng ký phím tắt thất bại cho b: code -9878")});
    EXPECT_THAT(table(), ElementsAre(Pair(1, QStringLiteral("a")), Pair(2, QStringLiteral("c"))));
    EXPECT_EQ(manager().currentId(), 3U);
    EXPECT_EQ(manager().registeredHotKeys().size(), 2U);
    EXPECT_EQ(backend.batches, 1) << "the whole list is one batch";
    for (const auto& [id, ref] : manager().registeredHotKeys())
        EXPECT_EQ(backend.entries.at(ref).hotKeyID, (EventHotKeyID{0x5476526E, id}));
}

TEST_F(Manager, PrintsAnyStatusAndKeepsOneLine)
{
    backend.failures[1] = eventHotKeyInvalidErr;
    backend.failures[2] = -50;
    CapturedOutput output;
    manager().syncShortcuts(
        std::vector{script(QStringLiteral("dòng 1\ndòng\u20282 %1"), 1), script(QStringLiteral("\"x\""), 2)});
    EXPECT_EQ(output.lines(),
        (QStringList{QStringLiteral("Đăng ký phím tắt thất bại cho dòng 1 dòng 2 %1: code -9879"),
            QStringLiteral("Đăng ký phím tắt thất bại cho \"x\": code -50")}));
}

TEST_F(Manager, NeverRegistersADisabledItem)
{
    auto item = script(QStringLiteral("a"), 1, false);
    manager().syncShortcuts(std::vector{item});
    EXPECT_THAT(table(), IsEmpty());
    EXPECT_TRUE(backend.entries.empty());
    item.isEnabled = true;
    manager().syncShortcuts(std::vector{item});
    EXPECT_EQ(table().size(), 1U);
}

TEST_F(Manager, ReplacesAllRegistrations)
{
    manager().syncShortcuts(std::vector{script(QStringLiteral("a"), 1), script(QStringLiteral("b"), 2)});
    manager().syncShortcuts(std::vector{script(QStringLiteral("c"), 3)});
    EXPECT_THAT(table(), ElementsAre(Pair(1, QStringLiteral("c"))));
    EXPECT_EQ(backend.entries.size(), 1U);
}

TEST_F(Manager, RegistersAnItemWithoutModifiers)
{
    auto item = script(QStringLiteral("F5"), 96);
    item.modifiers = 0;
    manager().syncShortcuts(std::vector{item});
    EXPECT_TRUE(backend.press({96, 0}));
    Testing::drainEvents();
    EXPECT_EQ(scripts.shellScripts, QStringList{QStringLiteral("F5")});
}

TEST_F(Manager, PausingUnregistersAndResumingReadsTheStore)
{
    store->add(script(QStringLiteral("a"), 1));
    store->add(script(QStringLiteral("b"), 2, false));
    manager().syncShortcuts(store->shortcuts());
    int changes = 0;
    QObject::connect(&manager(), &HotKeyManager::pausedChanged, [&] { ++changes; });

    manager().setPaused(true);
    EXPECT_TRUE(manager().isPaused());
    EXPECT_TRUE(manager().registeredHotKeys().empty());
    EXPECT_TRUE(manager().idToShortcut().empty());
    EXPECT_EQ(manager().currentId(), 1U);
    EXPECT_TRUE(backend.entries.empty());

    store->add(script(QStringLiteral("c"), 3));
    manager().syncShortcuts(store->shortcuts());
    EXPECT_TRUE(backend.entries.empty()) << "while paused a synchronisation only unregisters";

    manager().setPaused(false);
    EXPECT_THAT(table(), ElementsAre(Pair(1, QStringLiteral("a")), Pair(2, QStringLiteral("c"))));
    EXPECT_EQ(changes, 2);
}

TEST_F(Manager, ResumingWhenNotPausedRegistersAnew)
{
    store->add(script(QStringLiteral("a"), 1));
    manager().setPaused(false);
    EXPECT_THAT(table(), ElementsAre(Pair(1, QStringLiteral("a"))));
    EXPECT_EQ(backend.batches, 1);
    manager().setPaused(false);
    EXPECT_EQ(backend.batches, 2);
    EXPECT_EQ(backend.entries.size(), 1U);
}

TEST_F(Manager, RunsTheShortcutWhateverTheSignature)
{
    manager().syncShortcuts(std::vector{script(QStringLiteral("a"), 1)});
    const HotKeyEvent event{{0xDEADBEEF, 1}, 77};
    EXPECT_EQ(backend.deliver(&event), noErr);
    EXPECT_TRUE(scripts.shellScripts.isEmpty()) << "the handler itself must return at once";
    Testing::drainEvents();
    EXPECT_EQ(scripts.shellScripts, QStringList{QStringLiteral("a")});
}

TEST_F(Manager, PassesTheTimeOfThePressOn)
{
    desk.workspace.applications[QStringLiteral("org.example.App")] = QStringLiteral("/x.desktop");
    auto item = script(QStringLiteral("app"), 1);
    item.actionType = ActionType::launchApp;
    item.actionValue = QStringLiteral("org.example.App");
    manager().syncShortcuts(std::vector{item});
    backend.press({1, 256}, 123456);
    Testing::drainEvents();
    EXPECT_THAT(desk.workspace.openTimes, ElementsAre(123456U));
}

TEST_F(Manager, IgnoresAnUnknownIdAndAMissingEvent)
{
    manager().syncShortcuts(std::vector{script(QStringLiteral("a"), 1)});
    const HotKeyEvent unknown{{HotKeyManager::signature, 2}, 0};
    EXPECT_EQ(backend.deliver(&unknown), noErr);
    EXPECT_EQ(backend.deliver(nullptr), eventNotHandledErr);
    Testing::drainEvents();
    EXPECT_TRUE(scripts.shellScripts.isEmpty());
}

TEST_F(Manager, RunsACopyOfTheItem)
{
    std::vector items{script(QStringLiteral("old"), 1)};
    manager().syncShortcuts(items);
    items[0].actionValue = QStringLiteral("new");
    backend.press({1, 256});
    Testing::drainEvents();
    EXPECT_EQ(scripts.shellScripts, QStringList{QStringLiteral("old")});
}

TEST_F(Manager, SettlesPendingRegistrations)
{
    backend.pendingKeyCodes = {1, 2};
    manager().syncShortcuts(std::vector{
        script(QStringLiteral("a"), 1), script(QStringLiteral("b"), 2), script(QStringLiteral("c"), 3)});
    EXPECT_EQ(table().size(), 3U);
    const EventHotKeyRef a = manager().registeredHotKeys().at(1);
    const EventHotKeyRef b = manager().registeredHotKeys().at(2);
    CapturedOutput output;
    backend.settle(a, State::registered, noErr);
    backend.settle(b, State::failed, eventHotKeyExistsErr);
    backend.settle(99, State::failed, eventHotKeyExistsErr);
    EXPECT_EQ(output.lines(), QStringList{QStringLiteral("Đăng ký phím tắt thất bại cho b: code -9878")});
    EXPECT_THAT(table(), ElementsAre(Pair(1, QStringLiteral("a")), Pair(3, QStringLiteral("c"))));
}

TEST_F(Manager, RegistersAnewWhenTheKeyboardChanged)
{
    store->add(script(QStringLiteral("a"), 1));
    manager().syncShortcuts(store->shortcuts());
    backend.invalidate();
    EXPECT_EQ(backend.batches, 2);
    EXPECT_THAT(table(), ElementsAre(Pair(1, QStringLiteral("a"))));
    manager().setPaused(true);
    backend.invalidate();
    EXPECT_TRUE(backend.entries.empty());
}

TEST_F(Manager, CarriesOnWithoutAHandler)
{
    backend.installStatus = -9999;
    CapturedOutput output;
    manager().syncShortcuts(std::vector{script(QStringLiteral("a"), 1)});
    EXPECT_EQ(output.lines(),
        QStringList{QStringLiteral("Không thể cài đặt Carbon Event Handler trên Dispatcher: -9999")});
    EXPECT_EQ(table().size(), 1U) << "registration goes on";
    EXPECT_FALSE(backend.press({1, 256})) << "but nothing fires";
}

TEST_F(Manager, UnregistersEverythingAtTheEnd)
{
    manager().syncShortcuts(std::vector{script(QStringLiteral("a"), 1)});
    endManager();
    EXPECT_TRUE(backend.entries.empty());
    const HotKeyEvent event{{HotKeyManager::signature, 1}, 0};
    EXPECT_EQ(backend.deliver(&event), eventNotHandledErr);
}

TEST_F(Manager, AsksForAccessibilityAndOpensTheSettingsOnlyWhenRefused)
{
    EXPECT_TRUE(manager().isAccessibilityGranted());
    manager().requestAccessibility();
    EXPECT_EQ(accessibility.requests, 1);
    EXPECT_EQ(accessibility.settingsOpened, 0);
    accessibility.trusted = false;
    EXPECT_FALSE(manager().isAccessibilityGranted());
    manager().requestAccessibility();
    EXPECT_EQ(accessibility.requests, 2);
    EXPECT_EQ(accessibility.settingsOpened, 1);
}

} // namespace
} // namespace Tavrin
