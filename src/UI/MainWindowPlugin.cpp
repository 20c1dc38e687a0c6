#include "UI/MainWindowPlugin.h"

#include "UI/QmlMainWindow.h"

namespace Tavrin {

std::unique_ptr<MainWindow> MainWindowPlugin::createMainWindow(const MainWindowServices& services)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return std::make_unique<QmlMainWindow>(services);
}

} // namespace Tavrin
