// time_window COUNT ROUNDS: one line a step of the main window over COUNT shortcuts: what it was (open,
// reopen, scroll, letter) and the nanoseconds in which the main thread was at work on it, until its frame was
// drawn.
#include "Clock.h"

#include "Core/Model/KeyCodeHelper.h"
#include "Core/Model/ShortcutJson.h"
#include "Core/Storage/AtomicFile.h"
#include "UI/QmlMainWindow.h"
#include "support/WindowDesk.h"

#include <QDir>
#include <QGuiApplication>
#include <QQuickItem>
#include <QTemporaryDir>

#include <array>
#include <cstdio>
#include <functional>

using namespace Tavrin;
using namespace Tavrin::Bench;

namespace {

/// A step after which all looks as before draws nothing. A frame that is due comes within some milliseconds.
constexpr Nanoseconds frameLimit = 50 * millisecond;

/// Between the turns of the event loop, so that what the X server does is not held up.
constexpr Nanoseconds pause = millisecond / 2;
constexpr Nanoseconds settleTime = 60 * millisecond;

constexpr int pages = 10;

/// Typed letter by letter, then taken back: many rows, few, none, and many again.
const QString searched = QStringLiteral("sao lưu 77x");

std::vector<ShortcutItem> shortcuts(int count)
{
    const std::array<std::pair<ActionType, QString>, 5> actions{{
        {ActionType::launchApp, QStringLiteral("org.example.App%1")},
        {ActionType::openURL, QStringLiteral("https://example.org/trang/%1?q=t%C3%ACm")},
        {ActionType::quickText,
            QStringLiteral(R"({"mode":"paste","restoreClipboard":true,"text":"Trân trọng %1"})")},
        {ActionType::shellScript, QStringLiteral("rsync -a --delete \"$HOME/Tài liệu/%1\" /mnt/backup/")},
        {ActionType::systemAction, QStringLiteral("volumeUp")},
    }};
    constexpr std::uint32_t keys = 50;
    std::vector<ShortcutItem> items;
    for (int index = 0; index < count; ++index) {
        const auto& [type, value] = actions.at(static_cast<std::size_t>(index) % actions.size());
        items.push_back({QUuid::createUuid(), QStringLiteral("Sao lưu thư mục %1").arg(index),
            static_cast<std::uint32_t>(index) % keys, cmdKey | optionKey, type,
            value.contains(u"%1") ? value.arg(index) : value, index % 3 != 0, ShortcutItem::currentDate()});
    }
    return items;
}

struct Work {
    Nanoseconds processor = 0;
    Nanoseconds passed = 0;

    template <typename Block>
    void add(Block&& block)
    {
        const Nanoseconds processorBefore = processorTime();
        const Nanoseconds before = now();
        block();
        passed += now() - before;
        processor += processorTime() - processorBefore;
    }

private:
    static Nanoseconds processorTime()
    {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
    }
};

void turn()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// Lets what a step has left behind happen before the next one.
void settle()
{
    for (const Nanoseconds end = now() + settleTime; now() < end; sleepFor(pause))
        turn();
}

/// Prints the main thread's work from the beginning of a step until the window has drawn what it changed: the
/// step itself and the turns of the event loop that follow. The step gives the window.
void time(const char* name, const std::function<QQuickWindow&()>& step)
{
    Work work;
    QQuickWindow* window = nullptr;
    work.add([&] { window = &step(); });
    bool isDrawn = false;
    const auto drawn = QObject::connect(window, &QQuickWindow::frameSwapped, [&] { isDrawn = true; });
    for (Nanoseconds waited = 0; !isDrawn && waited < frameLimit; waited += pause) {
        sleepFor(pause);
        work.add(turn);
    }
    QObject::disconnect(drawn);
    std::printf("%s %lld %lld\n", name, work.processor, work.passed);
    settle();
}

/// The first item below `root` whose class or base is `className`.
QQuickItem* findItem(QQuickItem* root, const char* className)
{
    if (root->inherits(className))
        return root;
    for (QQuickItem* child : root->childItems()) {
        if (QQuickItem* found = findItem(child, className))
            return found;
    }
    return nullptr;
}

/// Puts so many shortcuts where the store will find them; the folder.
QString prepared(const QString& folder, int count)
{
    QDir().mkpath(folder + u"/Tavrin");
    if (AtomicFile::write(folder + u"/Tavrin/shortcuts.json", encodeShortcuts(shortcuts(count))))
        std::exit(EXIT_FAILURE);
    return folder;
}

void scroll(QmlMainWindow& window)
{
    QQuickItem* list = findItem(window.rootObject(), "QQuickListView");
    for (int page = 0; page < pages; ++page)
        time("scroll", [&]() -> QQuickWindow& {
            list->setProperty("contentY", list->property("contentY").toReal() + list->height());
            return window;
        });
}

void typeKey(QQuickWindow& window, int key, const QString& text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&window, &event);
    }
}

/// Types a text into the search letter by letter, and takes it back.
void search(QmlMainWindow& window)
{
    findItem(window.rootObject(), "QQuickTextInput")->forceActiveFocus();
    settle();
    const auto type = [&](int key, const QString& text) {
        time("letter", [&]() -> QQuickWindow& {
            typeKey(window, key, text);
            return window;
        });
    };
    for (const QChar letter : searched)
        type(Qt::Key_unknown, letter);
    if (window.rootObject()->property("content").value<ContentModel*>()->searchText() != searched)
        std::exit(EXIT_FAILURE);
    for (qsizetype length = searched.size(); length-- > 0;)
        type(Qt::Key_Backspace, {});
}

void measure(const MainWindowServices& services, int rounds)
{
    for (int round = 0; round < rounds; ++round) {
        std::unique_ptr<QmlMainWindow> window;
        time(round == 0 ? "first-open" : "open", [&]() -> QQuickWindow& {
            window = std::make_unique<QmlMainWindow>(services);
            window->show({});
            return *window;
        });
        window->hide();
        settle();
        time("show", [&]() -> QQuickWindow& {
            window->show({});
            return *window;
        });
        scroll(*window);
        search(*window);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return EXIT_FAILURE;
    QGuiApplication application(argc, argv);
    // As the program draws.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QTemporaryDir folder;
    Tavrin::Testing::WindowDesk desk(prepared(folder.path(), std::atoi(argv[1])));
    // The wizard of the first run would lie over the list.
    desk.settings.setHasCompletedOnboarding(true);
    measure(desk.services([] { return true; }), std::atoi(argv[2]));
    return EXIT_SUCCESS;
}
