#include "Platform/Linux/XdgAutostart.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

const QString entryName = QStringLiteral("autostart/app.tavrin.Tavrin.desktop");

TEST(Autostart, IsTheEntrysPresence)
{
    const Testing::TemporaryFolder folder;
    XdgAutostart autostart(folder.path(), QStringLiteral("/opt/Tavrin/bin/Tavrin"));
    EXPECT_FALSE(autostart.isEnabled());
    EXPECT_EQ(autostart.registerItem(), std::nullopt);
    EXPECT_TRUE(autostart.isEnabled());
    const QByteArray entry = folder.read(entryName);
    EXPECT_TRUE(entry.startsWith("[Desktop Entry]\n"));
    EXPECT_TRUE(entry.contains("\nExec=\"/opt/Tavrin/bin/Tavrin\"\n"));
    EXPECT_TRUE(entry.contains("\nTryExec=/opt/Tavrin/bin/Tavrin\n"));
    EXPECT_TRUE(entry.contains("\nType=Application\n"));
    EXPECT_EQ(autostart.unregisterItem(), std::nullopt);
    EXPECT_FALSE(autostart.isEnabled());
    EXPECT_TRUE(folder.names(QStringLiteral("autostart")).isEmpty());
}

TEST(Autostart, SaysWhyItCannot)
{
    const Testing::TemporaryFolder folder;
    folder.write(QStringLiteral("autostart"), "a file where the folder should be");
    XdgAutostart autostart(folder.path(), QStringLiteral("/x"));
    EXPECT_FALSE(autostart.isEnabled());
    EXPECT_NE(autostart.registerItem().value_or(QString()), QString());
    EXPECT_NE(autostart.unregisterItem().value_or(QString()), QString());
}

TEST(Autostart, CanBeSwitchedOffInTheEntry)
{
    EXPECT_TRUE(isActiveAutostartEntry("[Desktop Entry]\nExec=x\nHidden=false\n"));
    EXPECT_FALSE(isActiveAutostartEntry("[Desktop Entry]\nExec=x\nHidden = true\n"));
    EXPECT_FALSE(isActiveAutostartEntry("[Desktop Entry]\nX-GNOME-Autostart-enabled=false\n"));
}

TEST(Autostart, QuotesThePath)
{
    EXPECT_EQ(quotedForExec(QStringLiteral("/a b/c")), QStringLiteral("\"/a b/c\""));
    EXPECT_EQ(quotedForExec(QStringLiteral("/100%/x")), QStringLiteral("\"/100%%/x\""));
    EXPECT_EQ(quotedForExec(QStringLiteral("/a\"b$c`d")), QStringLiteral("\"/a\\\\\"b\\\\$c\\\\`d\""));
    EXPECT_EQ(quotedForExec(QStringLiteral("/a\\b")), QStringLiteral("\"/a\\\\\\\\b\""));
}

} // namespace
} // namespace Tavrin
