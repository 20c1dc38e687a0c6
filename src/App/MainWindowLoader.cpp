#include "App/MainWindowLoader.h"

#include "Core/Support/Diagnostics.h"

#include <QCoreApplication>
#include <QFile>

namespace Tavrin {
namespace {

QString viewsLibrary()
{
    const QString folder = QCoreApplication::applicationDirPath() + u'/';
    const QString name = QStringLiteral(TAVRIN_VIEWS_LIBRARY);
    const QString beside = folder + name;
    return QFile::exists(beside) ? beside : folder + QStringLiteral(TAVRIN_INSTALLED_LIBRARIES) + u'/' + name;
}

} // namespace

std::unique_ptr<MainWindow> MainWindowLoader::createMainWindow(const MainWindowServices& services)
{
    if (m_loader.fileName().isEmpty())
        m_loader.setFileName(viewsLibrary());
    auto* factory = qobject_cast<MainWindowFactory*>(m_loader.instance());
    if (!factory) {
        Diagnostics::printLine(u"Không mở được cửa sổ: " + m_loader.errorString());
        return nullptr;
    }
    return factory->createMainWindow(services);
}

} // namespace Tavrin
