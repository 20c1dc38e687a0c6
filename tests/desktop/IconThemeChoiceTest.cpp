// The icon theme that the user has chosen, from a settings manager on the private X server and from files.
#include "Platform/Linux/Applications/DesktopIconTheme.h"

#include "support/SettingsManager.h"
#include "support/Wait.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Testing::SettingsBytes;
using Testing::SettingsManager;
using Testing::waitFor;

void writeConfiguration(const QString& name, const QByteArray& text)
{
    const QString path = qEnvironmentVariable("XDG_CONFIG_HOME") + u'/' + name;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
}

TEST(IconThemeChoice, IsReadFromTheSettingsOfTheDesktop)
{
    writeConfiguration(QStringLiteral("gtk-3.0/settings.ini"), "[Settings]\ngtk-icon-theme-name=Gtk\n");
    EXPECT_EQ(desktopIconTheme(), QStringLiteral("Gtk"));
    writeConfiguration(QStringLiteral("kdeglobals"), "[Icons]\nTheme=breeze\n");
    EXPECT_EQ(desktopIconTheme(), QStringLiteral("breeze"));
    {
        SettingsManager manager(SettingsBytes().text("Net/IconThemeName", "Papirus"));
        EXPECT_TRUE(waitFor([] { return desktopIconTheme() == QStringLiteral("Papirus"); }));
        manager.set(SettingsBytes().text("Net/IconThemeName", "Yaru"));
        EXPECT_TRUE(waitFor([] { return desktopIconTheme() == QStringLiteral("Yaru"); }));
        manager.set(SettingsBytes().text("Net/ThemeName", "Yaru"));
        EXPECT_TRUE(waitFor([] { return desktopIconTheme() == QStringLiteral("breeze"); }));
    }
    writeConfiguration(QStringLiteral("kdeglobals"), "not a settings file");
    EXPECT_TRUE(waitFor([] { return desktopIconTheme() == QStringLiteral("Gtk"); }));
}

TEST(IconThemeChoice, NeedsNoServer)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":no-such-display");
    writeConfiguration(QStringLiteral("kdeglobals"), "[Icons]\nTheme=breeze\n");
    EXPECT_EQ(desktopIconTheme(), QStringLiteral("breeze"));
    qputenv("DISPLAY", display);
}

} // namespace
} // namespace Tavrin
