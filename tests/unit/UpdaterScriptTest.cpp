#include "Core/Update/UpdaterScript.h"

#include "Platform/Linux/Update/LinuxUpdateInstaller.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace Tavrin {

using namespace Qt::StringLiterals;

namespace {

/// Line by line, so that a failure shows the line.
void expectLines(const QString& script, const QStringList& expected)
{
    const QStringList lines = script.split(u'\n');
    EXPECT_EQ(lines.size(), expected.size());
    for (qsizetype index = 0; index < std::min(lines.size(), expected.size()); ++index)
        EXPECT_EQ(lines[index].toStdString(), expected[index].toStdString()) << "line " << index + 1;
}

TEST(UpdaterScript, IsThatOfTheReferenceLineByLine)
{
    expectLines(updaterScript(referenceUpdaterTarget(), u"/tmp/x y/Tavrin-Update.zip"_s),
        {
            uR"(#!/bin/bash)"_s,
            uR"(sleep 1.2)"_s,
            uR"(TMP_DIR=$(mktemp -d))"_s,
            uR"(unzip -q "/tmp/x y/Tavrin-Update.zip" -d "$TMP_DIR")"_s,
            uR"()"_s,
            uR"(TARGET_APP=$(find "$TMP_DIR" -maxdepth 2 -name "Tavrin.app" -o -name "*.app" | head -n 1))"_s,
            uR"()"_s,
            uR"(if [ -n "$TARGET_APP" ] && [ -d "$TARGET_APP" ]; then)"_s,
            uR"(    killall Tavrin 2>/dev/null || true)"_s,
            uR"(    sleep 0.5)"_s,
            uR"(    rm -rf "/Applications/Tavrin.app")"_s,
            uR"(    cp -R "$TARGET_APP" "/Applications/Tavrin.app")"_s,
            uR"(    xattr -cr "/Applications/Tavrin.app" 2>/dev/null || true)"_s,
            uR"(    open "/Applications/Tavrin.app")"_s,
            uR"(fi)"_s,
            uR"()"_s,
            uR"(rm -rf "$TMP_DIR")"_s,
            uR"(rm -f "/tmp/x y/Tavrin-Update.zip")"_s,
        });
}

TEST(UpdaterScript, OfLinuxDiffersWhereTheSystemDoes)
{
    expectLines(
        updaterScript(linuxUpdaterTarget(u"/home/u v"_s), u"/run/user/1000/Tavrin/Tavrin-Update.zip"_s),
        {
            uR"(#!/bin/bash)"_s,
            uR"(sleep 1.2)"_s,
            uR"(TMP_DIR=$(mktemp -d))"_s,
            uR"(unzip -q "/run/user/1000/Tavrin/Tavrin-Update.zip" -d "$TMP_DIR")"_s,
            uR"()"_s,
            uR"(TARGET_APP=$(find "$TMP_DIR" -maxdepth 2 -name "Tavrin.app" -o -name "*.app" | head -n 1))"_s,
            uR"()"_s,
            uR"(if [ -n "$TARGET_APP" ] && [ -d "$TARGET_APP" ]; then)"_s,
            uR"(    killall Tavrin 2>/dev/null || true)"_s,
            uR"(    sleep 0.5)"_s,
            uR"(    rm -rf "/home/u v/.local/opt/Tavrin.app")"_s,
            uR"(    cp -R "$TARGET_APP" "/home/u v/.local/opt/Tavrin.app")"_s,
            uR"(    setsid -f "/home/u v/.local/opt/Tavrin.app/bin/Tavrin")"_s,
            uR"(fi)"_s,
            uR"()"_s,
            uR"(rm -rf "$TMP_DIR")"_s,
            uR"(rm -f "/run/user/1000/Tavrin/Tavrin-Update.zip")"_s,
        });
}

TEST(UpdaterScript, NamesPathsThatAShellLeavesAlone)
{
    for (const auto* path : {u"/run/user/1000/Tavrin", u"/home/đường dẫn/'a' !b*&;", u"/"})
        EXPECT_TRUE(isSafeInUpdaterScript(QString::fromUtf16(path)));
    for (const auto* path : {u"/a\"b", u"/a$b", u"/a`b", u"/a\\b"})
        EXPECT_FALSE(isSafeInUpdaterScript(QString::fromUtf16(path)));
}

} // namespace
} // namespace Tavrin
