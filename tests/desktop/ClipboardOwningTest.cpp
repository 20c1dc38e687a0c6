// Answering programs that ask in every way there is, and handing the clipboard over at the end.
#include "support/PasteboardFixture.h"

#include <atomic>
#include <thread>

namespace Tavrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using Testing::SelectionPeer;
using Testing::waitFor;
using Value = SelectionPeer::Value;

class Owning : public Testing::PasteboardFixture {
protected:
    void write(const QString& text, Stay stay = Stay::lasting) { pasteboard->write({text, {}}, stay); }

    QByteArrayList targets()
    {
        answer("CLIPBOARD", "TARGETS");
        return peer.atomNames("TARGETS");
    }

    /// More than fits into a few pieces.
    static QByteArray large() { return QByteArray(1'000'000, 'l'); }
    void writeLarge(char letter = 'l')
    {
        pasteboard->write(
            {std::nullopt, {{QStringLiteral("image/png"), QByteArray(1'000'000, letter)}}}, Stay::lasting);
    }

    /// Takes the pieces of a transfer of ours until the empty one.
    QByteArray collect(SelectionPeer& requestor, const QByteArray& property)
    {
        QByteArray data;
        bool isComplete = false;
        requestor.propertyChanged = [&](const xcb_property_notify_event_t& event) {
            if (event.atom != requestor.atom(property) || event.state != XCB_PROPERTY_NEW_VALUE)
                return;
            const QByteArray piece = requestor.value(property).data;
            data += piece;
            isComplete = piece.isEmpty();
            requestor.removeProperty(property);
        };
        requestor.removeProperty(property);
        EXPECT_TRUE(waitPumping([&] {
            requestor.pump();
            return isComplete;
        }));
        requestor.propertyChanged = {};
        return data;
    }
};

TEST_F(Owning, OffersWhatATextCanBe)
{
    write(QStringLiteral("café"));
    EXPECT_THAT(targets(),
        ElementsAre("TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS", "UTF8_STRING",
            "text/plain;charset=utf-8", "TEXT", "text/plain", "STRING"));
    const auto expect = [this](const QByteArray& target, const QByteArray& type, const QByteArray& data) {
        const auto value = answer("CLIPBOARD", target);
        ASSERT_TRUE(value) << target.constData();
        EXPECT_EQ(value->type, type);
        EXPECT_EQ(value->data, data);
        EXPECT_EQ(value->format, 8);
    };
    expect("UTF8_STRING", "UTF8_STRING", "café");
    expect("text/plain", "text/plain", "café");
    expect("text/plain;charset=utf-8", "text/plain;charset=utf-8", "café");
    expect("STRING", "STRING", "caf\xE9");
    expect("TEXT", "STRING", "caf\xE9");
    write(QStringLiteral("chữ"));
    EXPECT_THAT(targets(), Not(Contains("STRING")));
    EXPECT_FALSE(answer("CLIPBOARD", "STRING")) << "Latin-1 cannot say it";
    expect("TEXT", "UTF8_STRING", "chữ");
}

TEST_F(Owning, RefusesWhatItDoesNotHave)
{
    write(QStringLiteral("chữ"));
    for (const char* target : {"image/png", "COMPOUND_TEXT", "DELETE", "x-kde-passwordManagerHint"})
        EXPECT_FALSE(answer("CLIPBOARD", target)) << target;
}

TEST_F(Owning, SaysSinceWhen)
{
    write(QStringLiteral("a"));
    const auto first = answer("CLIPBOARD", "TIMESTAMP");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->type, "INTEGER");
    EXPECT_EQ(first->format, 32);
    EXPECT_NE(first->data, QByteArray(4, '\0'));
    const auto saving = answer("CLIPBOARD", "SAVE_TARGETS");
    ASSERT_TRUE(saving);
    EXPECT_EQ(saving->type, "NULL");
}

TEST_F(Owning, AnswersWhateverTimeIsAskedWith)
{
    write(QStringLiteral("chữ"));
    peer.ask("CLIPBOARD", "UTF8_STRING", 1);
    ASSERT_TRUE(waitPumping([&] { return !peer.received.empty(); }));
    EXPECT_EQ(peer.value("UTF8_STRING").data, "chữ");
}

TEST_F(Owning, AnswersAProgramThatNamesNoProperty)
{
    write(QStringLiteral("chữ"));
    peer.askInto("CLIPBOARD", "UTF8_STRING", XCB_ATOM_NONE);
    ASSERT_TRUE(waitPumping([&] { return !peer.received.empty(); }));
    EXPECT_EQ(peer.received.back().second, peer.atom("UTF8_STRING"));
    EXPECT_EQ(peer.value("UTF8_STRING").data, "chữ");
}

TEST_F(Owning, AnswersManyAtOnce)
{
    write(QStringLiteral("chữ"));
    peer.change(peer.window(), peer.atom("PAIRS"), "ATOM_PAIR", 32,
        peer.atomList({"UTF8_STRING", "FIRST", "image/png", "SECOND", "TARGETS", "THIRD"}));
    peer.askInto("CLIPBOARD", "MULTIPLE", peer.atom("PAIRS"));
    ASSERT_TRUE(waitPumping([&] { return !peer.received.empty(); }));
    EXPECT_EQ(peer.received.back().second, peer.atom("PAIRS"));
    EXPECT_EQ(peer.value("FIRST").data, "chữ");
    EXPECT_EQ(peer.value("SECOND").format, 0);
    EXPECT_THAT(peer.atomNames("THIRD"), Contains("UTF8_STRING"));
    EXPECT_THAT(peer.atomNames("PAIRS"), ElementsAre("UTF8_STRING", "FIRST", "", "", "TARGETS", "THIRD"));
    peer.askInto("CLIPBOARD", "MULTIPLE", peer.atom("NOTHING_HERE"));
    ASSERT_TRUE(waitPumping([&] { return peer.received.size() == 2; }));
    EXPECT_EQ(peer.received.back().second, XCB_ATOM_NONE);
}

TEST_F(Owning, HandsLargeDataOverInPiecesToSeveralAtOnce)
{
    writeLarge();
    SelectionPeer second;
    for (SelectionPeer* requestor : {&peer, &second}) {
        requestor->ask("CLIPBOARD", "image/png");
        ASSERT_TRUE(waitPumping([&] {
            requestor->pump();
            return !requestor->received.empty();
        }));
        EXPECT_EQ(requestor->value("image/png").type, "INCR");
    }
    EXPECT_EQ(collect(second, "image/png"), large());
    EXPECT_EQ(collect(peer, "image/png"), large());
}

TEST_F(Owning, EndsATransferWithWhatItBeganWith)
{
    writeLarge('a');
    ASSERT_TRUE(answer("CLIPBOARD", "image/png"));
    writeLarge('b');
    SelectionPeer next;
    next.own("CLIPBOARD");
    EXPECT_EQ(collect(peer, "image/png"), QByteArray(1'000'000, 'a'));
}

TEST_F(Owning, ServesOthersWhileSomeNeverFinish)
{
    writeLarge();
    ASSERT_TRUE(answer("CLIPBOARD", "image/png"));
    {
        SelectionPeer dying;
        dying.ask("CLIPBOARD", "image/png");
        ASSERT_TRUE(waitPumping([&] {
            dying.pump();
            return !dying.received.empty();
        }));
        dying.removeProperty("image/png");
        dying.sync();
    }
    SelectionPeer healthy;
    healthy.ask("CLIPBOARD", "image/png");
    ASSERT_TRUE(waitPumping([&] {
        healthy.pump();
        return !healthy.received.empty();
    }));
    EXPECT_EQ(collect(healthy, "image/png"), large());
}

TEST_F(Owning, ForgetsARequestorThatStopsAsking)
{
    writeLarge();
    ASSERT_TRUE(answer("CLIPBOARD", "image/png"));
    // Nobody else listens for the end of that window: whether we still do shows in its mask.
    const auto isWatched = [this] {
        const XcbReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            peer.xcb(), xcb_get_window_attributes(peer.xcb(), peer.window()), nullptr));
        return (attributes->all_event_masks & XCB_EVENT_MASK_STRUCTURE_NOTIFY) != 0;
    };
    EXPECT_TRUE(isWatched());
    EXPECT_TRUE(waitPumping([&] { return !isWatched(); }, 15000));
    // Asking again begins anew.
    ASSERT_TRUE(answer("CLIPBOARD", "image/png"));
    EXPECT_EQ(collect(peer, "image/png"), large());
}

TEST_F(Owning, LetsGoWhatAnotherProgramTakes)
{
    write(QStringLiteral("ours"));
    peer.offer({"UTF8_STRING"});
    peer.offerText("UTF8_STRING", "theirs");
    peer.own("CLIPBOARD");
    EXPECT_EQ(read(Detail::string).string, QStringLiteral("theirs"));
    write(QStringLiteral("ours again"));
    EXPECT_TRUE(waitPumping([&] { return peer.selectionsLost == 1; }));
    EXPECT_EQ(read(Detail::string).string, QStringLiteral("ours again"));
}

TEST_F(Owning, KeepsWhatItTakesBackInTheSameMoment)
{
    // The news of the loss may come when the clipboard is ours again.
    int takenBack = 0;
    for (int round = 0; round < 500; ++round) {
        xcb_set_selection_owner(peer.xcb(), peer.window(), peer.atom("CLIPBOARD"), XCB_CURRENT_TIME);
        xcb_flush(peer.xcb());
        write(QString::number(round));
        peer.sync();
        // The server may have heard the other program last.
        if (peer.owns("CLIPBOARD"))
            continue;
        ++takenBack;
        const auto value = answer("CLIPBOARD", "UTF8_STRING");
        ASSERT_TRUE(value) << round;
        ASSERT_EQ(value->data, QByteArray::number(round));
    }
    EXPECT_GT(takenBack, 0);
}

TEST_F(Owning, OwnsAgainAfterItsConnectionWasCut)
{
    write(QStringLiteral("before"));
    xcb_kill_client(peer.xcb(), peer.owner("CLIPBOARD"));
    peer.sync();
    EXPECT_EQ(peer.owner("CLIPBOARD"), XCB_WINDOW_NONE);
    write(QStringLiteral("after"));
    const auto value = answer("CLIPBOARD", "UTF8_STRING");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->data, "after");
}

/// A clipboard manager, as far as a program that ends has to do with it; on a thread of its own, because
/// the program waits for it.
class ClipboardManager {
public:
    explicit ClipboardManager(bool answers)
        : m_answers(answers)
    {
        m_peer.own("CLIPBOARD_MANAGER");
        m_peer.answers["SAVE_TARGETS"] = [this](const SelectionPeer::Request& request) {
            isAsked = true;
            m_request = request;
            if (m_answers)
                m_peer.ask("CLIPBOARD", "UTF8_STRING");
        };
        m_thread = std::thread([this] { run(); });
    }
    ~ClipboardManager()
    {
        m_isStopped = true;
        m_thread.join();
    }

    std::atomic<bool> isAsked = false;
    /// To be looked at when the program has ended.
    QByteArray saved;

private:
    void run()
    {
        while (!m_isStopped) {
            m_peer.pump();
            if (!m_peer.received.empty()) {
                m_peer.received.clear();
                saved = m_peer.value("UTF8_STRING").data;
                m_peer.give(m_request, "NULL", 32, {});
            }
            QThread::usleep(500);
        }
    }

    SelectionPeer m_peer;
    SelectionPeer::Request m_request{};
    bool m_answers;
    std::atomic<bool> m_isStopped = false;
    std::thread m_thread;
};

TEST_F(Owning, HandsTheClipboardToAManagerAtTheEnd)
{
    ClipboardManager manager(true);
    write(QStringLiteral("để lại"));
    pasteboard.reset();
    EXPECT_EQ(manager.saved, "để lại");
}

TEST_F(Owning, HandsNothingOverThatWasThereForAMoment)
{
    ClipboardManager manager(true);
    write(QStringLiteral("thoáng qua"), Stay::passing);
    pasteboard.reset();
    EXPECT_FALSE(manager.isAsked);
}

TEST_F(Owning, WaitsForNoManagerForLong)
{
    ClipboardManager manager(false);
    write(QStringLiteral("để lại"));
    QElapsedTimer timer;
    timer.start();
    pasteboard.reset();
    EXPECT_TRUE(manager.isAsked);
    EXPECT_GE(timer.elapsed(), 280);
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST_F(Owning, EndsWithoutAManager)
{
    write(QStringLiteral("để lại"));
    pasteboard.reset();
    EXPECT_EQ(peer.owner("CLIPBOARD"), XCB_WINDOW_NONE);
}

} // namespace
} // namespace Tavrin
