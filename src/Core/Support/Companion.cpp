#include "Core/Support/Companion.h"

#include <QCoreApplication>
#include <QFile>

namespace Tavrin {

QString companionFile(const QString& name)
{
    const QString folder = QCoreApplication::applicationDirPath() + u'/';
    const QString beside = folder + name;
    return QFile::exists(beside) ? beside
                                 : folder + QStringLiteral(TAVRIN_INSTALLED_COMPANIONS) + u'/' + name;
}

} // namespace Tavrin
