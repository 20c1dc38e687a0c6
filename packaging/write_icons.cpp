// Writes the program's mark for the desktop's icon theme: write-icons GLYPH.svg FILE.svg SIZE=FILE.png...
#include "Platform/Linux/Tray/ProgramMark.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <span>

using namespace Tavrin;

namespace {

/// The layout of the drawing that is scaled to any other size.
constexpr int scalableSize = 128;

int fail(const QString& file)
{
    std::fprintf(stderr, "write-icons: %s\n", qUtf8Printable(file));
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    const std::span<char*> words(argv, static_cast<std::size_t>(argc));
    if (words.size() < 3)
        return fail(QStringLiteral("GLYPH.svg FILE.svg SIZE=FILE.png..."));

    QFile source(QFile::decodeName(words[1]));
    if (!source.open(QIODevice::ReadOnly))
        return fail(source.fileName());
    const QByteArray glyph = source.readAll();

    QFile scalable(QFile::decodeName(words[2]));
    if (!scalable.open(QIODevice::WriteOnly) || scalable.write(programMark(glyph, scalableSize)) < 0)
        return fail(scalable.fileName());

    for (const char* word : words.subspan(3)) {
        const QByteArray request(word);
        const qsizetype separator = request.indexOf('=');
        const QString file = QFile::decodeName(request.mid(separator + 1));
        if (!paintProgramMark(glyph, request.first(separator).toInt()).save(file, "PNG"))
            return fail(file);
    }
    return EXIT_SUCCESS;
}
