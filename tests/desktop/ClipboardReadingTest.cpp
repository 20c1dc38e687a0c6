// Reading from programs that answer late, wrongly, in part, or not at all.
#include "support/PasteboardFixture.h"

#include <QTimer>

namespace Tavrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Testing::SelectionPeer;
using Request = SelectionPeer::Request;

/// Of the event loop during a reading that did not block it, at least.
constexpr int fewestTurns = 5;
constexpr qint64 patience = 300;
constexpr qint64 totalPatience = 1000;
/// What a busy machine may add.
constexpr qint64 slack = 4000;

class Reading : public Testing::PasteboardFixture {
protected:
    void SetUp() override
    {
        peer.offer({"TARGETS", "UTF8_STRING", "text/html"});
        peer.offerText("UTF8_STRING", "chữ");
        peer.offerText("text/html", "<b>chữ</b>");
        peer.own("CLIPBOARD");
    }

    const PasteboardContents whole{QStringLiteral("chữ"), {{QStringLiteral("text/html"), "<b>chữ</b>"}}};
    const PasteboardContents textOnly{QStringLiteral("chữ"), {}};
    const PasteboardContents nothing;

    /// The peer hands its text over piece by piece, as they are taken, for as long as there are pieces.
    void offerInPieces(QByteArrayList& pieces)
    {
        peer.answers["UTF8_STRING"] = [this](const Request& request) {
            m_transfer = request;
            peer.beginPieces(request);
        };
        peer.propertyChanged = [this, &pieces](const xcb_property_notify_event_t& event) {
            if (event.window == m_transfer.requestor && event.atom == m_transfer.property
                && event.state == XCB_PROPERTY_DELETE && !pieces.isEmpty())
                peer.change(m_transfer.requestor, m_transfer.property, "UTF8_STRING", 8, pieces.takeFirst());
        };
    }

private:
    Request m_transfer{};
};

TEST_F(Reading, GivesAllThatAWellBehavedProgramHas)
{
    EXPECT_EQ(read(Detail::allFormats), whole);
    EXPECT_EQ(read(Detail::string), textOnly);
    EXPECT_THAT(peer.asked, ElementsAre("TARGETS", "UTF8_STRING", "text/html", "TARGETS", "UTF8_STRING"));
}

TEST_F(Reading, AsksForNothingThatItDoesNotKeep)
{
    peer.offer({"TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "DELETE", "INSERT_SELECTION",
        "UTF8_STRING", "STRING", "TEXT", "text/plain", "text/plain;charset=UTF-8", "image/png", "image/bmp"});
    peer.offerText("image/png", "png");
    EXPECT_EQ(read(Detail::allFormats),
        (PasteboardContents{QStringLiteral("chữ"), {{QStringLiteral("image/png"), "png"}}}));
    EXPECT_THAT(peer.asked, ElementsAre("TARGETS", "UTF8_STRING", "image/png"));
}

TEST_F(Reading, GivesUpAnOwnerThatNeverAnswersAndBlocksNothing)
{
    peer.ignore("TARGETS");
    EXPECT_EQ(read(Detail::allFormats), nothing);
    EXPECT_GE(duration, patience - 20);
    EXPECT_LT(duration, patience + slack);
    EXPECT_GE(turns, fewestTurns);
}

TEST_F(Reading, GivesUpAnOwnerThatNamesATextAndDoesNotGiveIt)
{
    peer.ignore("UTF8_STRING");
    EXPECT_EQ(read(Detail::string), nothing);
    EXPECT_LT(duration, patience + slack);
    EXPECT_GE(turns, fewestTurns);
}

TEST_F(Reading, KeepsTheTextWhenAFormatDoesNotCome)
{
    peer.ignore("text/html");
    EXPECT_EQ(read(Detail::allFormats), textOnly);
    EXPECT_LT(duration, patience + slack);
}

TEST_F(Reading, TakesPiecesAsTheyCome)
{
    QByteArrayList pieces{"một ", "hai ", "ba", ""};
    offerInPieces(pieces);
    EXPECT_EQ(read(Detail::allFormats).string, QStringLiteral("một hai ba"));
    EXPECT_THAT(pieces, IsEmpty());
}

TEST_F(Reading, DropsATextWhosePiecesStopComing)
{
    QByteArrayList pieces{"một ", "hai "};
    offerInPieces(pieces);
    EXPECT_EQ(read(Detail::allFormats), nothing) << "half a text is none";
    EXPECT_THAT(pieces, IsEmpty());
    EXPECT_LT(duration, patience + slack);
    EXPECT_GE(turns, fewestTurns);
}

TEST_F(Reading, EndsEvenIfPiecesNeverEnd)
{
    Request transfer{};
    peer.answers["UTF8_STRING"] = [&](const Request& request) {
        transfer = request;
        peer.beginPieces(request);
    };
    peer.propertyChanged = [&](const xcb_property_notify_event_t& event) {
        if (event.window == transfer.requestor && event.atom == transfer.property
            && event.state == XCB_PROPERTY_DELETE)
            peer.change(transfer.requestor, transfer.property, "UTF8_STRING", 8, "x");
    };
    EXPECT_EQ(read(Detail::allFormats), nothing);
    EXPECT_GE(duration, totalPatience - 20);
    EXPECT_LT(duration, totalPatience + slack);
}

TEST_F(Reading, SurvivesAnOwnerThatDiesInTheMiddle)
{
    bool isDead = false;
    peer.answers["UTF8_STRING"] = [&](const Request& request) {
        peer.beginPieces(request);
        isDead = true;
    };
    std::optional<PasteboardContents> result;
    pasteboard->read(Detail::allFormats, [&](PasteboardContents contents) { result = std::move(contents); });
    ASSERT_TRUE(waitPumping([&] { return isDead; }));
    peer.die();
    EXPECT_TRUE(Testing::waitFor([&] { return result.has_value(); }));
    EXPECT_EQ(result, nothing);
    EXPECT_EQ(read(Detail::allFormats), nothing) << "nobody owns the clipboard now";
    EXPECT_LT(duration, patience + slack);
}

TEST_F(Reading, WaitsForAnOwnerThatIsSlow)
{
    const auto answerLate = [this](const SelectionPeer::Answer& answer) {
        return [this, answer](const Request& request) {
            QTimer::singleShot(150, qApp, [answer, request] { answer(request); });
        };
    };
    for (const char* target : {"TARGETS", "UTF8_STRING", "text/html"})
        peer.answers[target] = answerLate(peer.answers[target]);
    EXPECT_EQ(read(Detail::allFormats), whole);
    EXPECT_GE(duration, 440);
}

TEST_F(Reading, AsksForATextWhereTheListIsRefused)
{
    peer.answers.remove("TARGETS");
    EXPECT_EQ(read(Detail::allFormats), textOnly);
    peer.answers.remove("UTF8_STRING");
    peer.offerText("STRING", "caf\xE9");
    EXPECT_EQ(read(Detail::string).string, QStringLiteral("café"));
    peer.answers.clear();
    EXPECT_EQ(read(Detail::allFormats), nothing);
    EXPECT_LT(duration, patience + slack);
}

TEST_F(Reading, TakesTheNextTextWhereOneIsRefused)
{
    peer.offer({"STRING", "UTF8_STRING", "text/plain;charset=UTF-8"});
    peer.answers.remove("UTF8_STRING");
    peer.offerText("text/plain;charset=UTF-8", "chữ");
    EXPECT_EQ(read(Detail::string), textOnly);
}

TEST_F(Reading, LeavesOutWhatHasAWrongType)
{
    peer.answers["UTF8_STRING"]
        = [this](const Request& request) { peer.give(request, "INTEGER", 32, QByteArray(8, '\1')); };
    EXPECT_EQ(read(Detail::allFormats), nothing);
    peer.answers["UTF8_STRING"]
        = [this](const Request& request) { peer.give(request, "COMPOUND_TEXT", 8, "x"); };
    EXPECT_EQ(read(Detail::allFormats), nothing);
    peer.answers["UTF8_STRING"] = [this](const Request& request) { peer.give(request, "STRING", 8, "chữ"); };
    peer.answers["text/html"]
        = [this](const Request& request) { peer.give(request, "text/html", 16, QByteArray(8, '\1')); };
    EXPECT_EQ(read(Detail::allFormats), textOnly);
    peer.answers["TARGETS"] = [this](const Request& request) { peer.give(request, "ATOM", 8, "abcd"); };
    EXPECT_EQ(read(Detail::allFormats), textOnly) << "as if there were no list";
    peer.answers["TARGETS"] = [this](const Request& request) {
        peer.give(request, "ATOM", 32, QByteArray(4, '\x7F') + peer.atomList({"UTF8_STRING"}));
    };
    EXPECT_EQ(read(Detail::allFormats), textOnly) << "one atom does not exist";
}

TEST_F(Reading, ToleratesAnAnswerWithoutAProperty)
{
    peer.answers["UTF8_STRING"] = [this](const Request& request) {
        peer.give(request, "UTF8_STRING", 8, "x");
        xcb_delete_property(peer.xcb(), request.requestor, request.property);
    };
    EXPECT_LT(read(Detail::allFormats).string.value_or(QString()).size(), 2);
    EXPECT_LT(duration, patience + slack);
}

TEST_F(Reading, TakesNoLateAnswerForANewOne)
{
    std::optional<Request> late;
    peer.answers["UTF8_STRING"] = [&](const Request& request) { late = request; };
    EXPECT_EQ(read(Detail::string), nothing);
    ASSERT_TRUE(late);
    peer.answers["UTF8_STRING"] = [&](const Request& request) {
        peer.give(*late, "UTF8_STRING", 8, "the answer of before");
        peer.give(request, "UTF8_STRING", 8, "the answer of now");
    };
    EXPECT_EQ(read(Detail::string).string, QStringLiteral("the answer of now"));
}

TEST_F(Reading, MixesNoTwoPrograms)
{
    SelectionPeer next;
    next.offerText("text/html", "of another text");
    peer.answers["UTF8_STRING"] = [&](const Request& request) {
        next.own("CLIPBOARD");
        peer.give(request, "UTF8_STRING", 8, "chữ");
    };
    EXPECT_EQ(read(Detail::allFormats), textOnly);
    next.pump();
    EXPECT_THAT(next.asked, IsEmpty());
}

TEST_F(Reading, CompletesOnceWhenItsConnectionIsCut)
{
    peer.ignore("TARGETS");
    std::vector<PasteboardContents> results;
    xcb_window_t reader = 0;
    peer.answers["TARGETS"] = [&](const Request& request) { reader = request.requestor; };
    pasteboard->read(
        Detail::allFormats, [&](const PasteboardContents& contents) { results.push_back(contents); });
    pasteboard->read(
        Detail::string, [&](const PasteboardContents& contents) { results.push_back(contents); });
    ASSERT_TRUE(waitPumping([&] { return reader != 0; }));
    peer.answers.remove("TARGETS");
    xcb_kill_client(peer.xcb(), reader);
    peer.sync();
    ASSERT_TRUE(waitPumping([&] { return results.size() == 2; }));
    EXPECT_THAT(results, ElementsAre(nothing, textOnly)) << "the next one connects again";
}

TEST_F(Reading, IsForgottenWhenThePasteboardGoes)
{
    peer.ignore("TARGETS");
    bool isCompleted = false;
    pasteboard->read(Detail::allFormats, [&](const PasteboardContents&) { isCompleted = true; });
    ASSERT_TRUE(waitPumping([&] { return peer.asked.contains("TARGETS"); }));
    QElapsedTimer timer;
    timer.start();
    pasteboard.reset();
    EXPECT_LT(timer.elapsed(), patience + slack) << "the end waits for no other program";
    Testing::drainEvents();
    EXPECT_FALSE(isCompleted);
}

TEST_F(Reading, FindsNothingWithoutAServer)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4095");
    EXPECT_EQ(read(Detail::allFormats), nothing);
    pasteboard->write({QStringLiteral("x"), {}}, Stay::lasting);
    qputenv("DISPLAY", display);
    EXPECT_EQ(read(Detail::allFormats), whole) << "it is there later";
}

} // namespace
} // namespace Tavrin
