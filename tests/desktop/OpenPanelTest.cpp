// The panel for choosing an application's file: the portal's, and the programs that stand in for it.
#include "Platform/Linux/OpenPanel/LinuxOpenPanel.h"

#include "Platform/Linux/OpenPanel/ChooserTool.h"
#include "support/CapturedOutput.h"
#include "support/Program.h"
#include "support/SystemActionsFixture.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

constexpr std::uintptr_t window = 0x2a00007;

class OpenPanelFixture : public SystemActionsFixture {
protected:
    ~OpenPanelFixture() override
    {
        request.reset();
        drainEvents();
    }

    void choose()
    {
        request = panel.chooseApplication(window, [this](const auto& path) {
            // Whoever asked need not keep the request.
            request.reset();
            answers.append(path.value_or(u"nothing"_s));
        });
        EXPECT_EQ(answers, QStringList()) << "not from within";
    }
    bool answersWith(const QString& text)
    {
        const bool hasAnswered = waitFor([this] { return !answers.isEmpty(); }, 20000);
        EXPECT_EQ(answers, QStringList{text});
        return hasAnswered;
    }

    LinuxOpenPanel panel{children};
    std::unique_ptr<OpenPanelRequest> request;
    QStringList answers;
};

class Portal : public OpenPanelFixture {
protected:
    Portal()
    {
        portal.own(u"org.freedesktop.portal.Desktop"_s);
        portal.answer = [this](const QDBusMessage& call) { return answer(call); };
    }
    ~Portal() override
    {
        request.reset();
        QDBusConnection::disconnectFromBus(u"portal"_s);
    }

    QDBusMessage answer(const QDBusMessage& call)
    {
        if (call.member() != u"OpenFile")
            return call.createReply();
        opened = call;
        const auto options = qdbus_cast<QVariantMap>(call.arguments().value(2));
        const QString token = options.value(u"handle_token"_s).toString();
        path = usesOwnPath ? u"/org/freedesktop/portal/desktop/request/of/its/own"_s
                           : u"/org/freedesktop/portal/desktop/request/"_s
                + call.service().mid(1).replace(u'.', u'_') + u'/' + token;
        if (refuses)
            return call.createErrorReply(QDBusError::UnknownInterface, u"No such interface"_s);
        return hangs ? QDBusMessage() : call.createReply(QVariant::fromValue(QDBusObjectPath(path)));
    }
    bool isAsked()
    {
        return waitFor([this] { return !path.isEmpty(); });
    }
    /// What the user does with the panel.
    void respond(uint response, const QStringList& addresses)
    {
        QDBusMessage signal
            = QDBusMessage::createSignal(path, u"org.freedesktop.portal.Request"_s, u"Response"_s);
        signal << response << QVariantMap{{u"uris"_s, addresses}};
        EXPECT_TRUE(bus.send(signal));
    }

    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"portal"_s);
    MockBus portal{bus};
    QDBusMessage opened;
    QString path;
    bool usesOwnPath = false;
    bool refuses = false;
    bool hangs = false;
};

TEST_F(Portal, IsAskedForOneApplication)
{
    choose();
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(opened.path(), u"/org/freedesktop/portal/desktop"_s);
    EXPECT_EQ(opened.interface(), u"org.freedesktop.portal.FileChooser"_s);
    EXPECT_EQ(opened.signature(), u"ssa{sv}"_s);
    EXPECT_EQ(opened.arguments()[0].toString(), u"x11:2a00007"_s);
    EXPECT_EQ(opened.arguments()[1].toString(), u"Chọn Ứng Dụng"_s);
    const auto options = qdbus_cast<QVariantMap>(opened.arguments()[2]);
    EXPECT_EQ(options.value(u"multiple"_s), QVariant(false));
    EXPECT_EQ(options.value(u"modal"_s), QVariant(true));
    EXPECT_EQ(options.value(u"current_folder"_s).toByteArray(), QByteArray("/usr/share/applications\0", 24));
    const auto filters = options.value(u"filters"_s).value<QDBusArgument>();
    EXPECT_EQ(filters.currentSignature(), u"a(sa(us))"_s);
    respond(0, {u"file:///opt/C%C3%B4ng%20c%E1%BB%A5/a%25b.desktop"_s});
    EXPECT_TRUE(answersWith(u"/opt/Công cụ/a%b.desktop"_s));
}

TEST_F(Portal, MayPutTheRequestWhereItLikes)
{
    usesOwnPath = true;
    choose();
    ASSERT_TRUE(isAsked());
    // Until our listening to the other path has reached the bus, nobody hears it.
    EXPECT_TRUE(waitFor([this] {
        respond(0, {u"file:///opt/a"_s});
        return !answers.isEmpty();
    }));
    EXPECT_TRUE(answersWith(u"/opt/a"_s));
}

TEST_F(Portal, SaysThatTheUserCancelled)
{
    choose();
    ASSERT_TRUE(isAsked());
    respond(1, {});
    EXPECT_TRUE(answersWith(u"nothing"_s));
}

TEST_F(Portal, MayAnswerWithNoFileOfThisMachine)
{
    for (const QStringList& addresses :
        {QStringList(), QStringList{u"https://example.org/a"_s}, QStringList{u""_s}}) {
        path.clear();
        answers.clear();
        choose();
        ASSERT_TRUE(isAsked());
        respond(0, addresses);
        EXPECT_TRUE(answersWith(u"nothing"_s));
    }
}

TEST_F(Portal, ClosesThePanelWithItsRequest)
{
    choose();
    ASSERT_TRUE(isAsked());
    request.reset();
    EXPECT_TRUE(waitFor([this] { return portal.record.contains(path + u" Close"); }));
    respond(0, {u"file:///opt/a"_s});
    drainEvents();
    EXPECT_EQ(answers, QStringList());
}

TEST_F(Portal, MayGoWhileItsPanelIsOpen)
{
    choose();
    ASSERT_TRUE(isAsked());
    drainEvents();
    portal.release(u"org.freedesktop.portal.Desktop"_s);
    EXPECT_TRUE(answersWith(u"nothing"_s));
}

TEST_F(Portal, WithoutAFileChooserLeavesItToTheProgram)
{
    refuses = true;
    standIn(u"zenity"_s, "echo /opt/a.desktop");
    choose();
    EXPECT_TRUE(answersWith(u"/opt/a.desktop"_s));
}

TEST_F(Portal, ThatHangsLeavesItToTheProgram)
{
    hangs = true;
    standIn(u"zenity"_s, "echo /opt/a.desktop");
    choose();
    EXPECT_TRUE(answersWith(u"/opt/a.desktop"_s));
}

class ChooserPrograms : public OpenPanelFixture { };

TEST_F(ChooserPrograms, AreAskedInTheirOwnWords)
{
    standIn(u"zenity"_s, "echo '/opt/Công cụ/ a'");
    choose();
    EXPECT_TRUE(answersWith(u"/opt/Công cụ/ a"_s));
    EXPECT_EQ(log(),
        QStringList{
            u"zenity --file-selection --title=Chọn Ứng Dụng --filename=/usr/share/applications/ "
            "--file-filter=Ứng dụng | *.desktop *.AppImage --file-filter=* | * --modal --attach=44040199"_s});
}

TEST_F(ChooserPrograms, AreThatOfTheDesktopFirst)
{
    EXPECT_EQ(chooserTools("KDE", 0).first().first(), "kdialog");
    EXPECT_EQ(chooserTools("ubuntu:GNOME", 0).first().first(), "zenity");
    setVariable("XDG_CURRENT_DESKTOP", "KDE");
    standIn(u"zenity"_s);
    standIn(u"kdialog"_s, "echo /opt/a");
    choose();
    EXPECT_TRUE(answersWith(u"/opt/a"_s));
    ASSERT_EQ(log().size(), 1);
    EXPECT_EQ(log().first(),
        u"kdialog --title Chọn Ứng Dụng --attach 44040199 --getopenfilename /usr/share/applications "
        "Ứng dụng (*.desktop *.AppImage)|* (*)"_s);
}

TEST_F(ChooserPrograms, StandInForOneAnother)
{
    standIn(u"kdialog"_s, "echo /opt/a");
    choose();
    EXPECT_TRUE(answersWith(u"/opt/a"_s));
}

TEST_F(ChooserPrograms, SayNothingWhenTheUserCancels)
{
    useReal(u"yes"_s);
    useReal(u"tr"_s);
    for (const char* lines :
        {"exit 1", "echo; exit 0", "echo 'Gtk-Message: hello'", "yes /opt | tr -d '\\n'"}) {
        answers.clear();
        standIn(u"zenity"_s, lines);
        choose();
        EXPECT_TRUE(answersWith(u"nothing"_s)) << lines;
    }
}

TEST_F(ChooserPrograms, EndWithTheRequest)
{
    standIn(u"zenity"_s, "echo $$ > " + folder.path(u"pid"_s).toUtf8() + "; sleep 1000");
    choose();
    const auto pid = [this] { return folder.read(u"pid"_s).trimmed().toInt(); };
    ASSERT_TRUE(waitFor([&] { return pid() > 0; }));
    request.reset();
    EXPECT_TRUE(waitFor([&] { return !isRunning(pid()); }));
    drainEvents();
    EXPECT_EQ(answers, QStringList());
}

TEST_F(ChooserPrograms, AreMissedInOneLine)
{
    CapturedOutput output;
    choose();
    EXPECT_TRUE(answersWith(u"nothing"_s));
    EXPECT_EQ(output.lines(),
        QStringList{u"Không mở được hộp thoại chọn file: cần xdg-desktop-portal, zenity hoặc kdialog."_s});
}

TEST_F(ChooserPrograms, AreThereWithoutABus)
{
    setVariable("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    standIn(u"zenity"_s, "echo /opt/a");
    choose();
    EXPECT_TRUE(answersWith(u"/opt/a"_s));
}

} // namespace
} // namespace Tavrin
