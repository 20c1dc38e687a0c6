#include "Platform/Linux/Update/LinuxUpdateInstaller.h"

#include "Core/Update/UpdateService.h"
#include "Fetch/DownloadOrder.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Linux/Process/ChildWatcher.h"
#include "support/HttpServer.h"
#include "support/Processes.h"
#include "support/Program.h"
#include "support/StandIns.h"
#include "support/UpdateCheck.h"

#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

const auto downloadFailed = u"Lỗi tải bản cập nhật: "_s;
const auto saveFailed = u"Lỗi khi lưu file cập nhật: "_s;
const auto installing = u"Đang cài đặt và khởi động lại..."_s;
const auto timedOut = u"Lỗi tải bản cập nhật: Hết thời gian chờ máy chủ trả lời."_s;
const auto brokenOff = u"Lỗi tải bản cập nhật: Chương trình tải đã dừng giữa chừng."_s;
const auto malformed = u"Lỗi tải bản cập nhật: Chương trình tải trả lời sai quy cách."_s;

const auto archiveName = u"Tavrin-Update.zip"_s;
const auto runtimeFolder = u"run/Tavrin"_s;

/// The service and the program's own installer, against a server of the test's own. The shell that would
/// run the updater does nothing, unless a test says otherwise.
class RealUpdate : public testing::Test {
protected:
    RealUpdate()
    {
        for (const auto& name : {u"run/.keep"_s, u"cache/.keep"_s})
            folder.write(name, {});
        setShell("exit 0");
        standIns.useReal(u"unzip"_s);
        for (const char* program : {"cat", "sleep", "kill"})
            standIns.useReal(QString::fromLatin1(program));
    }
    ~RealUpdate() override
    {
        service.reset();
        installer.reset();
        EXPECT_TRUE(waitFor([this] { return children.runningCount() == 0 && ownChildren().isEmpty(); }));
        EXPECT_TRUE(waitFor([this] { return server.openConnectionCount() == 0; }));
    }

    void setShell(const QByteArray& script)
    {
        places.shell = QFile::encodeName(writeProgram(u"shell"_s, script));
    }
    QString writeProgram(const QString& name, const QByteArray& script) const
    {
        folder.write(name, "#!/bin/sh\n" + script + '\n');
        QFile::setPermissions(folder.path(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return folder.path(name);
    }

    /// Finds a build whose archive the server has, and starts to download it.
    void start() { start(server.address(u"/t.zip"_s)); }
    void start(const QUrl& address)
    {
        service.reset();
        installer.emplace(children, places);
        service.emplace(source, *installer, options);
        changes = 0;
        terminations = 0;
        progress.clear();
        service->checkForUpdates(/*manual=*/false);
        ASSERT_TRUE(source.answer(encodeUpdateInfo({u"9.9"_s, {}, {}, address.toString(), {}})));
        QObject::connect(
            &*service, &UpdateService::terminationRequested, &receiver, [this] { ++terminations; });
        QObject::connect(&*service, &UpdateService::changed, &receiver, [this] {
            ++changes;
            progress.push_back(service->downloadProgress());
        });
        service->startAutoUpdate();
        ASSERT_TRUE(service->isUpdating());
    }
    /// Downloads to the end: until the updater runs or something has failed.
    void update() { update(server.address(u"/t.zip"_s)); }
    void update(const QUrl& address)
    {
        start(address);
        EXPECT_TRUE(waitFor([this] { return terminations > 0 || !service->isUpdating(); }, 20000));
    }
    /// Expects that the update fails with this line, or one that continues it when it ends in a blank, and
    /// that nothing is left of it.
    void expectFailure(const QString& message)
    {
        EXPECT_EQ(terminations, 0);
        EXPECT_FALSE(service->isUpdating());
        EXPECT_TRUE(service->isUpdateAvailable());
        if (message.endsWith(u' ')) {
            EXPECT_TRUE(service->statusMessage().startsWith(message)) << qPrintable(service->statusMessage());
            EXPECT_GT(service->statusMessage().size(), message.size());
        } else {
            EXPECT_EQ(service->statusMessage().toStdString(), message.toStdString());
        }
        EXPECT_TRUE(waitFor([this] { return children.runningCount() == 0; }));
        EXPECT_EQ(folder.names(runtimeFolder), QStringList()) << "nothing is left of what has arrived";
    }
    /// Expects that the updater runs with this archive.
    void expectArchive(const QByteArray& contents)
    {
        EXPECT_EQ(terminations, 1);
        EXPECT_EQ(service->statusMessage().toStdString(), installing.toStdString());
        EXPECT_TRUE(service->isUpdating());
        EXPECT_EQ(folder.read(runtimeFolder + u'/' + archiveName), contents);
        EXPECT_EQ(folder.names(runtimeFolder), (QStringList{archiveName, u"tavrin_updater.sh"_s}));
    }

    TemporaryFolder folder;
    StandIns standIns;
    HttpServer server{answering("200 OK", "archive")};
    ChildWatcher children;
    LinuxUpdatePlaces places{QStringLiteral(TAVRIN_FETCH), folder.path(u"run"_s), folder.path(u"cache"_s),
        folder.path(u"nhà của tôi"_s), {}};
    UpdateServiceOptions options;
    FakeManifestSource source;
    QObject receiver;
    std::optional<LinuxUpdateInstaller> installer;
    std::optional<UpdateService> service;
    int changes = 0;
    int terminations = 0;
    std::vector<double> progress;
};

mode_t modeOf(const QString& path)
{
    struct stat info { };
    EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &info), 0);
    return info.st_mode & ALLPERMS;
}

TEST_F(RealUpdate, SavesTheArchiveAndStartsTheUpdater)
{
    setShell(R"(printf '%s|' "$#" "$1" > "$0.arguments")");
    update();
    expectArchive("archive");
    EXPECT_EQ(service->downloadProgress(), 1.0);
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.requests()[0].method, "GET");
    EXPECT_EQ(server.requests()[0].target, "/t.zip") << "as the manifest has it";
    const QString script = folder.path(runtimeFolder) + u"/tavrin_updater.sh";
    EXPECT_EQ(folder.read(runtimeFolder + u"/tavrin_updater.sh"),
        updaterScript(linuxUpdaterTarget(places.home), folder.path(runtimeFolder) + u'/' + archiveName)
            .toUtf8());
    EXPECT_TRUE(waitFor([&] { return folder.read(u"shell.arguments"_s) == "1|" + script.toUtf8() + '|'; }))
        << folder.read(u"shell.arguments"_s).constData();
    EXPECT_EQ(modeOf(folder.path(runtimeFolder)), 0700U);
}

TEST_F(RealUpdate, ShowsHowFarItIsWithoutFlooding)
{
    constexpr qint64 total = 30'000'000;
    qint64 sent = 0;
    server.setHandler(streaming("HTTP/1.1 200 OK\r\nContent-Length: 30000000\r\n\r\n", total, sent));
    QElapsedTimer time;
    time.start();
    update();
    EXPECT_EQ(terminations, 1) << qPrintable(service->statusMessage());
    EXPECT_EQ(QFileInfo(folder.path(runtimeFolder) + u'/' + archiveName).size(), total);
    EXPECT_TRUE(std::ranges::is_sorted(progress));
    EXPECT_EQ(progress.back(), 1.0);
    // The start, the end, the message of the install, and what a tenth of a second each allows.
    EXPECT_LE(changes, 4 + time.elapsed() / 100);
}

TEST_F(RealUpdate, ReportsWhatIsThereAlsoOfOneThatStandsStill)
{
    constexpr qsizetype half = 300'000;
    QTcpSocket* client = nullptr;
    server.setHandler([&](QTcpSocket& socket, const HttpRequest&) {
        client = &socket;
        socket.write("HTTP/1.1 200 OK\r\nContent-Length: 600000\r\n\r\n" + QByteArray(half, 'a'));
    });
    start();
    ASSERT_TRUE(waitFor([&] { return service->downloadProgress() == 0.5; })) << service->downloadProgress();
    EXPECT_TRUE(service->isUpdating());
    client->write(QByteArray(half, 'a'));
    ASSERT_TRUE(waitFor([&] { return terminations == 1; }));
    expectArchive(QByteArray(2 * half, 'a'));
}

struct BodyCase {
    const char* name;
    HttpServer::Handler handler;
    QByteArray archive;
    double progress;
};

class Body : public RealUpdate, public testing::WithParamInterface<BodyCase> { };

TEST_P(Body, IsAnArchiveWhateverItIs)
{
    server.setHandler(GetParam().handler);
    update();
    expectArchive(GetParam().archive);
    EXPECT_EQ(service->downloadProgress(), GetParam().progress);
}

INSTANTIATE_TEST_SUITE_P(Answers, Body,
    testing::Values(BodyCase{"NotFound", answering("404 Not Found", "<html>"), "<html>", 1.0},
        BodyCase{"ServerError", answering("500 Internal Server Error", "oh"), "oh", 1.0},
        BodyCase{"NoBytes", answering("200 OK", ""), "", 0.0},
        BodyCase{"NoLength", breakingOff("HTTP/1.0 200 OK\r\n\r\nbody", false), "body", 0.0},
        BodyCase{"Chunked",
            sending("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nbody\r\n0\r\n\r\n"), "body",
            0.0},
        BodyCase{"LengthTooShort", sending("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody and more"),
            "body", 1.0}),
    [](const auto& instance) { return instance.param.name; });

struct TransportCase {
    const char* name;
    HttpServer::Handler handler;
    QString message;
};

class Transport : public RealUpdate, public testing::WithParamInterface<TransportCase> { };

TEST_P(Transport, ThatFailsEndsTheUpdate)
{
    server.setHandler(GetParam().handler);
    update();
    expectFailure(GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(Faults, Transport,
    testing::Values(TransportCase{"ResetAtOnce", breakingOff({}, true), downloadFailed},
        TransportCase{"ResetInTheMiddle",
            breakingOff("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf", true), downloadFailed},
        TransportCase{"LengthTooLong",
            breakingOff("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf", false),
            downloadFailed + u"Máy chủ đã đóng kết nối."},
        TransportCase{"NoHttp", breakingOff("no HTTP at all\r\n\r\n", false), downloadFailed}),
    [](const auto& instance) { return instance.param.name; });

TEST_F(RealUpdate, FailsWhenTheConnectionIsRefused)
{
    QUrl address;
    {
        const HttpServer gone({});
        address = gone.address(u"/t.zip"_s);
    }
    update(address);
    expectFailure(downloadFailed + u"Máy chủ từ chối kết nối.");
}

TEST_F(RealUpdate, FailsWithAnAddressThatNoServerHas)
{
    update(QUrl(u"t.zip"_s));
    expectFailure(downloadFailed);
}

TEST_F(RealUpdate, FollowsARedirect)
{
    HttpServer target(answering("200 OK", "moved"));
    server.setHandler(answering(
        "302 Found", "elsewhere", "Location: " + target.address(u"/moved.zip"_s).toEncoded() + "\r\n"));
    update();
    expectArchive("moved");
    EXPECT_EQ(service->downloadProgress(), 1.0);
    EXPECT_TRUE(waitFor([&] { return target.openConnectionCount() == 0; }));
}

class Stall : public RealUpdate, public testing::WithParamInterface<const char*> { };

TEST_P(Stall, IsWaitedForNoLongerThanTheLimit)
{
    server.setHandler(sending(GetParam()));
    EXPECT_TRUE(withEnoughTime([this](std::chrono::milliseconds limit) {
        options.downloadSilence = limit;
        const std::size_t before = server.requests().size();
        update();
        expectFailure(timedOut);
        return server.requests().size() > before;
    }));
}

INSTANTIATE_TEST_SUITE_P(Places, Stall,
    testing::Values("", "HTTP/1.1 200 OK\r\n", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n",
        "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf"));

TEST_F(RealUpdate, TakesAsLongAsSomethingArrives)
{
    int drops = 0;
    server.setHandler(dripping("HTTP/1.1 200 OK\r\n\r\n", std::chrono::milliseconds(10), drops));
    EXPECT_TRUE(withEnoughTime([&](std::chrono::milliseconds limit) {
        options.downloadSilence = limit;
        QElapsedTimer time;
        time.start();
        start();
        EXPECT_TRUE(
            waitFor([&] { return !service->isUpdating() || time.elapsed() > 3 * limit.count(); }, 20000));
        return service->isUpdating();
    })) << "three times the limit, and still under way";
    EXPECT_GT(drops, 0);
}

TEST_F(RealUpdate, ReplacesWhatIsLeftOfAnEarlierOne)
{
    for (const auto& stale : {u"/Tavrin-Update.zip"_s, u"/Tavrin-Update.zip/folder/file"_s}) {
        QDir(folder.path(runtimeFolder)).removeRecursively();
        folder.write(runtimeFolder + stale, "an older and much longer archive");
        folder.write(runtimeFolder + u"/tavrin_updater.sh", "an older script");
        folder.write(runtimeFolder + u"/.Tavrin-Update.zip.abc123", "from a program that was killed");
        update();
        expectArchive("archive");
        EXPECT_THAT(folder.read(runtimeFolder + u"/tavrin_updater.sh").toStdString(),
            testing::StartsWith("#!/bin/bash\n"));
    }
}

TEST_F(RealUpdate, StartsTheUpdaterAlsoWithAScriptFromBefore)
{
    folder.write(runtimeFolder + u"/tavrin_updater.sh/in the way", {});
    update();
    EXPECT_EQ(terminations, 1);
    EXPECT_EQ(service->statusMessage(), installing);
    EXPECT_EQ(folder.names(runtimeFolder + u"/tavrin_updater.sh"), QStringList{u"in the way"_s});
}

TEST_F(RealUpdate, FailsWhenTheDiskIsFull)
{
    server.setHandler(answering("200 OK", QByteArray(300'000, 'a')));
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    const rlimit small{100'000, usual.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    update();
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &usual), 0);
    expectFailure(downloadFailed + u"Không ghi được tệp tải về (File too large).");
}

TEST_F(RealUpdate, FailsWithoutItsHelper)
{
    places.helper = folder.path(u"missing"_s);
    update();
    expectFailure(downloadFailed + u"Không chạy được chương trình tải (No such file or directory).");
}

TEST_F(RealUpdate, FailsWhenItsHelperFails)
{
    places.helper = writeProgram(u"helper"_s, "exit 0");
    update();
    expectFailure(brokenOff);
    places.helper = writeProgram(u"helper"_s, "echo 'progress 1 2'; kill -ABRT $$");
    update();
    expectFailure(brokenOff);
    EXPECT_EQ(service->downloadProgress(), 0.5) << "stays where it was";
    for (const char* garbage : {"echo '<html>'", "echo 'progress 1'", "exec cat /dev/zero"}) {
        places.helper = writeProgram(u"helper"_s, garbage);
        update();
        expectFailure(malformed);
    }
}

TEST_F(RealUpdate, EndsWithTheServiceAtAnyTime)
{
    server.setHandler(sending("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf"));
    for (const bool isUnderWay : {false, true}) {
        start();
        if (isUnderWay) {
            ASSERT_TRUE(waitFor([this] { return service->downloadProgress() > 0; }));
        }
        service.reset();
        EXPECT_TRUE(waitFor([this] {
            return children.runningCount() == 0 && ownChildren().isEmpty()
                && folder.names(runtimeFolder).isEmpty();
        })) << folder.names(runtimeFolder).join(u' ').toStdString();
    }
    EXPECT_EQ(terminations, 0);
}

/// The folder that the archive goes to.
class TemporaryPlace : public RealUpdate { };

TEST_F(TemporaryPlace, IsTheCacheWhereTheRuntimeDirectoryHasNoRoomOrIsNone)
{
    for (const auto& runtime : {u"/sys"_s, u""_s, folder.path(u"missing"_s)}) {
        QDir(folder.path(u"cache"_s)).removeRecursively();
        places.runtimeDirectory = runtime;
        update();
        EXPECT_EQ(terminations, 1) << qPrintable(service->statusMessage());
        EXPECT_EQ(folder.read(u"cache/Tavrin/tmp/Tavrin-Update.zip"_s), "archive");
        EXPECT_EQ(modeOf(folder.path(u"cache/Tavrin/tmp"_s)), 0700U);
    }
}

TEST_F(TemporaryPlace, OfOursIsClosedToOthers)
{
    folder.write(runtimeFolder + u"/of ours", {});
    ASSERT_EQ(chmod(QFile::encodeName(folder.path(runtimeFolder)).constData(), 0777), 0);
    update();
    EXPECT_EQ(terminations, 1) << qPrintable(service->statusMessage());
    EXPECT_EQ(modeOf(folder.path(runtimeFolder)), 0700U);
}

TEST_F(TemporaryPlace, ThatIsALinkIsRefused)
{
    folder.write(u"elsewhere/.keep"_s, {});
    ASSERT_TRUE(QFile::link(folder.path(u"elsewhere"_s), folder.path(runtimeFolder)));
    update();
    EXPECT_FALSE(service->isUpdating());
    EXPECT_TRUE(service->statusMessage().startsWith(saveFailed)) << qPrintable(service->statusMessage());
    EXPECT_EQ(folder.names(u"elsewhere"_s), QStringList{u".keep"_s});
    EXPECT_EQ(server.connectionCount(), 0) << "nothing is fetched that has no place";
}

TEST_F(TemporaryPlace, ThatIsAFileIsRefused)
{
    folder.write(runtimeFolder, "a file");
    update();
    EXPECT_EQ(service->statusMessage(),
        saveFailed + u"Không dùng được thư mục tạm %1 (Not a directory)."_s.arg(folder.path(runtimeFolder)));
    EXPECT_EQ(folder.read(runtimeFolder), "a file");
}

TEST_F(TemporaryPlace, ThatIsSomebodyElsesIsRefused)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a folder to somebody else";
    folder.write(runtimeFolder + u"/theirs", {});
    constexpr uid_t nobody = 65534;
    ASSERT_EQ(chown(QFile::encodeName(folder.path(runtimeFolder)).constData(), nobody, nobody), 0);
    update();
    EXPECT_EQ(service->statusMessage(),
        saveFailed
            + u"Không dùng được thư mục tạm %1 (thuộc về người dùng khác)."_s.arg(
                folder.path(runtimeFolder)));
    EXPECT_EQ(folder.names(runtimeFolder), QStringList{u"theirs"_s});
}

TEST_F(TemporaryPlace, ThatCannotBeMadeIsTold)
{
    // Not even root makes a folder there.
    places.runtimeDirectory.clear();
    places.cacheHome = u"/proc/self"_s;
    update();
    EXPECT_EQ(service->statusMessage(),
        saveFailed + u"Không dùng được thư mục tạm /proc/self/Tavrin/tmp (No such file or directory).");
}

TEST_F(TemporaryPlace, ThatAScriptCannotNameIsRefused)
{
    folder.write(u"r$HOME/.keep"_s, {});
    places.runtimeDirectory = folder.path(u"r$HOME"_s);
    update();
    EXPECT_TRUE(service->statusMessage().startsWith(saveFailed)) << qPrintable(service->statusMessage());
    EXPECT_EQ(folder.names(u"r$HOME"_s), QStringList{u".keep"_s});
}

/// The shell that runs the updater, and what it needs.
class Shell : public RealUpdate { };

TEST_F(Shell, ThatIsMissingLeavesTheProgramRunning)
{
    places.shell = "/missing/bash";
    update();
    EXPECT_EQ(terminations, 0);
    EXPECT_FALSE(service->isUpdating());
    EXPECT_EQ(service->statusMessage(), u"Không thể chạy tiến trình cập nhật: No such file or directory"_s);
    EXPECT_TRUE(service->isUpdateAvailable());
}

TEST_F(Shell, IsNotStartedWhereItsScriptCouldDoNothing)
{
    folder.write(u"nhà của tôi/.local/opt"_s, "a file");
    update();
    EXPECT_EQ(terminations, 0);
    EXPECT_EQ(service->statusMessage(),
        u"Không thể chạy tiến trình cập nhật: không ghi được vào thư mục %1/.local/opt"_s.arg(places.home));
    places.home = folder.path(u"$HOME"_s);
    update();
    EXPECT_EQ(terminations, 0);
    ASSERT_TRUE(QFile::remove(standIns.folder.path(u"bin/unzip"_s)));
    places.home = folder.path(u"nhà"_s);
    update();
    EXPECT_EQ(terminations, 0);
    EXPECT_EQ(
        service->statusMessage(), u"Không thể chạy tiến trình cập nhật: không tìm thấy chương trình unzip"_s);
}

TEST_F(Shell, IsNotStartedWhereTheBundleHasNoRoom)
{
    update();
    ASSERT_EQ(terminations, 1);
    // As large as no disk is, and nothing on it.
    const QString archive = folder.path(runtimeFolder + u'/' + archiveName);
    ASSERT_TRUE(QFile::resize(archive, Q_INT64_C(4) << 40));
    std::optional<QString> error;
    installer->install(
        archive, [&error](const std::optional<QString>& reason) { error = reason.value_or(QString()); });
    ASSERT_TRUE(waitFor([&error] { return error.has_value(); }));
    EXPECT_EQ(*error, u"không đủ chỗ trống trong thư mục %1"_s.arg(QDir::tempPath()));
}

TEST_F(Shell, OutlivesUs)
{
    setShell("echo $$ > \"$0.pid\"; exec sleep 1000");
    update();
    pid_t shell = 0;
    ASSERT_TRUE(waitFor([&] { return (shell = folder.read(u"shell.pid"_s).trimmed().toInt()) > 0; }));
    EXPECT_EQ(getsid(shell), shell) << "a session of its own";
    service.reset();
    installer.reset();
    drainEvents();
    EXPECT_TRUE(isRunning(shell));
    EXPECT_EQ(kill(shell, SIGKILL), 0);
}

/// The helper by itself.
TEST(DownloadHelper, TellsThatADeviceIsFull)
{
    const HttpServer server(answering("200 OK", "archive"));
    QProcess helper;
    helper.start(QStringLiteral(TAVRIN_FETCH), {u"download"_s, server.address().toString(), u"/dev/full"_s});
    ASSERT_TRUE(waitFor([&] { return helper.state() == QProcess::NotRunning; }));
    EXPECT_EQ(QString::fromUtf8(helper.readAllStandardOutput()).toStdString(),
        "broken Không ghi được tệp tải về (No space left on device).\n");
}

TEST(DownloadHelper, FollowsNoLinkAndMakesNoFile)
{
    const TemporaryFolder folder;
    folder.write(u"target"_s, "kept");
    ASSERT_TRUE(QFile::link(folder.path(u"target"_s), folder.path(u"link"_s)));
    for (const auto& name : {u"link"_s, u"missing"_s}) {
        QProcess helper;
        helper.start(
            QStringLiteral(TAVRIN_FETCH), {u"download"_s, u"http://127.0.0.1:1/"_s, folder.path(name)});
        ASSERT_TRUE(waitFor([&] { return helper.state() == QProcess::NotRunning; }));
        EXPECT_EQ(helper.exitCode(), EXIT_FAILURE);
        EXPECT_TRUE(helper.readAllStandardOutput().startsWith("broken "));
    }
    EXPECT_EQ(folder.read(u"target"_s), "kept");
    EXPECT_EQ(folder.names().size(), 2);
}

/// The real updater script in a real bash, with a bundle that is a script and nobody to kill.
class Updater : public RealUpdate {
protected:
    Updater()
    {
        places.shell = "/bin/bash";
        for (const char* program : {"mktemp", "find", "head", "rm", "cp"})
            standIns.useReal(QString::fromLatin1(program));
        EXPECT_TRUE(QFile::remove(standIns.folder.path(u"bin/sleep"_s)));
        standIns.standIn(u"sleep"_s);
        // What the script would end are others' programs.
        standIns.standIn(u"killall"_s);
        standIns.standIn(u"setsid"_s, "exec /usr/bin/setsid \"$@\"");
        installBundle("old");
    }

    /// A bundle whose program writes a word down.
    void writeBundle(const QString& path, const QByteArray& word) const
    {
        writeProgram(path + u"/bin/Tavrin", "echo " + word + " >> '" + logFile.toUtf8() + '\'');
    }
    void installBundle(const QByteArray& word) const
    {
        writeBundle(u"nhà của tôi/.local/opt/Tavrin.app"_s, word);
        folder.write(u"nhà của tôi/.local/opt/Tavrin.app/only in the old one"_s, {});
    }
    QStringList installedNames() const { return folder.names(u"nhà của tôi/.local/opt/Tavrin.app"_s); }

    /// The folder's contents as a zip archive.
    QByteArray zipped(const QString& name) const
    {
        QStringList arguments{u"-m"_s, u"zipfile"_s, u"-c"_s, folder.path(u"made.zip"_s)};
        for (const QString& entry : folder.names(name))
            arguments.append(folder.path(name) + u'/' + entry);
        outputOf(u"/usr/bin/python3"_s, arguments);
        return folder.read(u"made.zip"_s);
    }

    /// Updates with this archive and waits for the end of the script.
    void install(const QByteArray& archive)
    {
        server.setHandler(answering("200 OK", archive));
        update();
        ASSERT_EQ(terminations, 1) << qPrintable(service->statusMessage());
        ASSERT_TRUE(waitFor([this] { return children.runningCount() == 0; }));
        EXPECT_EQ(folder.names(runtimeFolder), QStringList{u"tavrin_updater.sh"_s})
            << "the archive is gone, the script stays";
        EXPECT_THAT(standIns.log(), testing::Contains(u"sleep 1.2"_s));
    }
    void expectInstalled(const QByteArray& word)
    {
        EXPECT_TRUE(waitFor([&] { return folder.read(u"started"_s) == word + '\n'; }))
            << folder.read(u"started"_s).constData();
        EXPECT_EQ(installedNames(), QStringList{u"bin"_s}) << "the new one whole, and nothing of the old";
        EXPECT_EQ(standIns.log(),
            (QStringList{u"sleep 1.2"_s, u"killall Tavrin"_s, u"sleep 0.5"_s,
                u"setsid -f "_s + places.home + u"/.local/opt/Tavrin.app/bin/Tavrin"}));
    }
    void expectOldOne()
    {
        EXPECT_EQ(standIns.log(), QStringList{u"sleep 1.2"_s}) << "nothing ended, nothing started";
        EXPECT_EQ(installedNames(), (QStringList{u"bin"_s, u"only in the old one"_s}));
        outputOf(places.home + u"/.local/opt/Tavrin.app/bin/Tavrin", {});
        EXPECT_EQ(folder.read(u"started"_s), "old\n") << "it still starts";
    }

    const QString logFile = folder.path(u"started"_s);
};

TEST_F(Updater, PutsTheBundleInThePlaceOfTheOldOneAndStartsIt)
{
    writeBundle(u"new/Tavrin.app"_s, "new");
    install(zipped(u"new"_s));
    expectInstalled("new");
}

TEST_F(Updater, InstallsWhereNothingWas)
{
    QDir(places.home).removeRecursively();
    writeBundle(u"new/Tavrin.app"_s, "new");
    install(zipped(u"new"_s));
    expectInstalled("new");
}

TEST_F(Updater, TakesABundleOfAnotherNameInsideAFolder)
{
    writeBundle(u"new/folder/Khác tên.app"_s, "new");
    install(zipped(u"new"_s));
    expectInstalled("new");
}

TEST_F(Updater, WorksFromTheCacheToo)
{
    places.runtimeDirectory.clear();
    writeBundle(u"new/Tavrin.app"_s, "new");
    server.setHandler(answering("200 OK", zipped(u"new"_s)));
    update();
    expectInstalled("new");
    EXPECT_TRUE(waitFor([this] { return folder.names(u"cache/Tavrin/tmp"_s).size() == 1; }));
}

TEST_F(Updater, LeavesTheOldOneWithoutABundle)
{
    folder.write(u"new/folder/readme"_s, "no bundle");
    install(zipped(u"new"_s));
    expectOldOne();
}

TEST_F(Updater, LeavesTheOldOneWhenTheBundleIsTooDeep)
{
    writeBundle(u"new/one/two/Tavrin.app"_s, "new");
    install(zipped(u"new"_s));
    expectOldOne();
}

TEST_F(Updater, LeavesTheOldOneWhenTheFirstMatchIsAFile)
{
    folder.write(u"new/._Tavrin.app"_s, "what another system keeps beside a file");
    install(zipped(u"new"_s));
    expectOldOne();
}

TEST_F(Updater, LeavesTheOldOneWhenNoZipArrives)
{
    for (const QByteArray& page : {QByteArray(), QByteArray("<html>")}) {
        QFile::remove(standIns.logFile());
        QFile::remove(logFile);
        install(page);
        expectOldOne();
    }
}

TEST_F(Updater, LeavesTheOldOneWhenTheZipIsCutShort)
{
    writeBundle(u"new/Tavrin.app"_s, "new");
    folder.write(u"new/Tavrin.app/large"_s, QByteArray(100'000, 'a'));
    const QByteArray whole = zipped(u"new"_s);
    install(whole.first(whole.size() / 2));
    expectOldOne();
}

} // namespace
} // namespace Tavrin
