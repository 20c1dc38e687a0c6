#include "Platform/Linux/Applications/DesktopEntry.h"

#include "Platform/Linux/Applications/GLibPointers.h"
#include "Platform/Linux/Applications/RegularFile.h"

#include <QFileInfo>

namespace Tavrin {
namespace {

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;

QString text(GKeyFile* file, const char* key)
{
    return QString::fromUtf8(GAllocated<gchar>(g_key_file_get_string(file, group, key, nullptr)).get());
}

/// In the user's language without a locale; untranslated where there is no translation.
QString localText(GKeyFile* file, const char* key, const char* locale = nullptr)
{
    const GAllocated<gchar> value(g_key_file_get_locale_string(file, group, key, locale, nullptr));
    return QString::fromUtf8(value.get());
}

QString vietnameseText(GKeyFile* file, const char* key)
{
    constexpr const char* locale = "vi_VN";
    const GAllocated<gchar> translation(g_key_file_get_locale_for_key(file, group, key, locale));
    return translation ? localText(file, key, locale) : QString();
}

QStringList list(GKeyFile* file, const char* key)
{
    return text(file, key).split(u';', Qt::SkipEmptyParts);
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
    if (entry.id.endsWith(desktopEntrySuffix))
        entry.id.chop(desktopEntrySuffix.size());
    entry.name = text(file.get(), G_KEY_FILE_DESKTOP_KEY_NAME);
    entry.localName = localText(file.get(), G_KEY_FILE_DESKTOP_KEY_NAME);
    entry.vietnameseName = vietnameseText(file.get(), G_KEY_FILE_DESKTOP_KEY_NAME);
    entry.icon = localText(file.get(), G_KEY_FILE_DESKTOP_KEY_ICON);
    entry.windowClass = text(file.get(), G_KEY_FILE_DESKTOP_KEY_STARTUP_WM_CLASS);
    entry.commandLine = commandLineOf(text(file.get(), G_KEY_FILE_DESKTOP_KEY_EXEC)).value_or(QStringList());
    entry.tryExec = text(file.get(), G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    entry.categories = list(file.get(), G_KEY_FILE_DESKTOP_KEY_CATEGORIES);
    entry.onlyShowIn = list(file.get(), G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    entry.notShowIn = list(file.get(), G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
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
    const auto contents = readRegularFile(path, sizeLimit);
    return contents ? parseDesktopEntry(path, *contents) : std::nullopt;
}

} // namespace Tavrin
