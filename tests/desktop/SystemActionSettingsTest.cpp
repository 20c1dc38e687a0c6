// What changes a setting changes the one that the desktop reads: real GSettings with its database, and real
// Xfconf.
#include "support/Program.h"
#include "support/SystemActionsFixture.h"

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

using enum SystemActionType;

class SettingsFixture : public SystemActionsFixture {
protected:
    SettingsFixture()
    {
        setVariable("GSETTINGS_BACKEND", QByteArray());
        for (const char* name : {"gsettings", "xfconf-query"})
            useReal(QString::fromLatin1(name));
    }

    /// Installs schemas that have one key each.
    void installSchema(
        const QByteArray& schema, const QByteArray& key, const QByteArray& type, const QByteArray& value)
    {
        folder.write(u"schemas/"_s + QString::fromLatin1(schema) + u".gschema.xml",
            "<schemalist><schema id='" + schema + "' path='/tavrin/test/" + schema + "/'><key name='" + key
                + "' type='" + type + "'><default>" + value + "</default></key></schema></schemalist>");
        outputOf(u"/usr/bin/glib-compile-schemas"_s, {folder.path(u"schemas"_s)});
        setVariable("GSETTINGS_SCHEMA_DIR", folder.path(u"schemas"_s).toLocal8Bit());
    }

    static QByteArray setting(const QString& schema, const QString& key)
    {
        return outputOf(u"/usr/bin/gsettings"_s, {u"get"_s, schema, key}).trimmed();
    }

    static QByteArray xfceSetting(const QString& channel, const QString& property)
    {
        QProcess process;
        process.start(u"/usr/bin/xfconf-query"_s, {u"-c"_s, channel, u"-p"_s, property});
        EXPECT_TRUE(waitFor([&] { return process.state() == QProcess::NotRunning; }));
        return process.readAllStandardOutput().trimmed();
    }

    static void installTheme(const QString& name)
    {
        EXPECT_TRUE(QDir().mkpath(qEnvironmentVariable("XDG_DATA_HOME") + u"/themes/" + name + u"/gtk-3.0"));
    }

    /// Performs, and waits until the setting is this.
    void performUntil(
        SystemActionType action, const std::function<QByteArray()>& read, const QByteArray& value)
    {
        perform(action);
        EXPECT_TRUE(waitFor([&] { return read() == value && isQuiet(); }))
            << read().constData() << qPrintable(failures.join(u'\n'));
    }

    MockBus session{QDBusConnection::sessionBus()};
};

class HiddenFiles : public SettingsFixture, public testing::WithParamInterface<QStringList> { };

TEST_P(HiddenFiles, AreShownAndHiddenAgain)
{
    const QString desktop = GetParam().at(0);
    const QString schema = GetParam().at(1);
    const QString key = GetParam().at(2);
    session.own(desktop);
    standIn(u"nautilus"_s);
    installSchema(schema.toLatin1(), key.toLatin1(), "b", "false");
    const auto read = [&] { return setting(schema, key); };
    performUntil(toggleHiddenFiles, read, "true");
    performUntil(toggleHiddenFiles, read, "false");
    // Two presses, one right after the other, end where they began.
    perform(toggleHiddenFiles);
    performUntil(toggleHiddenFiles, read, "false");
    EXPECT_EQ(failures, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Schemas, HiddenFiles,
    testing::Values(
        QStringList{u"org.gnome.Shell"_s, u"org.gtk.gtk4.Settings.FileChooser"_s, u"show-hidden"_s},
        QStringList{u"org.mate.SessionManager"_s, u"org.mate.caja.preferences"_s, u"show-hidden-files"_s},
        QStringList{u"org.Cinnamon"_s, u"org.nemo.preferences"_s, u"show-hidden-files"_s}));

class HiddenFilesElsewhere : public SettingsFixture { };

TEST_F(HiddenFilesElsewhere, OfThunarAreShownThoughItWasNeverSet)
{
    session.own(u"org.xfce.SessionManager"_s);
    standIn(u"thunar"_s);
    const auto read = [] { return xfceSetting(u"thunar"_s, u"/last-show-hidden"_s); };
    EXPECT_EQ(read(), "");
    performUntil(toggleHiddenFiles, read, "true");
    performUntil(toggleHiddenFiles, read, "false");
    EXPECT_EQ(failures, QStringList());
}

TEST_F(HiddenFilesElsewhere, OfDolphinAreShownInEveryWindow)
{
    session.own(u"org.kde.plasmashell"_s);
    session.own(u"org.kde.dolphin-4711"_s);
    session.introspections[u"/dolphin"_s] = u"<node name=\"Dolphin_1\"/><node name=\"Dolphin_2\"/>"_s;
    standIn(u"dolphin"_s);
    perform(toggleHiddenFiles);
    const QStringList calls{u"/dolphin/Dolphin_1 activateAction show_hidden_files"_s,
        u"/dolphin/Dolphin_2 activateAction show_hidden_files"_s};
    EXPECT_TRUE(waitFor([&] { return session.record == calls && isQuiet(); }))
        << qPrintable((session.record + failures).join(u'\n'));
    EXPECT_EQ(failures, QStringList());
}

TEST_F(HiddenFilesElsewhere, OfDolphinAreShownWhenItStartsNext)
{
    session.own(u"org.kde.plasmashell"_s);
    standIn(u"dolphin"_s);
    standIn(u"kreadconfig5"_s);
    standIn(u"kwriteconfig5"_s);
    const QString key = u" --file %1/dolphin/view_properties/global/.directory --group Settings"
                        " --key HiddenFilesShown"_s.arg(qEnvironmentVariable("XDG_DATA_HOME"));
    perform(toggleHiddenFiles);
    const QStringList first{u"kreadconfig5"_s + key, u"kwriteconfig5"_s + key + u" --type bool true"};
    EXPECT_TRUE(waitFor([&] { return log() == first && isQuiet(); })) << qPrintable(log().join(u'\n'));
    standIn(u"kreadconfig5"_s, "echo true");
    perform(toggleHiddenFiles);
    EXPECT_TRUE(waitFor([&] {
        return log().value(3) == u"kwriteconfig5"_s + key + u" --type bool false" && isQuiet();
    })) << qPrintable(log().join(u'\n'));
    EXPECT_EQ(failures, QStringList());
}

class DarkMode : public SettingsFixture { };

TEST_F(DarkMode, IsPreferredAndNoLonger)
{
    const auto read = [] { return setting(u"org.gnome.desktop.interface"_s, u"color-scheme"_s); };
    EXPECT_EQ(read(), "'default'");
    performUntil(toggleDarkMode, read, "'prefer-dark'");
    performUntil(toggleDarkMode, read, "'default'");
    for (int press = 0; press < 3; ++press)
        perform(toggleDarkMode);
    performUntil(toggleDarkMode, read, "'default'");
    EXPECT_EQ(failures, QStringList());
}

TEST_F(DarkMode, OfXfceIsTheSiblingOfTheTheme)
{
    session.own(u"org.xfce.SessionManager"_s);
    for (const QString& name : {u"Lúa Mới"_s, u"Lúa Mới-Dark"_s, u"Lúa Mới-Dark-Xanh"_s, u"Đêm-dark"_s})
        installTheme(name);
    outputOf(u"/usr/bin/xfconf-query"_s,
        {u"-c"_s, u"xsettings"_s, u"-p"_s, u"/Net/ThemeName"_s, u"-n"_s, u"-t"_s, u"string"_s, u"-s"_s,
            u"Lúa Mới"_s});
    const auto read = [] { return xfceSetting(u"xsettings"_s, u"/Net/ThemeName"_s); };
    performUntil(toggleDarkMode, read, "Lúa Mới-Dark");
    performUntil(toggleDarkMode, read, "Lúa Mới");
    EXPECT_EQ(failures, QStringList());

    outputOf(u"/usr/bin/xfconf-query"_s,
        {u"-c"_s, u"xsettings"_s, u"-p"_s, u"/Net/ThemeName"_s, u"-s"_s, u"Đêm-dark"_s});
    EXPECT_EQ(failureOf(toggleDarkMode), u"Không có giao diện sáng/tối cùng họ với “Đêm-dark”"_s);
    EXPECT_EQ(read(), "Đêm-dark");
}

class DarkTheme : public SettingsFixture, public testing::WithParamInterface<QStringList> { };

TEST_P(DarkTheme, IsTheSiblingOfTheTheme)
{
    const QString desktop = GetParam().at(0);
    const QString schema = GetParam().at(1);
    session.own(desktop);
    installSchema(schema.toLatin1(), "gtk-theme", "s", "'Gạo Mới-light'");
    installTheme(u"Gạo Mới-light"_s);
    installTheme(u"Gạo Mới-dark"_s);
    const auto read = [&] { return setting(schema, u"gtk-theme"_s); };
    performUntil(toggleDarkMode, read, "'Gạo Mới-dark'");
    performUntil(toggleDarkMode, read, "'Gạo Mới-light'");
    EXPECT_EQ(failures, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Schemas, DarkTheme,
    testing::Values(QStringList{u"org.mate.SessionManager"_s, u"org.mate.interface"_s},
        QStringList{u"org.Cinnamon"_s, u"org.cinnamon.desktop.interface"_s}));

TEST_F(DarkMode, OfPlasmaIsTheSiblingOfTheColorScheme)
{
    session.own(u"org.kde.plasmashell"_s);
    const auto colors = [this](const QByteArray& list) {
        standIn(u"plasma-apply-colorscheme"_s,
            "[ $1 = --list-schemes ] || exit 0; printf '%s\\n' 'You have the following color schemes:' "
                + list);
    };
    const auto last = [this] { return log().value(log().size() - 1); };
    colors("' * BreezeClassic' ' * BreezeDark' ' * BreezeLight (current color scheme)' ' * Other Dark'");
    perform(toggleDarkMode);
    EXPECT_TRUE(waitFor([&] { return last() == u"plasma-apply-colorscheme BreezeDark"_s; }))
        << qPrintable((log() + failures).join(u'\n'));
    EXPECT_TRUE(waitFor([this] { return isQuiet(); }));
    colors("' * BreezeDark (current color scheme)' ' * BreezeLight'");
    perform(toggleDarkMode);
    EXPECT_TRUE(waitFor([&] { return last() == u"plasma-apply-colorscheme BreezeLight"_s; }));
    EXPECT_TRUE(waitFor([this] { return isQuiet(); }));
    EXPECT_EQ(failures, QStringList());
    colors("' * BreezeDark' ' * Mai Vàng (current color scheme)'");
    EXPECT_EQ(failureOf(toggleDarkMode), u"Không có giao diện sáng/tối cùng họ với “Mai Vàng”"_s);
}

} // namespace
} // namespace Tavrin
