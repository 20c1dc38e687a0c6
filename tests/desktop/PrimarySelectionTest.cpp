#include "support/PasteboardFixture.h"
#include "support/Program.h"

namespace Tavrin {
namespace {

using Testing::outputOf;
using Testing::SelectionPeer;

class Primary : public Testing::PasteboardFixture {
protected:
    /// Lends, and waits until it is there.
    void lend(const QString& text)
    {
        int calls = 0;
        primary().lend(text, [&] {
            ++calls;
            EXPECT_FALSE(peer.owns("PRIMARY"));
        });
        EXPECT_EQ(calls, 0) << "it comes later";
        EXPECT_TRUE(waitPumping([&] { return calls > 0; }));
        Testing::drainEvents();
        EXPECT_EQ(calls, 1);
    }
    /// Gives back, and waits until that has been done: what follows is done in order.
    void giveBack()
    {
        primary().giveBack();
        pasteboard->write({QStringLiteral("dấu mốc"), {}}, Stay::lasting);
    }

    void selectElsewhere(const QByteArray& text)
    {
        peer.offer({"UTF8_STRING"});
        peer.offerText("UTF8_STRING", text);
        peer.own("PRIMARY");
    }
    std::optional<QByteArray> selected()
    {
        if (peer.owner("PRIMARY") == XCB_WINDOW_NONE)
            return std::nullopt;
        const auto value = answer("PRIMARY", "UTF8_STRING");
        return value ? std::optional(value->data) : std::nullopt;
    }

    PrimarySelection& primary() { return *pasteboard; }
};

TEST_F(Primary, IsLentAndGivenBack)
{
    selectElsewhere("của họ");
    lend(QStringLiteral("của ta"));
    EXPECT_EQ(outputOf(QStringLiteral("xclip"), {QStringLiteral("-o")}), "của ta");
    EXPECT_TRUE(answer("PRIMARY", "x-kde-passwordManagerHint"));
    giveBack();
    EXPECT_EQ(outputOf(QStringLiteral("xclip"), {QStringLiteral("-o")}), "của họ");
    EXPECT_FALSE(answer("PRIMARY", "x-kde-passwordManagerHint"));
}

TEST_F(Primary, IsNobodysAgainWhereThereWasNoText)
{
    lend(QStringLiteral("của ta"));
    EXPECT_EQ(selected(), "của ta");
    giveBack();
    EXPECT_EQ(peer.owner("PRIMARY"), XCB_WINDOW_NONE);
}

TEST_F(Primary, StaysWithWhoTookItInBetween)
{
    selectElsewhere("của họ");
    lend(QStringLiteral("của ta"));
    selectElsewhere("mới chọn");
    giveBack();
    EXPECT_TRUE(peer.owns("PRIMARY"));
    // What was remembered is not put back later either.
    giveBack();
    EXPECT_TRUE(peer.owns("PRIMARY"));
}

TEST_F(Primary, RemembersTheFirstTextThroughSeveralLoans)
{
    selectElsewhere("của họ");
    lend(QStringLiteral("một"));
    lend(QStringLiteral("hai"));
    EXPECT_EQ(selected(), "hai");
    giveBack();
    EXPECT_EQ(selected(), "của họ");
    giveBack();
    EXPECT_EQ(selected(), "của họ") << "nothing is lent any more";
    lend(QStringLiteral("ba"));
    giveBack();
    EXPECT_EQ(selected(), "của họ") << "remembered from what is ours by now";
}

TEST_F(Primary, RemembersAnewWhatWasSelectedSince)
{
    lend(QStringLiteral("một"));
    selectElsewhere("mới chọn");
    lend(QStringLiteral("hai"));
    giveBack();
    EXPECT_EQ(selected(), "mới chọn");
}

TEST_F(Primary, IsLentSoonThoughItsOwnerHangs)
{
    selectElsewhere("của họ");
    peer.ignore("TARGETS");
    QElapsedTimer timer;
    timer.start();
    lend(QStringLiteral("của ta"));
    EXPECT_LT(timer.elapsed(), 5000);
    EXPECT_GE(turns, 5) << "nothing blocks the event loop";
    giveBack();
    EXPECT_EQ(peer.owner("PRIMARY"), XCB_WINDOW_NONE);
}

TEST_F(Primary, DoesNotTouchTheClipboard)
{
    pasteboard->write({QStringLiteral("bảng tạm"), {}}, Stay::lasting);
    lend(QStringLiteral("của ta"));
    const auto value = answer("CLIPBOARD", "UTF8_STRING");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->data, "bảng tạm");
    primary().giveBack();
    EXPECT_EQ(read(Detail::string).string, QStringLiteral("bảng tạm"));
}

TEST_F(Primary, IsNotThereWithoutAServer)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4095");
    primary().giveBack();
    primary().lend(QStringLiteral("x"), [] { ADD_FAILURE() << "it is not there"; });
    EXPECT_EQ(read(Detail::string), PasteboardContents());
    qputenv("DISPLAY", display);
}

} // namespace
} // namespace Tavrin
