#include "Platform/Linux/OpenPanel/LinuxOpenPanel.h"

#include "Core/Support/Diagnostics.h"
#include "Platform/Linux/OpenPanel/ChooserTool.h"
#include "Platform/Linux/OpenPanel/PortalFileChooser.h"

namespace Tavrin {
namespace {

/// One panel, whoever shows it.
class RunningPanel : public OpenPanelRequest {
public:
    RunningPanel(
        ChildWatcher& children, WorkerPool& workers, std::uintptr_t window, OpenPanel::Completion completion)
        : m_children(children)
        , m_window(window)
        , m_completion(std::move(completion))
    {
        workers.run([this, address = m_mailbox.address()] {
            auto bus = std::make_shared<PortalConnection>();
            // `this` is touched on its own thread only, and only while the mailbox lives.
            address.post([this, bus] { askPortal(bus); });
        });
    }

private:
    void askPortal(const std::shared_ptr<PortalConnection>& bus)
    {
        m_portal = std::make_unique<PortalFileChooser>(bus, m_window, [this](const PortalAnswer& answer) {
            if (answer.isAvailable)
                finish(answer.path);
            else
                startTool();
        });
    }

    void startTool()
    {
        m_portal.reset();
        m_tool = std::make_unique<ChooserTool>(
            m_children, chooserTools(qgetenv("XDG_CURRENT_DESKTOP"), m_window), [this](const auto& answer) {
                if (!answer)
                    Diagnostics::printLine(QStringLiteral(
                        "Không mở được hộp thoại chọn file: cần xdg-desktop-portal, zenity hoặc kdialog."));
                finish(answer.value_or(std::nullopt));
            });
    }

    /// The completion may destroy this object.
    void finish(const std::optional<QString>& path) { std::exchange(m_completion, nullptr)(path); }

    ChildWatcher& m_children;
    std::uintptr_t m_window;
    OpenPanel::Completion m_completion;
    std::unique_ptr<PortalFileChooser> m_portal;
    std::unique_ptr<ChooserTool> m_tool;
    Mailbox m_mailbox;
};

} // namespace

LinuxOpenPanel::LinuxOpenPanel(ChildWatcher& children)
    : m_children(children)
{
}

std::unique_ptr<OpenPanelRequest> LinuxOpenPanel::chooseApplication(
    std::uintptr_t window, Completion completion)
{
    return std::make_unique<RunningPanel>(m_children, m_workers, window, std::move(completion));
}

} // namespace Tavrin
