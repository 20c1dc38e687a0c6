#include "Platform/Linux/XdgAutostart.h"

#include "Core/Storage/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Tavrin {

XdgAutostart::XdgAutostart(const QString& configHome, const QString& executable)
    : m_entryPath(configHome + u"/autostart/app.tavrin.Tavrin.desktop")
    , m_executable(executable)
{
}

bool XdgAutostart::isEnabled() const
{
    QByteArray entry;
    return !AtomicFile::read(m_entryPath, entry) && isActiveAutostartEntry(entry);
}

std::optional<QString> XdgAutostart::registerItem()
{
    // TryExec: once the program is removed, desktops pass over what is left of it.
    const QString entry
        = QStringLiteral("[Desktop Entry]\n"
                         "Type=Application\n"
                         "Name=Tavrin\n"
                         "Comment=Trình quản lý phím tắt toàn cục\n"
                         "TryExec=%1\n"
                         "Exec=%2\n"
                         "Icon=app.tavrin.Tavrin\n"
                         "Terminal=false\n"
                         "StartupNotify=false\n"
                         "X-GNOME-Autostart-enabled=true\n")
              .arg(QString(m_executable).replace(u'\\', QStringLiteral("\\\\")), quotedForExec(m_executable));
    // A failure shows when the entry is written.
    QDir().mkpath(QFileInfo(m_entryPath).path());
    return AtomicFile::write(m_entryPath, entry.toUtf8());
}

std::optional<QString> XdgAutostart::unregisterItem()
{
    QFile file(m_entryPath);
    if (file.remove())
        return std::nullopt;
    return file.errorString();
}

QString quotedForExec(const QString& path)
{
    QString quoted;
    for (const QChar character : path) {
        // Quoting escapes four characters; the string itself is then escaped once more as a value, and
        // "%" would begin a field code.
        if (character == u'"' || character == u'`' || character == u'$')
            quoted += QStringLiteral("\\\\");
        else if (character == u'\\')
            quoted += QStringLiteral("\\\\\\");
        else if (character == u'%')
            quoted += u'%';
        quoted += character;
    }
    return u'"' + quoted + u'"';
}

bool isActiveAutostartEntry(const QByteArray& entry)
{
    for (const QByteArray& line : entry.split('\n')) {
        const QByteArray text = line.simplified().replace(' ', "").toLower();
        if (text == "hidden=true" || text == "x-gnome-autostart-enabled=false")
            return false;
    }
    return true;
}

} // namespace Tavrin
