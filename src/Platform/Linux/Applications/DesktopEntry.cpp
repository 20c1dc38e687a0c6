#include "Platform/Linux/Applications/DesktopEntry.h"

#include "Platform/Linux/Applications/GLibPointers.h"

#include <QFile>
#include <QFileInfo>

namespace Tavrin {
namespace {

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;
constexpr QStringView suffix = u".desktop";

QString text(GKeyFile* file, const char* key)
{
    return QString::fromUtf8(GAllocated<gchar>(g_key_file_get_string(file, group, key, nullptr)).get());
}

QString localText(GKeyFile* file, const char* key)
{
    const GAllocated<gchar> value(g_key_file_get_locale_string(file, group, key, nullptr, nullptr));
    return QString::fromUtf8(value.get());
}

bool isSet(GKeyFile* file, const char* key)
{
    return g_key_file_get_boolean(file, group, key, nullptr) != FALSE;
}

/// A word of Exec without its field codes (a "%" and a letter); nothing if it was nothing else.
std::optional<QString> withoutFieldCodes(const QString& word)
{
    QString result;
    for (qsizetype index = 0; index < word.size(); ++index) {
        if (word[index] != u'%') {
            result += word[index];
            continue;
        }
        ++index;
        if (index < word.size() && word[index] == u'%')
            result += u'%';
    }
    if (result.isEmpty() && !word.isEmpty())
        return std::nullopt;
    return result;
}

} // namespace

std::optional<QStringList> commandLineOf(const QString& exec)
{
    gchar** words = nullptr;
    if (!g_shell_parse_argv(exec.toUtf8().constData(), nullptr, &words, nullptr))
        return std::nullopt;
    const GStringVector owner(words);
    QStringList result;
    for (; *words; ++words) {
        if (const auto word = withoutFieldCodes(QString::fromUtf8(*words)))
            result.append(*word);
    }
    return result;
}

std::optional<DesktopEntry> parseDesktopEntry(const QString& path, const QByteArray& contents)
{
    const GKeyFilePointer file(g_key_file_new());
    if (!g_key_file_load_from_data(file.get(), contents.constData(), static_cast<gsize>(contents.size()),
            G_KEY_FILE_KEEP_TRANSLATIONS, nullptr))
        return std::nullopt;
    if (text(file.get(), G_KEY_FILE_DESKTOP_KEY_TYPE) != QStringLiteral(G_KEY_FILE_DESKTOP_TYPE_APPLICATION))
        return std::nullopt;

    DesktopEntry entry;
    entry.path = path;
    entry.id = QFileInfo(path).fileName();
    if (entry.id.endsWith(suffix))
        entry.id.chop(suffix.size());
    entry.name = text(file.get(), G_KEY_FILE_DESKTOP_KEY_NAME);
    entry.localName = localText(file.get(), G_KEY_FILE_DESKTOP_KEY_NAME);
    entry.windowClass = text(file.get(), G_KEY_FILE_DESKTOP_KEY_STARTUP_WM_CLASS);
    entry.commandLine = commandLineOf(text(file.get(), G_KEY_FILE_DESKTOP_KEY_EXEC)).value_or(QStringList());
    entry.categories = text(file.get(), G_KEY_FILE_DESKTOP_KEY_CATEGORIES).split(u';', Qt::SkipEmptyParts);
    entry.hidden = isSet(file.get(), G_KEY_FILE_DESKTOP_KEY_HIDDEN);
    entry.noDisplay = isSet(file.get(), G_KEY_FILE_DESKTOP_KEY_NO_DISPLAY);
    entry.terminal = isSet(file.get(), G_KEY_FILE_DESKTOP_KEY_TERMINAL);
    entry.startupNotify = isSet(file.get(), G_KEY_FILE_DESKTOP_KEY_STARTUP_NOTIFY);
    return entry;
}

std::optional<DesktopEntry> readDesktopEntry(const QString& path)
{
    // Entries are a few kilobytes; the limit keeps a wrongly named file from filling the memory.
    constexpr qint64 sizeLimit = 1 << 20;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return parseDesktopEntry(path, file.read(sizeLimit));
}

} // namespace Tavrin
