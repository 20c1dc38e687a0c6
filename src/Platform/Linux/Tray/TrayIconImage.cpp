#include "Platform/Linux/Tray/TrayIconImage.h"

#include "Core/Shell/SymbolTable.h"
#include "Platform/Linux/Tray/ProgramMark.h"

#include <QFile>
#include <QPixmap>

namespace Tavrin {

QIcon trayIcon()
{
    QFile glyph(QStringLiteral(":/Tavrin/Tray/%1.svg").arg(symbolPicture(u"command.square.fill")));
    if (!glyph.open(QIODevice::ReadOnly))
        return {};
    const QByteArray drawing = glyph.readAll();
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(QPixmap::fromImage(paintProgramMark(drawing, size)));
    return icon;
}

} // namespace Tavrin
