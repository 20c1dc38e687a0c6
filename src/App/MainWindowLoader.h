#pragma once

#include "Core/Shell/MainWindow.h"

#include <QPluginLoader>

namespace Tavrin {

/// Loads the views library, which comes with the program, when a window is first wanted. Main thread.
class MainWindowLoader : public MainWindowFactory {
public:
    void prepare() override;
    /// Null, after one printed line, if the library is missing or is not ours.
    std::unique_ptr<MainWindow> createMainWindow(const MainWindowServices& services) override;

private:
    QPluginLoader m_loader;
};

} // namespace Tavrin
