#include "Core/Action/DynamicVariables.h"

#include <gtest/gtest.h>

#include <QLocale>

namespace Tavrin {
namespace {

struct VariableCase {
    const char* text;
    const char* resolved;
};

class FilledVariables : public testing::TestWithParam<VariableCase> {
protected:
    ~FilledVariables() override { QLocale::setDefault(QLocale::c()); }

    const QDateTime now{{2025, 3, 3}, {9, 5, 7}};
    const QString clipboard = QStringLiteral("cũ {date} {clipboard}");
};

TEST_P(FilledVariables, AreFilledInWhateverTheLocale)
{
    for (const QLocale& locale : {QLocale(QLocale::Vietnamese), QLocale(QLocale::Arabic, QLocale::Egypt),
             QLocale(QLocale::Thai, QLocale::Thailand), QLocale(QLocale::Persian, QLocale::Iran)}) {
        QLocale::setDefault(locale);
        EXPECT_EQ(resolveDynamicVariables(QString::fromUtf8(GetParam().text), now, clipboard),
            QString::fromUtf8(GetParam().resolved))
            << locale.name().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Table, FilledVariables,
    testing::Values(VariableCase{"", ""}, VariableCase{"chữ thường", "chữ thường"},
        VariableCase{"{date}", "2025-03-03"}, VariableCase{"{time}", "09:05:07"},
        VariableCase{"{date} {time}", "2025-03-03 09:05:07"},
        VariableCase{"{datetime}", "2025-03-03 09:05:07"}, VariableCase{"{year}/{month}/{day}", "2025/03/03"},
        VariableCase{"{day}{day}", "0303"}, VariableCase{"a{clipboard}b", "acũ {date} {clipboard}b"},
        VariableCase{"{clipboard}{clipboard}", "cũ {date} {clipboard}cũ {date} {clipboard}"},
        VariableCase{"{weekday} {Date} {DATE} {dat", "{weekday} {Date} {DATE} {dat"},
        VariableCase{"{ date } {{date}} {}", "{ date } {2025-03-03} {}"},
        VariableCase{"dòng 1\n{time}\tdòng 2", "dòng 1\n09:05:07\tdòng 2"}));

TEST(Variables, WithoutAClipboardGiveNothingForIt)
{
    EXPECT_EQ(resolveDynamicVariables(QStringLiteral("[{clipboard}]"), {{2025, 1, 1}, {0, 0}}, {}),
        QStringLiteral("[]"));
}

TEST(Variables, AskForTheClipboardOnlyByItsExactName)
{
    EXPECT_TRUE(mentionsClipboard(QStringLiteral("a{clipboard}")));
    EXPECT_FALSE(mentionsClipboard(QStringLiteral("{Clipboard} clipboard {clip board}")));
}

} // namespace
} // namespace Tavrin
