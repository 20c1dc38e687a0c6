#include "support/ActionDesk.h"
#include "support/CapturedOutput.h"
#include "support/Wait.h"

#include <gtest/gtest.h>

namespace Tavrin {
namespace {

using Detail = Pasteboard::Detail;
using Mode = QuickTextPayload::Mode;
using Stay = Pasteboard::Stay;
using Testing::CapturedOutput;

const QString pasteScript
    = QStringLiteral("tell application \"System Events\" to keystroke \"v\" using command down");

PasteboardContents plain(const char* text)
{
    return {QString::fromUtf8(text), {}};
}

PasteboardContents picture()
{
    return {std::nullopt, {{QStringLiteral("image/png"), "\x89PNG"}}};
}

class QuickText : public testing::Test {
protected:
    void fire(Mode mode, const char* text, bool restoreClipboard = false)
    {
        fireRaw(QuickTextPayload{mode, QString::fromUtf8(text), restoreClipboard}.encodeToString());
    }

    void fireRaw(const QString& value)
    {
        executor->execute({{}, {}, 0, 0, ActionType::quickText, value, true, 0});
        Testing::drainEvents();
    }

    QString text() const { return desk.pasteboard.contents.string.value_or(QStringLiteral("(nothing)")); }

    Testing::ActionDesk desk;
    std::unique_ptr<ActionExecutor> executor = std::make_unique<ActionExecutor>(desk.services());
};

TEST_F(QuickText, IsPastedAfterItsDelay)
{
    fire(Mode::paste, "{date} {time}");
    EXPECT_EQ(text(), QStringLiteral("2025-03-03 09:05:07"));
    desk.clock.advance(0.119);
    EXPECT_EQ(desk.pasteCommand.posts, 0);
    desk.clock.advance(0.001);
    EXPECT_EQ(desk.pasteCommand.posts, 1);
    EXPECT_EQ(desk.application.hides, 0);
    EXPECT_EQ(desk.application.beeps, 0);
    EXPECT_TRUE(desk.scripts.appleScripts.isEmpty());
}

TEST_F(QuickText, HidesOurOwnWindowFirstAndWaitsLonger)
{
    desk.application.active = true;
    fire(Mode::pasteAndKeep, "x");
    EXPECT_EQ(desk.application.hides, 1);
    desk.clock.advance(0.249);
    EXPECT_EQ(desk.pasteCommand.posts, 0);
    desk.clock.advance(0.001);
    EXPECT_EQ(desk.pasteCommand.posts, 1);
}

TEST_F(QuickText, GivesTheClipboardBackAfterThePaste)
{
    const PasteboardContents before{QStringLiteral("cũ"),
        {{QStringLiteral("text/html"), "<b>cũ</b>"}, {QStringLiteral("text/uri-list"), "file:///tmp\r\n"}}};
    desk.pasteboard.contents = before;
    fire(Mode::paste, "mới", true);
    EXPECT_EQ(desk.pasteboard.contents, plain("mới"));
    EXPECT_EQ(desk.pasteboard.stay, Stay::passing) << "clipboard managers must leave it out";
    desk.clock.advance(0.12 + 0.799);
    EXPECT_EQ(text(), QStringLiteral("mới"));
    desk.clock.advance(0.001);
    EXPECT_EQ(desk.pasteboard.contents, before);
    EXPECT_EQ(desk.pasteboard.stay, Stay::lasting);
}

struct KeptCase {
    const char* what;
    Mode mode;
    bool restoreClipboard;
    PasteboardContents before;
};

class KeptText : public QuickText, public testing::WithParamInterface<KeptCase> { };

TEST_P(KeptText, StaysOnTheClipboard)
{
    desk.pasteboard.contents = GetParam().before;
    fire(GetParam().mode, "mới", GetParam().restoreClipboard);
    EXPECT_EQ(desk.pasteboard.stay, Stay::lasting);
    desk.clock.advance(60);
    EXPECT_EQ(desk.pasteboard.contents, plain("mới"));
    EXPECT_EQ(desk.pasteboard.writes, 1);
}

INSTANTIATE_TEST_SUITE_P(Table, KeptText,
    testing::Values(KeptCase{"paste that restores nothing", Mode::paste, false, plain("cũ")},
        KeptCase{"empty clipboard", Mode::paste, true, {}},
        KeptCase{"clipboard without a text", Mode::paste, true, picture()},
        KeptCase{"paste and keep", Mode::pasteAndKeep, false, plain("cũ")},
        KeptCase{"paste and keep, also when it should restore", Mode::pasteAndKeep, true, plain("cũ")},
        KeptCase{"copy", Mode::copyOnly, false, plain("cũ")},
        KeptCase{"copy, also when it should restore", Mode::copyOnly, true, plain("cũ")}),
    [](const auto& keptCase) {
        QString name = QString::fromLatin1(keptCase.param.what);
        return name.remove(u',').replace(u' ', u'_').toStdString();
    });

TEST_F(QuickText, AnEmptyTextIsATextToGiveBack)
{
    desk.pasteboard.contents = plain("");
    fire(Mode::paste, "mới", true);
    desk.clock.advance(2);
    EXPECT_EQ(desk.pasteboard.contents, plain(""));
}

TEST_F(QuickText, OnlyCopiedIsConfirmedByABeepAndNeverPasted)
{
    desk.application.active = true;
    desk.pasteboard.contents = plain("cũ");
    fire(Mode::copyOnly, "[{clipboard}]", true);
    EXPECT_EQ(text(), QStringLiteral("[cũ]"));
    EXPECT_EQ(desk.application.beeps, 1);
    desk.clock.advance(60);
    EXPECT_EQ(desk.pasteCommand.posts, 0);
    EXPECT_EQ(desk.application.hides, 0);
    EXPECT_TRUE(desk.scripts.appleScripts.isEmpty());
}

TEST_F(QuickText, ReadsTheClipboardOnlyIfItMustAndBeforeItWrites)
{
    desk.pasteboard.contents = plain("cũ");
    fire(Mode::pasteAndKeep, "không", true);
    EXPECT_TRUE(desk.pasteboard.reads.isEmpty());
    desk.clock.advance(1);
    fire(Mode::pasteAndKeep, "{clipboard}!");
    EXPECT_EQ(desk.pasteboard.reads, QList{Detail::string});
    EXPECT_EQ(text(), QStringLiteral("không!"));
    desk.clock.advance(1);
    fire(Mode::paste, "{clipboard}?", true);
    EXPECT_EQ(desk.pasteboard.reads, (QList{Detail::string, Detail::allFormats}));
    EXPECT_EQ(text(), QStringLiteral("không!?"));
}

TEST_F(QuickText, APictureOnTheClipboardIsAnEmptyText)
{
    desk.pasteboard.contents = picture();
    fire(Mode::paste, "[{clipboard}]");
    EXPECT_EQ(text(), QStringLiteral("[]"));
}

TEST_F(QuickText, TwoPressesInQuickSuccessionGiveOneText)
{
    fire(Mode::pasteAndKeep, "một");
    desk.clock.advance(0.35);
    fire(Mode::pasteAndKeep, "hai");
    EXPECT_EQ(text(), QStringLiteral("một")) << "exactly the interval is still too soon";
    EXPECT_EQ(desk.pasteboard.writes, 1);
    desk.clock.advance(0.001);
    fire(Mode::pasteAndKeep, "ba");
    EXPECT_EQ(text(), QStringLiteral("ba")) << "an ignored press does not start the interval anew";
}

TEST_F(QuickText, OfTwoShortcutsShareOneInterval)
{
    fire(Mode::copyOnly, "một");
    fire(Mode::paste, "hai");
    EXPECT_EQ(text(), QStringLiteral("một"));
}

TEST_F(QuickText, OverlappingRestoresComeInTheirOrder)
{
    desk.pasteboard.contents = plain("cũ");
    fire(Mode::paste, "một", true);
    desk.clock.advance(0.5);
    fire(Mode::paste, "hai", true);
    EXPECT_EQ(text(), QStringLiteral("hai"));
    desk.clock.advance(0.43);
    EXPECT_EQ(text(), QStringLiteral("cũ")) << "what the first one saved";
    desk.clock.advance(0.5);
    EXPECT_EQ(text(), QStringLiteral("một")) << "what the second one saved";
}

TEST_F(QuickText, ThatCannotBePastedGoesToAppleScript)
{
    desk.pasteCommand.possible = false;
    desk.scripts.failureReason = QStringLiteral("không có");
    CapturedOutput output;
    fire(Mode::paste, "x");
    desk.clock.advance(1);
    EXPECT_EQ(desk.scripts.appleScripts, QStringList{pasteScript});
    EXPECT_EQ(output.lines(), QStringList{QStringLiteral("AppleScript error: không có")});
}

TEST_F(QuickText, FromBeforePayloadsIsPasted)
{
    fireRaw(QStringLiteral("chữ {day}"));
    EXPECT_EQ(text(), QStringLiteral("chữ 03"));
    desk.clock.advance(1);
    EXPECT_EQ(desk.pasteCommand.posts, 1);
}

TEST_F(QuickText, WaitsForTheClipboardWithoutHoldingAnythingUp)
{
    desk.pasteboard.contents = plain("cũ");
    desk.pasteboard.holdsBack = true;
    fire(Mode::paste, "[{clipboard}]", true);
    EXPECT_EQ(desk.pasteboard.writes, 0);
    executor->execute({{}, {}, 0, 0, ActionType::shellScript, QStringLiteral("khác"), true, 0});
    Testing::drainEvents();
    EXPECT_EQ(desk.scripts.shellScripts, QStringList{QStringLiteral("khác")});

    desk.clock.advance(0.3);
    desk.pasteboard.answer();
    EXPECT_EQ(text(), QStringLiteral("[cũ]"));
    desk.clock.advance(0.119);
    EXPECT_EQ(desk.pasteCommand.posts, 0) << "the delay counts from what was written";
    desk.clock.advance(0.001);
    EXPECT_EQ(desk.pasteCommand.posts, 1);
}

TEST_F(QuickText, OfAnExecutorThatIsGoneIsNotPastedAndGivesTheClipboardBack)
{
    desk.pasteboard.contents = plain("cũ");
    fire(Mode::paste, "mới", true);
    executor.reset();
    EXPECT_EQ(desk.pasteboard.contents, plain("cũ"));
    desk.clock.advance(5);
    EXPECT_EQ(desk.pasteCommand.posts, 0);
    EXPECT_EQ(desk.pasteboard.contents, plain("cũ"));
}

TEST_F(QuickText, ThatIsKeptOutlivesTheExecutor)
{
    desk.pasteboard.contents = plain("cũ");
    fire(Mode::pasteAndKeep, "mới", true);
    desk.clock.advance(2);
    executor.reset();
    EXPECT_EQ(desk.pasteboard.contents, plain("mới"));
}

TEST_F(QuickText, IsNotWrittenWhenTheExecutorGoesWhileTheClipboardIsRead)
{
    desk.pasteboard.holdsBack = true;
    fire(Mode::paste, "{clipboard}", true);
    executor.reset();
    desk.pasteboard.answer();
    EXPECT_EQ(desk.pasteboard.writes, 0);
}

TEST(SystemClockTest, TellsTheTimeSince1970AndRunsBlocksOnTime)
{
    SystemClock clock;
    EXPECT_NEAR(
        clock.secondsSince1970(), static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000, 0.5);
    const double start = clock.secondsSince1970();
    double end = 0;
    clock.after(0.05, [&] { end = clock.secondsSince1970(); });
    ASSERT_TRUE(Testing::waitFor([&] { return end > 0; }));
    EXPECT_GE(end - start, 0.0495);
    EXPECT_LE(std::abs(clock.now().secsTo(QDateTime::currentDateTime())), 1);
}

} // namespace
} // namespace Tavrin
