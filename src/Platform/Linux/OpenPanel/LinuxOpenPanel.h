#pragma once

#include "Core/Shell/OpenPanel.h"
#include "Core/Support/WorkerPool.h"

namespace Tavrin {

class ChildWatcher;

/// The desktop's file chooser: the portal's, or where no portal answers, zenity's or kdialog's. Nothing of it
/// exists before the first panel.
class LinuxOpenPanel : public OpenPanel {
public:
    /// `children` outlives the panels.
    explicit LinuxOpenPanel(ChildWatcher& children);

    std::unique_ptr<OpenPanelRequest> chooseApplication(
        std::uintptr_t window, Completion completion) override;

private:
    ChildWatcher& m_children;
    WorkerPool m_workers;
};

} // namespace Tavrin
