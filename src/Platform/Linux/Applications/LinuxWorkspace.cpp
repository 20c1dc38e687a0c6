#include "Platform/Linux/Applications/LinuxWorkspace.h"

#include "Platform/Linux/Applications/ApplicationOpener.h"
#include "Platform/Linux/Process/ChildWatcher.h"

namespace Tavrin {

LinuxWorkspace::LinuxWorkspace(ChildWatcher& children)
{
    m_opener
        = std::make_shared<ApplicationOpener>([this, &children, address = m_mailbox.address()](pid_t pid) {
              // `this` and the children are touched on our own thread only, and only while the mailbox lives.
              address.post([this, &children, pid] {
                  children.watch(pid, [opener = m_opener, pid](int) { opener->childEnded(pid); });
              });
          });
}

LinuxWorkspace::~LinuxWorkspace()
{
    m_opener->end();
}

void LinuxWorkspace::locateApplication(const QString& bundleIdentifier, LocateCompletion completion)
{
    // The completion is moved on, so that what it holds is released on our own thread.
    m_workers.run(
        [bundleIdentifier, completion = std::move(completion), address = m_mailbox.address()]() mutable {
            auto location = ApplicationLocator::locateIdentifier(bundleIdentifier);
            address.post([completion = std::move(completion), location] { completion(location); });
        });
}

void LinuxWorkspace::openApplication(
    const QString& location, const ActivationContext& context, OpenCompletion completion)
{
    m_workers.run([location, context, completion = std::move(completion), opener = m_opener,
                      address = m_mailbox.address()]() mutable {
        opener->open(location, context, [&](bool opened) {
            address.post([completion = std::move(completion), opened] { completion(opened); });
        });
    });
}

void LinuxWorkspace::openURL(const QUrl& url, const ActivationContext& context)
{
    m_workers.run(
        [address = url.toEncoded(), context, opener = m_opener] { opener->openURL(address, context); });
}

void LinuxWorkspace::openWithFallback(FallbackTarget kind, const QString& target)
{
    m_workers.run([kind, target, opener = m_opener] { opener->openWithFallback(kind, target); });
}

} // namespace Tavrin
