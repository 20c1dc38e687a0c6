#pragma once

#include "Core/Shell/MainWindow.h"

#include <QObject>

namespace Tavrin {

/// What the program finds when it loads the views library.
class MainWindowPlugin : public QObject, public MainWindowFactory {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TavrinMainWindowFactoryIid)
    Q_INTERFACES(Tavrin::MainWindowFactory)

public:
    std::unique_ptr<MainWindow> createMainWindow(const MainWindowServices& services) override;
};

} // namespace Tavrin
