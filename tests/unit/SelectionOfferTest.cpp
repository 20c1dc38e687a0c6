#include "Platform/Linux/X11/Selections/SelectionOffer.h"

#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using Detail = Pasteboard::Detail;
using Stay = Pasteboard::Stay;
using testing::ElementsAre;
using testing::IsEmpty;

QByteArray valueOf(const SelectionOffer& offer, const QByteArray& target)
{
    const auto value = offer.value(target);
    return value ? value->type + ": " + value->data : QByteArray("none");
}

const PasteboardContents richText{QStringLiteral("chữ"), {{QStringLiteral("text/html"), "<b>chữ</b>"}}};

TEST(SelectionOffer, HasTheTextInEachEncodingThatCanSayIt)
{
    const SelectionOffer offer({QStringLiteral("café"), {}}, Stay::lasting);
    EXPECT_THAT(offer.targets(),
        ElementsAre("UTF8_STRING", "text/plain;charset=utf-8", "TEXT", "text/plain", "STRING"));
    EXPECT_EQ(valueOf(offer, "UTF8_STRING"), "UTF8_STRING: café");
    EXPECT_EQ(valueOf(offer, "STRING"), "STRING: caf\xE9");
    EXPECT_EQ(valueOf(offer, "TEXT"), "STRING: caf\xE9");
    EXPECT_EQ(valueOf(offer, "text/html"), "none");
    EXPECT_EQ(valueOf(offer, "TARGETS"), "none");
}

TEST(SelectionOffer, HasTheFormatsAsTheyAre)
{
    const SelectionOffer offer(richText, Stay::lasting);
    EXPECT_THAT(offer.targets(),
        ElementsAre("UTF8_STRING", "text/plain;charset=utf-8", "TEXT", "text/plain", "text/html"));
    EXPECT_EQ(valueOf(offer, "text/html"), "text/html: <b>chữ</b>");
    EXPECT_EQ(valueOf(offer, "STRING"), "none");
    EXPECT_EQ(valueOf(offer, "TEXT"), "UTF8_STRING: chữ");
    EXPECT_EQ(offer.contents(Detail::allFormats), richText);
    EXPECT_EQ(offer.contents(Detail::string), (PasteboardContents{richText.string, {}}));
}

TEST(SelectionOffer, KnowsAnEmptyTextFromNone)
{
    const SelectionOffer empty({QString(), {}}, Stay::lasting);
    EXPECT_EQ(valueOf(empty, "UTF8_STRING"), "UTF8_STRING: ");
    EXPECT_EQ(empty.contents(Detail::string).string, QString());
    const SelectionOffer picture({std::nullopt, {{QStringLiteral("image/png"), "png"}}}, Stay::lasting);
    EXPECT_THAT(picture.targets(), ElementsAre("image/png"));
    EXPECT_EQ(valueOf(picture, "UTF8_STRING"), "none");
    EXPECT_EQ(valueOf(picture, "TEXT"), "none");
    EXPECT_FALSE(picture.contents(Detail::allFormats).string);
    EXPECT_THAT(SelectionOffer({}, Stay::lasting).targets(), IsEmpty());
}

TEST(SelectionOffer, MarksWhatIsThereForAMoment)
{
    const SelectionOffer passing(richText, Stay::passing);
    EXPECT_EQ(passing.targets().count("x-kde-passwordManagerHint"), 1);
    EXPECT_EQ(valueOf(passing, "x-kde-passwordManagerHint"), "x-kde-passwordManagerHint: secret");
    EXPECT_EQ(passing.contents(Detail::allFormats), richText) << "the mark is not part of the contents";
    const SelectionOffer lasting(richText, Stay::lasting);
    EXPECT_EQ(valueOf(lasting, "x-kde-passwordManagerHint"), "none");

    const PasteboardContents password{
        QStringLiteral("mật khẩu"), {{QStringLiteral("x-kde-passwordManagerHint"), "secret"}}};
    const SelectionOffer restored(password, Stay::lasting);
    EXPECT_EQ(valueOf(restored, "x-kde-passwordManagerHint"), "x-kde-passwordManagerHint: secret");
    const SelectionOffer twice(password, Stay::passing);
    EXPECT_EQ(twice.targets().count("x-kde-passwordManagerHint"), 1);
}

} // namespace
} // namespace Tavrin
