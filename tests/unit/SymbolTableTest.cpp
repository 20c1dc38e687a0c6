#include "Core/Shell/SymbolTable.h"

#include "Core/Model/ActionType.h"
#include "Core/Presets/ScriptPreset.h"
#include "UI/Symbols/SymbolProvider.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

namespace Tavrin {
namespace {

/// Text literals of the program's sources that look like a symbol's name, or stand where one is expected.
QSet<QString> symbolsNamedInTheSources()
{
    static const QRegularExpression patterns[] = {
        QRegularExpression(QStringLiteral("(?:symbol|name|icon): \"([a-z0-9.]+)\"")),
        QRegularExpression(QStringLiteral("symbol: [^\"\\n]*\\? \"([a-z0-9.]+)\"")),
        QRegularExpression(QStringLiteral("symbol: [^\"\\n]*\\? \"[a-z0-9.]+\" : \"([a-z0-9.]+)\"")),
        QRegularExpression(QStringLiteral(
            "\"((?:[a-z0-9]+\\.)+(?:fill|circle|dashed|clockwise|filled|plus|viewfinder|rectangle|down))\"")),
        QRegularExpression(QStringLiteral("Symbols\\(\\)\\n\\{[^}]*\"([a-z.]+)\"")),
    };
    QSet<QString> names;
    QDirIterator files(QStringLiteral(TAVRIN_SOURCES "/src"),
        {QStringLiteral("*.qml"), QStringLiteral("*.cpp")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        for (const QRegularExpression& pattern : patterns) {
            for (auto matches = pattern.globalMatch(text); matches.hasNext();)
                names.insert(matches.next().captured(1));
        }
    }
    return names;
}

TEST(SymbolTable, HasAPictureForEverySymbolThatTheProgramNames)
{
    QSet<QString> names = symbolsNamedInTheSources();
    // Some of each kind of place, so that a search that finds nothing does not pass.
    for (const char* name : {"plus", "trash", "moon.fill", "safari.fill", "xmark.circle.fill",
             "pause.circle.fill", "play.circle.fill", "keyboard", "camera.viewfinder"})
        EXPECT_TRUE(names.contains(QString::fromUtf8(name))) << name;
    for (const ActionType type : allActionTypes)
        names.insert(iconName(type));
    for (const SystemActionType type : allSystemActionTypes)
        names.insert(iconName(type));
    for (const ScriptPreset& preset : referenceScriptPresets())
        names.insert(preset.icon);
    for (const QString& name : names)
        EXPECT_FALSE(symbolPicture(name).isEmpty()) << qPrintable(name);
}

TEST(SymbolTable, IsSortedAndNamesEachSymbolOnce)
{
    for (std::size_t index = 1; index < symbolTable.size(); ++index)
        EXPECT_LT(std::string_view(symbolTable[index - 1].name), symbolTable[index].name);
}

TEST(SymbolTable, KnowsNothingOfOtherNames)
{
    EXPECT_EQ(symbolPicture(u"nothing.fill"), QString());
    EXPECT_EQ(symbolPicture(u""), QString());
    EXPECT_EQ(symbolPicture(u"PLUS"), QString());
}

TEST(SymbolImage, DrawsEveryPictureInTheColourAsked)
{
    for (const SymbolPicture& entry : symbolTable) {
        const QImage image = symbolImage(QString::fromLatin1(entry.name), Qt::red, 24);
        ASSERT_EQ(image.size(), QSize(24, 24)) << entry.name;
        int covered = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                covered += pixel.alpha() > 128;
                EXPECT_FALSE(pixel.alpha() == 255 && pixel != QColor(Qt::red)) << entry.name;
            }
        }
        EXPECT_GT(covered, 10) << entry.name << " is empty";
    }
}

TEST(SymbolProvider, ReadsNameAndColour)
{
    SymbolProvider provider;
    QSize size;
    const QImage image = provider.requestImage(QStringLiteral("play.fill/#00ff00"), &size, QSize(32, 32));
    EXPECT_EQ(size, QSize(32, 32));
    EXPECT_EQ(image.pixelColor(14, 16), QColor(Qt::green));
}

} // namespace
} // namespace Tavrin
