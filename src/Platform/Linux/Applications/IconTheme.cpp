#include "Platform/Linux/Applications/IconTheme.h"

#include "Platform/Linux/Applications/DesktopIconTheme.h"
#include "Platform/Linux/Applications/GLibPointers.h"
#include "Platform/Linux/Applications/RegularFile.h"
#include "Platform/Linux/XdgPaths.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <array>
#include <chrono>
#include <unistd.h>

namespace Tavrin {
namespace {

using namespace std::chrono_literals;

/// A new application or another theme is seen when the list is next looked at; the pictures of one list are
/// asked for within less.
constexpr auto themesLifetime = 5s;

/// The largest index in use, hicolor's, has 60 kilobytes.
constexpr qint64 longestIndex = 1 << 20;

/// Themes name one another; this many in all end every circle and every joke.
constexpr std::size_t mostThemes = 16;

/// The formats that the specification knows.
constexpr std::array<QStringView, 3> suffixes{u".png", u".svg", u".xpm"};

/// What a picture of a theme may not be called if it is to stay inside the theme's folder.
bool isPlainName(const QString& name)
{
    return !name.isEmpty() && !name.contains(u'/') && !name.contains(QChar(u'\0'));
}

/// Entries name pictures without a suffix; some forget that.
QString withoutSuffix(const QString& name)
{
    for (const QStringView suffix : suffixes) {
        if (name.endsWith(suffix))
            return name.chopped(suffix.size());
    }
    return name;
}

class IndexFile {
public:
    explicit IndexFile(const QByteArray& contents)
        : m_file(g_key_file_new())
    {
        g_key_file_load_from_data(m_file.get(), contents.constData(), static_cast<gsize>(contents.size()),
            G_KEY_FILE_NONE, nullptr);
    }

    QStringList list(const QByteArray& group, const char* key) const
    {
        QStringList result;
        for (const QString& item : text(group, key).split(u',', Qt::SkipEmptyParts))
            result.append(item.trimmed());
        return result;
    }
    QString text(const QByteArray& group, const char* key) const
    {
        return QString::fromUtf8(
            GAllocated<gchar>(g_key_file_get_string(m_file.get(), group.constData(), key, nullptr)).get());
    }
    int number(const QByteArray& group, const char* key, int missing) const
    {
        bool isNumber = false;
        const int value = text(group, key).toInt(&isNumber);
        return isNumber && value >= 0 && value <= largestNumber ? value : missing;
    }

private:
    static constexpr int largestNumber = 10'000;

    GKeyFilePointer m_file;
};

IconFolder folderOf(const IndexFile& index, const QString& path)
{
    const QByteArray group = path.toUtf8();
    const int size = index.number(group, "Size", 0);
    const int scale = std::max(1, index.number(group, "Scale", 1));
    const QString type = index.text(group, "Type");
    int smallest = size;
    int largest = size;
    if (type == u"Scalable") {
        smallest = index.number(group, "MinSize", size);
        largest = index.number(group, "MaxSize", size);
    } else if (type != u"Fixed") {
        constexpr int usualThreshold = 2;
        const int threshold = index.number(group, "Threshold", usualThreshold);
        smallest = size - threshold;
        largest = size + threshold;
    }
    return {path, smallest * scale, largest * scale};
}

} // namespace

int IconFolder::distance(int pixels) const
{
    return std::max({0, smallest - pixels, pixels - largest});
}

IconThemeIndex parseIconTheme(const QByteArray& contents)
{
    const QByteArray group = "Icon Theme";
    const IndexFile file(contents);
    IconThemeIndex index{file.list(group, "Inherits"), {}};
    for (const char* key : {"Directories", "ScaledDirectories"}) {
        for (const QString& path : file.list(group, key))
            index.folders.append(folderOf(file, path));
    }
    return index;
}

IconThemeSource IconThemeSource::ofDesktop()
{
    const QString dataHome = XdgPaths::dataHome();
    return {
        {
            QDir::homePath() + u"/.icons",
            dataHome + u"/icons",
            dataHome + u"/flatpak/exports/share/icons",
            QStringLiteral("/var/lib/flatpak/exports/share/icons"),
            QStringLiteral("/usr/local/share/icons"),
            QStringLiteral("/usr/share/icons"),
            QStringLiteral("/usr/local/share/pixmaps"),
            QStringLiteral("/usr/share/pixmaps"),
        },
        desktopIconTheme,
    };
}

IconThemes::IconThemes(IconThemeSource source)
    : m_source(std::move(source))
{
}

QStringList IconThemes::files(const QString& name, int pixels) const
{
    if (!isPlainName(name))
        return {};
    const QString plainName = withoutSuffix(name);
    QStringList files;
    const auto all = themes();
    for (const Theme& theme : *all) {
        QList<IconFolder> folders = theme.folders;
        // A picture that is too large loses less than one that is too small.
        std::ranges::stable_sort(folders, {}, [pixels](const IconFolder& folder) {
            return std::pair(folder.distance(pixels), folder.largest < pixels);
        });
        for (const IconFolder& folder : folders) {
            for (const QStringView suffix : suffixes) {
                const QString file = folder.path + u'/' + plainName + suffix;
                if (access(QFile::encodeName(file).constData(), R_OK) == 0)
                    files.append(file);
            }
        }
    }
    return files;
}

std::shared_ptr<const std::vector<IconThemes::Theme>> IconThemes::themes() const
{
    const std::lock_guard lock(m_mutex);
    const auto now = std::chrono::steady_clock::now();
    if (!m_themes || now - m_readAt > themesLifetime) {
        m_themes = std::make_shared<const std::vector<Theme>>(readThemes());
        m_readAt = now;
    }
    return m_themes;
}

std::vector<IconThemes::Theme> IconThemes::readThemes() const
{
    // Every theme builds on hicolor, where applications put their own pictures; Adwaita has what desktop
    // entries take for granted.
    QStringList waiting{m_source.themeName()};
    const QStringList last{QStringLiteral("Adwaita"), QStringLiteral("hicolor")};
    QSet<QString> seen(last.begin(), last.end());
    std::vector<Theme> themes;
    while (!waiting.isEmpty() && themes.size() < mostThemes) {
        const QString name = waiting.takeFirst();
        if (!isPlainName(name) || seen.contains(name))
            continue;
        seen.insert(name);
        QStringList parents;
        themes.push_back(readTheme(name, parents));
        waiting = parents + waiting;
    }
    for (const QString& name : last) {
        QStringList parents;
        themes.push_back(readTheme(name, parents));
    }
    Theme unthemed;
    for (const QString& folder : m_source.folders)
        unthemed.folders.append({folder, 0, 0});
    themes.push_back(std::move(unthemed));
    return themes;
}

IconThemes::Theme IconThemes::readTheme(const QString& name, QStringList& parents) const
{
    IconThemeIndex index;
    for (const QString& base : m_source.folders) {
        const auto contents = readRegularFile(base + u'/' + name + u"/index.theme", longestIndex);
        if (!contents)
            continue;
        index = parseIconTheme(*contents);
        break;
    }
    parents = index.parents;
    Theme theme;
    for (const IconFolder& folder : std::as_const(index.folders)) {
        for (const QString& base : m_source.folders) {
            const QString path = base + u'/' + name + u'/' + folder.path;
            if (QFileInfo(path).isDir())
                theme.folders.append({path, folder.smallest, folder.largest});
        }
    }
    return theme;
}

} // namespace Tavrin
