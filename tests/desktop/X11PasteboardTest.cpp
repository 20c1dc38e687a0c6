// The clipboard between us and programs that behave: xclip, xsel, GTK, and the toolkit of our own windows.
#include "Platform/Linux/X11/X11Pasteboard.h"

#include "support/Program.h"
#include "support/SelectionPeer.h"
#include "support/ToolkitClipboard.h"
#include "support/Wait.h"

#include <QBuffer>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QRandomGenerator>
#include <gmock/gmock.h>

#include <malloc.h>

namespace Tavrin {
namespace {

using Detail = Pasteboard::Detail;
using Stay = Pasteboard::Stay;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using Testing::outputOf;
using Testing::Program;
using Testing::SelectionPeer;
using testing::UnorderedElementsAre;
using Testing::waitFor;

const QString vietnamese = QStringLiteral(
    "Xin chào, đây là văn bản mẫu: ắằẳẵặ ỷỹỵ 👋🏽👨‍👩‍👧\n\tdòng "
    "hai");

/// About five megabytes, nowhere the same.
QString longText()
{
    QString text;
    for (int line = 0; text.size() < 2'500'000; ++line)
        text += QString::number(line) + u" đường dài ";
    return text;
}

QByteArray noisyPicture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    QRandomGenerator generator(1);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column)
            image.setPixel(column, row, generator.generate());
    }
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return data;
}

std::vector<std::string> types(const PasteboardContents& contents)
{
    std::vector<std::string> result;
    for (const auto& format : contents.formats)
        result.push_back(format.type.toStdString());
    return result;
}

class Clipboard : public testing::Test {
protected:
    PasteboardContents read(Detail detail)
    {
        std::optional<PasteboardContents> result;
        pasteboard.read(detail, [&](PasteboardContents contents) { result = std::move(contents); });
        EXPECT_FALSE(result) << "the completion comes later";
        EXPECT_TRUE(waitFor([&] { return result.has_value(); }));
        return result.value_or(PasteboardContents());
    }

    /// Writes, and sees that it is there.
    void write(const PasteboardContents& contents, Stay stay = Stay::lasting)
    {
        pasteboard.write(contents, stay);
        EXPECT_TRUE(read(Detail::string).string == contents.string);
    }

    static QByteArray pasted(const QString& target = QStringLiteral("UTF8_STRING"))
    {
        return outputOf(QStringLiteral("xclip"),
            {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                QStringLiteral("-t"), target});
    }
    static QByteArrayList targets() { return pasted(QStringLiteral("TARGETS")).split('\n'); }

    /// xclip with this on the clipboard, until it ends.
    std::unique_ptr<Program> copyElsewhere(
        const QByteArray& data, const QString& target = QStringLiteral("UTF8_STRING"))
    {
        QFile file(qEnvironmentVariable("HOME") + u"/copied");
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(data);
        file.close();
        const xcb_window_t before = peer.owner("CLIPBOARD");
        auto program = std::make_unique<Program>(QStringLiteral("xclip"),
            QStringList{QStringLiteral("-quiet"), QStringLiteral("-i"), QStringLiteral("-selection"),
                QStringLiteral("clipboard"), QStringLiteral("-t"), target, file.fileName()});
        EXPECT_TRUE(waitFor([&] {
            const xcb_window_t now = peer.owner("CLIPBOARD");
            return now != XCB_WINDOW_NONE && now != before;
        }));
        return program;
    }

    X11Pasteboard pasteboard;
    SelectionPeer peer;
    Testing::ToolkitClipboard toolkit;
};

TEST_F(Clipboard, IsEmptyAtFirst)
{
    EXPECT_EQ(read(Detail::allFormats), PasteboardContents());
}

TEST_F(Clipboard, GivesOthersTheTextThatWeWrite)
{
    write({vietnamese, {}});
    EXPECT_EQ(pasted(), vietnamese.toUtf8());
    EXPECT_EQ(pasted(QStringLiteral("text/plain;charset=utf-8")), vietnamese.toUtf8());
    EXPECT_EQ(
        outputOf(QStringLiteral("xsel"), {QStringLiteral("-b"), QStringLiteral("-o")}), vietnamese.toUtf8());
    EXPECT_EQ(outputOf(QStringLiteral("/usr/bin/python3"),
                  {QStringLiteral(TAVRIN_TEST_SUPPORT "/gtk_clipboard.py"), QStringLiteral("text")}),
        vietnamese.toUtf8());
}

TEST_F(Clipboard, GivesUsTheTextThatOthersCopy)
{
    const auto program = copyElsewhere(vietnamese.toUtf8());
    EXPECT_EQ(read(Detail::string), (PasteboardContents{vietnamese, {}}));
    EXPECT_EQ(read(Detail::allFormats), (PasteboardContents{vietnamese, {}}));
}

TEST_F(Clipboard, CarriesMegabytesBothWays)
{
    const QString text = longText();
    write({text, {}});
    EXPECT_TRUE(pasted() == text.toUtf8());
    const auto program = copyElsewhere(text.toUtf8());
    EXPECT_TRUE(read(Detail::string).string == text);
}

TEST_F(Clipboard, KnowsAnEmptyTextFromNone)
{
    const auto program = copyElsewhere({});
    EXPECT_EQ(read(Detail::string).string, QString());
}

TEST_F(Clipboard, BringsBackTheFormatsBesideTheText)
{
    auto* copied = new QMimeData;
    copied->setText(vietnamese);
    copied->setHtml(QStringLiteral("<b>Xin chào</b>"));
    copied->setData(QStringLiteral("text/uri-list"), "file:///tmp/a\r\n");
    copied->setData(QStringLiteral("x-special/gnome-copied-files"), "copy\nfile:///tmp/a");
    copied->setData(QStringLiteral("application/x-kde-cutselection"), "1");
    copied->setData(QStringLiteral("text/rtf"), QByteArray("{\\rtf1 \0}", 9));
    toolkit.copy(copied, peer);

    const PasteboardContents contents = read(Detail::allFormats);
    EXPECT_EQ(contents.string, vietnamese);
    // text/x-moz-url is the toolkit's own addition to the list of files.
    EXPECT_THAT(types(contents),
        UnorderedElementsAre("text/html", "text/uri-list", "x-special/gnome-copied-files", "text/x-moz-url",
            "application/x-kde-cutselection", "text/rtf"));
    EXPECT_EQ(read(Detail::string), (PasteboardContents{vietnamese, {}}));

    write({QStringLiteral("chen ngang"), {}}, Stay::passing);
    EXPECT_EQ(pasted(), "chen ngang");
    write(contents);
    EXPECT_EQ(pasted(), vietnamese.toUtf8());
    EXPECT_EQ(pasted(QStringLiteral("text/html")), "<b>Xin chào</b>");
    EXPECT_EQ(pasted(QStringLiteral("text/uri-list")), "file:///tmp/a\r\n");
    EXPECT_EQ(pasted(QStringLiteral("x-special/gnome-copied-files")), "copy\nfile:///tmp/a");
    EXPECT_EQ(pasted(QStringLiteral("application/x-kde-cutselection")), "1");
    EXPECT_EQ(pasted(QStringLiteral("text/rtf")), QByteArray("{\\rtf1 \0}", 9));
    EXPECT_EQ(read(Detail::allFormats), contents) << "from memory";
    EXPECT_EQ(read(Detail::string), (PasteboardContents{vietnamese, {}}));
}

TEST_F(Clipboard, HoldsNoTextWhereThereIsAPicture)
{
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    auto* copied = new QMimeData;
    copied->setImageData(picture);
    toolkit.copy(copied, peer);
    EXPECT_EQ(read(Detail::allFormats), PasteboardContents());
}

TEST_F(Clipboard, GivesOthersAPictureHoweverOftenTheyAsk)
{
    const QByteArray picture = noisyPicture(1200, 1000);
    ASSERT_GT(picture.size(), 3'000'000);
    write({std::nullopt, {{QStringLiteral("image/png"), picture}}});
    for (int round = 0; round < 5; ++round)
        EXPECT_TRUE(pasted(QStringLiteral("image/png")) == picture);
    EXPECT_EQ(outputOf(QStringLiteral("/usr/bin/python3"),
                  {QStringLiteral(TAVRIN_TEST_SUPPORT "/gtk_clipboard.py"), QStringLiteral("picture")}),
        "1200x1000");
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), QSize(1200, 1000));
    EXPECT_THAT(targets(), Not(Contains("UTF8_STRING")));
    EXPECT_EQ(read(Detail::string), PasteboardContents());
}

TEST_F(Clipboard, MarksWhatIsThereForAMomentOnly)
{
    write({vietnamese, {}}, Stay::passing);
    EXPECT_THAT(targets(), Contains("x-kde-passwordManagerHint"));
    EXPECT_EQ(pasted(QStringLiteral("x-kde-passwordManagerHint")), "secret");
    EXPECT_THAT(targets(), Not(Contains("SAVE_TARGETS")));
    write({vietnamese, {}});
    EXPECT_THAT(targets(), Not(Contains("x-kde-passwordManagerHint")));
    EXPECT_THAT(targets(), Contains("SAVE_TARGETS"));
}

TEST_F(Clipboard, LeavesAPasswordMarkedAsOne)
{
    auto* copied = new QMimeData;
    copied->setText(QStringLiteral("mật khẩu"));
    copied->setData(QStringLiteral("x-kde-passwordManagerHint"), "secret");
    toolkit.copy(copied, peer);
    const PasteboardContents contents = read(Detail::allFormats);
    write(contents);
    EXPECT_EQ(pasted(QStringLiteral("x-kde-passwordManagerHint")), "secret");
}

TEST_F(Clipboard, AnswersOurOwnWindowWhileItWaits)
{
    // The toolkit reads without running the event loop: nothing of the owner may need this thread.
    QElapsedTimer timer;
    timer.start();
    pasteboard.write({vietnamese, {{QStringLiteral("text/html"), "<i>x</i>"}}}, Stay::lasting);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), vietnamese) << "at once after the write";
    EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->html(), QStringLiteral("<i>x</i>"));
    const QString text = longText();
    pasteboard.write({text, {}}, Stay::passing);
    EXPECT_TRUE(QGuiApplication::clipboard()->text() == text);
    EXPECT_LT(timer.elapsed(), 4500) << "the toolkit gives up after five seconds";
}

TEST_F(Clipboard, ReadsWhatOurOwnWindowCopied)
{
    auto* copied = new QMimeData;
    copied->setText(vietnamese);
    toolkit.copy(copied, peer);
    EXPECT_EQ(read(Detail::string).string, vietnamese);
    write({QStringLiteral("mới"), {}});
    EXPECT_TRUE(waitFor([] { return !QGuiApplication::clipboard()->ownsClipboard(); }));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("mới"));
}

TEST_F(Clipboard, KeepsTheOrderOfReadsAndWrites)
{
    const auto program = copyElsewhere("before");
    QStringList found;
    const auto note
        = [&](const PasteboardContents& contents) { found << contents.string.value_or(QStringLiteral("-")); };
    pasteboard.read(Detail::string, note);
    pasteboard.write({QStringLiteral("first"), {}}, Stay::lasting);
    pasteboard.read(Detail::string, note);
    pasteboard.write({QStringLiteral("second"), {}}, Stay::passing);
    pasteboard.read(Detail::allFormats, note);
    EXPECT_TRUE(waitFor([&] { return found.size() == 3; }));
    EXPECT_THAT(
        found, ElementsAre(QStringLiteral("before"), QStringLiteral("first"), QStringLiteral("second")));
    EXPECT_EQ(pasted(), "second");
}

TEST_F(Clipboard, GivesWayToTheNextProgram)
{
    write({vietnamese, {}});
    const auto program = copyElsewhere("theirs");
    EXPECT_EQ(read(Detail::string).string, QStringLiteral("theirs"));
    write({vietnamese, {}});
    EXPECT_TRUE(waitFor([&] { return program->hasEnded(); })) << "xclip ends when it loses the clipboard";
    EXPECT_EQ(pasted(), vietnamese.toUtf8());
}

/// Kilobytes that are this process's own.
qint64 privateDirty()
{
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("Private_Dirty:"))
            return line.mid(14).trimmed().split(' ').front().toLongLong();
    }
    ADD_FAILURE() << "no such line";
    return 0;
}

TEST_F(Clipboard, GivesMemoryBackWhenAPictureGoes)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "AddressSanitizer keeps freed memory to itself";
#endif
    pasteboard.write({QStringLiteral("chữ"), {}}, Stay::lasting);
    malloc_trim(0);
    const qint64 before = privateDirty();
    constexpr int rounds = 3; // the allocator treats the later ones otherwise
    for (int round = 0; round < rounds; ++round) {
        QByteArray picture(5'000'000, 'x');
        pasteboard.write({std::nullopt, {{QStringLiteral("image/png"), std::move(picture)}}}, Stay::lasting);
        EXPECT_GT(privateDirty(), before + 4000) << "it is there";
        pasteboard.write({QStringLiteral("chữ"), {}}, Stay::lasting);
        EXPECT_TRUE(waitFor([&] { return privateDirty() < before + 1000; })) << privateDirty() - before;
    }
    pasteboard.write(
        {std::nullopt, {{QStringLiteral("image/png"), QByteArray(5'000'000, 'x')}}}, Stay::lasting);
    EXPECT_GT(privateDirty(), before + 4000);
    peer.own("CLIPBOARD");
    EXPECT_TRUE(waitFor([&] { return privateDirty() < before + 1000; })) << "when another program copies";
    std::printf("private dirty: %lld kB before, %lld kB after\n", before, privateDirty());
}

} // namespace
} // namespace Tavrin
