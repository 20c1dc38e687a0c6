#include "App/MainWindowLoader.h"

#include "Core/Support/Companion.h"
#include "Core/Support/Diagnostics.h"

namespace Tavrin {

void MainWindowLoader::prepare()
{
    if (m_loader.fileName().isEmpty())
        m_loader.setFileName(companionFile(QStringLiteral("libTavrinViews.so")));
    m_loader.load();
}

std::unique_ptr<MainWindow> MainWindowLoader::createMainWindow(const MainWindowServices& services)
{
    prepare();
    auto* factory = qobject_cast<MainWindowFactory*>(m_loader.instance());
    if (!factory) {
        Diagnostics::printLine(u"Không mở được cửa sổ: " + m_loader.errorString());
        return nullptr;
    }
    return factory->createMainWindow(services);
}

} // namespace Tavrin
