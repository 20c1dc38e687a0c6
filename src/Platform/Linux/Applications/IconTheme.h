#pragma once

#include <QStringList>
#include <functional>
#include <mutex>
#include <vector>

namespace Tavrin {

/// One folder of an icon theme, as its index.theme describes it (Icon Theme Specification 0.13).
struct IconFolder {
    /// Below the theme's own folder.
    QString path;
    /// The sizes its pictures are drawn for or look well at, in pixels: points times its scale.
    int smallest = 0;
    int largest = 0;

    /// By how many pixels a size misses those of this folder; 0 if it fits.
    int distance(int pixels) const;
};

struct IconThemeIndex {
    QStringList parents;
    QList<IconFolder> folders;
};

/// Reads an index.theme; empty if it is none.
IconThemeIndex parseIconTheme(const QByteArray& contents);

/// Where pictures are looked for, and which theme the user has chosen.
struct IconThemeSource {
    /// Folders with themes, the ones that count first at the front. Pictures of no theme lie directly in
    /// them.
    QStringList folders;
    /// The name of the user's theme; empty if nobody says. Called on any thread, may take its time.
    std::function<QString()> themeName;

    /// The desktop's.
    static IconThemeSource ofDesktop();
};

/// Finds pictures by name in the user's theme, in those that it builds on, and in those that every desktop
/// has. Reads the disk; any thread.
class IconThemes {
public:
    explicit IconThemes(IconThemeSource source);

    /// Files with the picture of this name, those that suit a square of so many pixels best at the front.
    /// The folders of the themes are taken as they were up to a few seconds ago.
    QStringList files(const QString& name, int pixels) const;

private:
    /// Folders that are there, of one theme or of none.
    struct Theme {
        QList<IconFolder> folders;
    };

    std::shared_ptr<const std::vector<Theme>> themes() const;
    std::vector<Theme> readThemes() const;
    Theme readTheme(const QString& name, QStringList& parents) const;

    IconThemeSource m_source;
    mutable std::mutex m_mutex;
    mutable std::shared_ptr<const std::vector<Theme>> m_themes;
    mutable std::chrono::steady_clock::time_point m_readAt;
};

} // namespace Tavrin
