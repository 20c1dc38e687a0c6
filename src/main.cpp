#include "App/AppDelegate.h"
#include "App/MainWindowLoader.h"
#include "Platform/Platform.h"

#include <QApplication>

#include <cstdlib>
#include <vector>

using namespace Tavrin;

namespace {

/// The words of our own command line mean nothing to us or to the toolkit; the platform's do.
std::vector<char*> toolkitCommandLine(char* programName, const Platform& platform)
{
    std::vector<char*> words{programName};
    for (const char* argument : platform.toolkitArguments())
        words.push_back(const_cast<char*>(argument));
    words.push_back(nullptr);
    return words;
}

int run(Platform& platform)
{
    if (platform.instance() == Platform::Instance::second)
        return EXIT_SUCCESS;

    AppSettings settings(platform.settingsFile(), platform.loginItem(), platform.application());
    platform.application().setActivationPolicy(settings.activationPolicy());
    MainWindowLoader windows;
    AppDelegate delegate(platform, settings, windows);
    // Not quit(): that asks the window first, and the window only ever hides.
    const auto terminate = [](int exitCode) { QApplication::exit(exitCode); };
    QObject::connect(
        &delegate, &AppDelegate::terminateRequested, &delegate, [terminate] { terminate(EXIT_SUCCESS); });
    platform.start({
        [&delegate](const ActivationContext& context) { delegate.applicationShouldHandleReopen(context); },
        [&delegate] { delegate.showGuideWindow(); },
        terminate,
    });
    QMetaObject::invokeMethod(
        &delegate, [&delegate] { delegate.applicationDidFinishLaunching(); }, Qt::QueuedConnection);
    return QApplication::exec();
}

} // namespace

int main(int /*argc*/, char** argv)
{
    // Before the toolkit: if there is nothing to run on, the toolkit would end the process its own way.
    auto platform = Platform::create();
    if (!platform)
        return EXIT_FAILURE;
    std::vector<char*> commandLine = toolkitCommandLine(argv[0], *platform);
    int wordCount = static_cast<int>(commandLine.size()) - 1;
    QApplication application(wordCount, commandLine.data());
    QApplication::setApplicationName(QStringLiteral("Tavrin"));
    QApplication::setDesktopFileName(QStringLiteral("app.tavrin.Tavrin"));
    QApplication::setQuitOnLastWindowClosed(false);

    const int exitCode = run(*platform);
    // Its tray icon is the toolkit's and must not outlive it.
    platform.reset();
    return exitCode;
}
