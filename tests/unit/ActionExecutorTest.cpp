#include "Core/Action/ActionExecutor.h"

#include "support/ActionDesk.h"
#include "support/CapturedOutput.h"
#include "support/Wait.h"

#include <gtest/gtest.h>

#include <thread>

namespace Tavrin {
namespace {

using Testing::ActionDesk;
using Testing::CapturedOutput;
using Testing::drainEvents;

class Executor : public testing::Test {
protected:
    void run(ActionType type, const QString& value)
    {
        executor->execute({QUuid::createUuid(), QStringLiteral("tên"), 1, 256, type, value, false, 0});
        drainEvents();
    }

    ActionDesk desk;
    FakeWorkspace& workspace = desk.workspace;
    FakeScriptRunner& scripts = desk.scripts;
    std::unique_ptr<ActionExecutor> executor = std::make_unique<ActionExecutor>(desk.services());
};

TEST_F(Executor, OpensAPathItself)
{
    run(ActionType::launchApp, QStringLiteral("/opt/app.desktop"));
    EXPECT_EQ(workspace.opened, QStringList{QStringLiteral("/opt/app.desktop")});
    EXPECT_TRUE(workspace.fallbacks.isEmpty());
}

TEST_F(Executor, FallsBackForAPathThatDoesNotOpen)
{
    workspace.broken = {QStringLiteral("/nowhere")};
    run(ActionType::launchApp, QStringLiteral("/nowhere"));
    EXPECT_EQ(workspace.fallbacks, QStringList{QStringLiteral("path /nowhere")});
}

TEST_F(Executor, OpensAnIdentifierWhereTheWorkspaceFindsIt)
{
    workspace.applications[QStringLiteral("com.apple.Terminal")] = QStringLiteral("/usr/x.desktop");
    run(ActionType::launchApp, QStringLiteral("com.apple.Terminal"));
    EXPECT_EQ(workspace.opened, QStringList{QStringLiteral("/usr/x.desktop")});
    EXPECT_TRUE(workspace.fallbacks.isEmpty());
}

TEST_F(Executor, FallsBackToTheIdentifierWhenTheApplicationDoesNotOpen)
{
    workspace.applications[QStringLiteral("Safari")] = QStringLiteral("/usr/x.desktop");
    workspace.broken = {QStringLiteral("/usr/x.desktop")};
    run(ActionType::launchApp, QStringLiteral("Safari"));
    EXPECT_EQ(workspace.fallbacks, QStringList{QStringLiteral("identifier Safari")});
}

TEST_F(Executor, FallsBackByIdentifierOrNameWhenTheWorkspaceKnowsNothing)
{
    run(ActionType::launchApp, QStringLiteral("com.example.Missing"));
    run(ActionType::launchApp, QStringLiteral("Safari"));
    run(ActionType::launchApp, QString());
    EXPECT_EQ(workspace.fallbacks,
        (QStringList{QStringLiteral("identifier com.example.Missing"), QStringLiteral("name Safari"),
            QStringLiteral("name ")}));
    EXPECT_TRUE(workspace.opened.isEmpty());
}

TEST_F(Executor, OpensAddresses)
{
    run(ActionType::openURL, QStringLiteral("  example.org/board\n"));
    EXPECT_EQ(workspace.addresses, QStringList{QStringLiteral("https://example.org/board")});
    run(ActionType::openURL, QStringLiteral("https://exa mple.org:port"));
    EXPECT_EQ(workspace.addresses.size(), 1) << "what does not parse opens nothing";
}

struct AddressCase {
    const char* target;
    const char* address;
};

class Address : public testing::TestWithParam<AddressCase> { };

TEST_P(Address, GetsASchemeUnlessItHasOneOfTwo)
{
    const auto url = webAddress(QString::fromUtf8(GetParam().target));
    ASSERT_EQ(url.has_value(), GetParam().address != nullptr) << GetParam().target;
    if (url) {
        EXPECT_EQ(url->toEncoded().toStdString(), GetParam().address);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, Address,
    testing::Values(AddressCase{"http://a.vn", "http://a.vn"},
        AddressCase{"https://a.vn/x?y=z", "https://a.vn/x?y=z"}, AddressCase{" \t\na.vn \n", "https://a.vn"},
        AddressCase{"mailto:a@b.vn", "https://mailto:a@b.vn"}, AddressCase{"ftp://a.vn", "https://ftp//a.vn"},
        AddressCase{"HTTP://a.vn", "https://http//a.vn"},
        AddressCase{"example.org/board?nhóm=kỹ thuật",
            "https://example.org/board?nh%C3%B3m=k%E1%BB%B9%20thu%E1%BA%ADt"},
        AddressCase{"https://example.org/tra?q=xin%20chào", "https://example.org/tra?q=xin%20ch%C3%A0o"},
        AddressCase{"localhost:8080/x", "https://localhost:8080/x"}, AddressCase{"a b", nullptr}));

TEST_F(Executor, RunsScriptsUnchanged)
{
    const QString script = QStringLiteral("print -r -- \"{date}\"\n\texit 1 ");
    run(ActionType::shellScript, script);
    EXPECT_EQ(scripts.shellScripts, QStringList{script});
}

TEST_F(Executor, PrintsWhyAScriptCouldNotStart)
{
    scripts.failureReason = QStringLiteral("No such file");
    CapturedOutput output;
    run(ActionType::shellScript, QStringLiteral("true"));
    executor->runAppleScript(QStringLiteral("beep"));
    EXPECT_EQ(output.lines(),
        (QStringList{QStringLiteral("Lỗi thực thi script: No such file"),
            QStringLiteral("AppleScript error: No such file")}));
}

TEST_F(Executor, HandsEverySystemActionToTheDesktop)
{
    for (const SystemActionType action : allSystemActionTypes)
        run(ActionType::systemAction, rawValue(action));
    EXPECT_EQ(
        desk.systemActions.performed, std::vector(allSystemActionTypes.begin(), allSystemActionTypes.end()));
}

TEST_F(Executor, KnowsSystemActionsByTheirExactNameOnly)
{
    for (const char* key : {"", "LockScreen", "lockscreen", " lockScreen", "lockScreen\n", "restartFinder2"})
        run(ActionType::systemAction, QString::fromUtf8(key));
    EXPECT_TRUE(desk.systemActions.performed.empty());
}

TEST_F(Executor, SaysOfAFailedSystemActionWhatItsKindSays)
{
    desk.systemActions.failureReason = QStringLiteral("không được phép");
    const QStringList silent{QStringLiteral("lockScreen"), QStringLiteral("sleepDisplay"),
        QStringLiteral("screenshotToClipboard"), QStringLiteral("openMissionControl"),
        QStringLiteral("restartFinder"), QStringLiteral("restartDock")};
    for (const SystemActionType action : allSystemActionTypes) {
        CapturedOutput output;
        run(ActionType::systemAction, rawValue(action));
        QStringList expected;
        if (action == SystemActionType::toggleHiddenFiles)
            expected.append(QStringLiteral("Lỗi thực thi script: không được phép"));
        else if (!silent.contains(rawValue(action)))
            expected.append(QStringLiteral("AppleScript error: không được phép"));
        EXPECT_EQ(output.lines(), expected) << rawValue(action).toStdString();
    }
}

TEST_F(Executor, ReturnsAtOnceAndKeepsTheOrder)
{
    std::thread([this] {
        for (const char* script : {"1", "2", "3"})
            executor->execute({{}, {}, 0, 0, ActionType::shellScript, QString::fromUtf8(script), true, 0});
    }).join();
    EXPECT_TRUE(scripts.shellScripts.isEmpty());
    drainEvents();
    EXPECT_EQ(
        scripts.shellScripts, (QStringList{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}));
}

TEST_F(Executor, DoesNothingOnceItIsGone)
{
    executor->execute({{}, {}, 0, 0, ActionType::shellScript, QStringLiteral("x"), true, 0});
    executor.reset();
    drainEvents();
    EXPECT_TRUE(scripts.shellScripts.isEmpty());
}

} // namespace
} // namespace Tavrin
