#include "Core/Applications/AppScanner.h"

#include "Platform/Fake/FakeApplications.h"
#include "support/Wait.h"

#include <QSemaphore>
#include <QSignalSpy>
#include <QThread>
#include <atomic>
#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using Testing::drainEvents;
using testing::ElementsAre;
using testing::IsEmpty;
using Testing::waitFor;

ApplicationInformation information(
    const char* identifier, const char* displayName, const char* bundleName = "")
{
    return {QString::fromUtf8(identifier), QString::fromUtf8(displayName), QString::fromUtf8(bundleName), {}};
}

std::vector<std::string> names(const std::vector<InstalledApp>& apps)
{
    std::vector<std::string> result;
    for (const InstalledApp& app : apps)
        result.push_back(app.name.toStdString());
    return result;
}

std::vector<std::string> paths(const std::vector<InstalledApp>& apps)
{
    std::vector<std::string> result;
    for (const InstalledApp& app : apps)
        result.push_back(app.path.toStdString());
    return result;
}

const QString system = QStringLiteral("/system");
const QString user = QStringLiteral("/user");

TEST(InstalledApps, AreTheSameWhenTheirIdsAre)
{
    const InstalledApp app{QStringLiteral("A"), QStringLiteral("x.y"), QStringLiteral("/a"), {}};
    const InstalledApp elsewhere{QStringLiteral("B"), QStringLiteral("x.y"), QStringLiteral("/b"), {}};
    const InstalledApp otherCase{QStringLiteral("A"), QStringLiteral("X.Y"), QStringLiteral("/a"), {}};
    const InstalledApp nameless{QStringLiteral("A"), {}, QStringLiteral("/a"), {}};
    const InstalledApp namelessElsewhere{QStringLiteral("A"), {}, QStringLiteral("/b"), {}};
    EXPECT_EQ(app, elsewhere);
    EXPECT_EQ(qHash(app), qHash(elsewhere));
    EXPECT_NE(app, otherCase);
    EXPECT_NE(app, nameless);
    EXPECT_NE(nameless, namelessElsewhere);
    EXPECT_EQ(nameless.id(), QStringLiteral("/a"));
}

TEST(ScannedApplications, AreNamed)
{
    struct Case {
        const char* displayName;
        const char* bundleName;
        const char* name;
    };
    for (const Case& each : {Case{"Hiển thị", "Bundle", "Hiển thị"}, Case{"", "Bundle", "Bundle"},
             Case{"", "", "Foo"}, Case{" ", "Bundle", " "}}) {
        FakeApplicationCatalog catalog;
        catalog.add(system, QStringLiteral("Foo.app"), information("foo", each.displayName, each.bundleName));
        EXPECT_THAT(names(scanApplications(catalog)), ElementsAre(each.name));
    }
}

TEST(ScannedApplications, HaveTheFoldersSuffix)
{
    FakeApplicationCatalog catalog;
    for (const char* entry : {"Tool.APP", "Tool.app.txt", "app", "Utilities", "Tool"})
        catalog.add(system, QString::fromUtf8(entry), information(entry, entry));
    catalog.add(system, QStringLiteral("a.b.app"));
    catalog.add(system, QStringLiteral(".app"));
    EXPECT_THAT(paths(scanApplications(catalog)), ElementsAre("/system/.app", "/system/a.b.app"));
}

TEST(ScannedApplications, AreListedOnceById)
{
    FakeApplicationCatalog catalog;
    catalog.add(system, QStringLiteral("One.app"), information("x.one", "One"));
    catalog.add(system, QStringLiteral("One copy.app"), information("x.one", "One again"));
    catalog.add(user, QStringLiteral("One.app"), information("x.one", "One of the user's"));
    catalog.add(user, QStringLiteral("Other case.app"), information("X.One", "Two"));
    EXPECT_THAT(paths(scanApplications(catalog)), ElementsAre("/system/One.app", "/user/Other case.app"));
}

TEST(ScannedApplications, WithoutAnIdAreAllListed)
{
    FakeApplicationCatalog catalog;
    catalog.add(system, QStringLiteral("Tool.app"));
    catalog.add(user, QStringLiteral("Tool.app"));
    const auto apps = scanApplications(catalog);
    EXPECT_THAT(paths(apps), ElementsAre("/system/Tool.app", "/user/Tool.app")) << "in the folders' order";
    EXPECT_TRUE(apps[0].bundleId.isEmpty());
    EXPECT_THAT(names(apps), ElementsAre("Tool", "Tool"));
}

TEST(ScannedApplications, AreThoseThatListsShow)
{
    FakeApplicationCatalog catalog;
    auto hidden = information("x.one", "Hidden");
    hidden.isListed = false;
    catalog.add(system, QStringLiteral("Hidden.app"), hidden);
    catalog.add(user, QStringLiteral("Shown.app"), information("x.one", "Shown"));
    EXPECT_THAT(names(scanApplications(catalog)), ElementsAre("Shown")) << "a hidden one hides no other";
}

TEST(ScannedApplications, ComeFromWhatFoldersThereAre)
{
    FakeApplicationCatalog catalog;
    catalog.folderPaths = {QStringLiteral("/missing"), system, QStringLiteral("/empty")};
    EXPECT_THAT(scanApplications(catalog), IsEmpty());
    catalog.add(system, QStringLiteral("A.app"));
    EXPECT_THAT(paths(scanApplications(catalog)), ElementsAre("/system/A.app"));
}

TEST(ScannedApplications, AreSortedAsVietnameseReadersExpect)
{
    FakeApplicationCatalog catalog;
    for (const char* name : {"zoom", "Zalo", "Ứng dụng", "Đồng hồ", "Dịch", "đèn", "Ấm", "Ăn", "an", "Êm",
             "Em", "e", "Ơn", "Ôn", "On"})
        catalog.add(system, QString::fromUtf8(name) + u".app", information(name, name));
    EXPECT_THAT(names(scanApplications(catalog)),
        ElementsAre("an", "Ăn", "Ấm", "Dịch", "đèn", "Đồng hồ", "e", "Em", "Êm", "On", "Ôn", "Ơn", "Ứng dụng",
            "Zalo", "zoom"));
}

TEST(ScannedApplications, KeepTheirOrderWhenNamesAreEqual)
{
    FakeApplicationCatalog catalog;
    for (const char* id : {"3", "1", "2", "0"})
        catalog.add(system, QString::fromUtf8(id) + u".app", information(id, id[0] % 2 ? "Same" : "SAME"));
    EXPECT_THAT(paths(scanApplications(catalog)),
        ElementsAre("/system/3.app", "/system/1.app", "/system/2.app", "/system/0.app"));
}

class Scanner : public testing::Test {
protected:
    std::shared_ptr<FakeApplicationCatalog> catalog = std::make_shared<FakeApplicationCatalog>();
};

TEST_F(Scanner, ScansFromTheBeginningAndOffTheMainThread)
{
    catalog->add(system, QStringLiteral("A.app"));
    std::atomic<bool> onMainThread = false;
    catalog->listing = [&](const QString&) { onMainThread = QThread::currentThread() == qApp->thread(); };
    AppScanner scanner(catalog);
    EXPECT_TRUE(scanner.isLoading());
    EXPECT_THAT(scanner.apps(), IsEmpty());
    QStringList order;
    QObject::connect(&scanner, &AppScanner::appsChanged, [&] {
        order.append(QStringLiteral("apps"));
        EXPECT_TRUE(scanner.isLoading()) << "the list is there before the waiting ends";
    });
    QObject::connect(&scanner, &AppScanner::loadingChanged, [&] { order.append(QStringLiteral("loading")); });
    ASSERT_TRUE(waitFor([&] { return !scanner.isLoading(); }));
    EXPECT_THAT(order, ElementsAre(QStringLiteral("apps"), QStringLiteral("loading")));
    EXPECT_THAT(paths(scanner.apps()), ElementsAre("/system/A.app"));
    EXPECT_FALSE(onMainThread);
}

TEST_F(Scanner, KeepsItsListUntilTheNextIsThere)
{
    catalog->add(system, QStringLiteral("A.app"));
    QSemaphore gate(1);
    catalog->listing = [&](const QString&) { gate.acquire(); };
    AppScanner scanner(catalog);
    ASSERT_TRUE(waitFor([&] { return !scanner.isLoading(); }));
    scanner.scanApps();
    EXPECT_TRUE(scanner.isLoading());
    drainEvents();
    EXPECT_THAT(paths(scanner.apps()), ElementsAre("/system/A.app"));
    gate.release();
    EXPECT_TRUE(waitFor([&] { return !scanner.isLoading(); }));
}

/// Each scan sees one more application and waits for a gate of its own before it is done.
TEST_F(Scanner, PublishesEachOfTwoOverlappingScans)
{
    class Growing : public FakeApplicationCatalog {
    public:
        QStringList contents(const QString&) const override
        {
            const int scan = m_scans++;
            gates.at(static_cast<std::size_t>(scan)).acquire();
            return QStringList(scan + 1, QStringLiteral("A.app"));
        }
        QStringList folders() const override { return {system}; }

        mutable std::array<QSemaphore, 2> gates;

    private:
        mutable std::atomic<int> m_scans = 0;
    };
    const auto growing = std::make_shared<Growing>();
    AppScanner scanner(growing);
    scanner.scanApps();
    QSignalSpy published(&scanner, &AppScanner::appsChanged);
    // The later one first: the one before replaces the list all the same.
    growing->gates[1].release();
    ASSERT_TRUE(waitFor([&] { return published.count() == 1; }));
    EXPECT_EQ(scanner.apps().size(), 2U);
    EXPECT_FALSE(scanner.isLoading()) << "the first result ends the waiting";
    growing->gates[0].release();
    ASSERT_TRUE(waitFor([&] { return published.count() == 2; }));
    EXPECT_EQ(scanner.apps().size(), 1U);
    EXPECT_FALSE(scanner.isLoading());
}

TEST_F(Scanner, EndsWhileAScanHangs)
{
    auto gate = std::make_shared<QSemaphore>();
    auto entered = std::make_shared<std::atomic<bool>>(false);
    auto left = std::make_shared<std::atomic<bool>>(false);
    catalog->folderPaths = {system};
    catalog->listing = [gate, entered, left](const QString&) {
        *entered = true;
        gate->acquire();
        *left = true;
    };
    {
        const AppScanner scanner(catalog);
        ASSERT_TRUE(waitFor([&] { return entered->load(); }));
    }
    EXPECT_FALSE(*left);
    gate->release();
    EXPECT_TRUE(waitFor([&] { return left->load(); }));
    drainEvents();
}

TEST_F(Scanner, FindsAnApplicationByAnyOfItsTexts)
{
    catalog->add(system, QStringLiteral("Chrome.app"), information("com.example.Chrome", "Trình duyệt"));
    catalog->add(system, QStringLiteral("Tool.app"), information("", "Công cụ"));
    catalog->add(system, QStringLiteral("Zz.app"), information("zz", "com.example.chrome"));
    AppScanner scanner(catalog);
    EXPECT_FALSE(scanner.findApp(QStringLiteral("zz"))) << "nothing has been found yet";
    ASSERT_TRUE(waitFor([&] { return !scanner.isLoading(); }));
    const auto found = [&](const char* query) {
        const auto app = scanner.findApp(QString::fromUtf8(query));
        return app ? app->path.toStdString() : std::string("none");
    };
    EXPECT_EQ(found("COM.EXAMPLE.chrome"), "/system/Zz.app") << "its name, and it comes first in the list";
    EXPECT_EQ(found("/SYSTEM/chrome.APP"), "/system/Chrome.app");
    EXPECT_EQ(found("trình DUYỆT"), "/system/Chrome.app");
    EXPECT_EQ(found("tri\u0300nh duye\u0323\u0302t"), "/system/Chrome.app") << "composed of parts";
    EXPECT_EQ(found("trinh duyet"), "none") << "other letters";
    EXPECT_EQ(found("Chrome"), "none") << "only a part";
    EXPECT_EQ(found(""), "/system/Tool.app") << "whose identifier is empty";
}

TEST_F(Scanner, ReadsWhatTheUserChose)
{
    catalog->known[QStringLiteral("/opt/Chosen.app")] = information("x.chosen", "", "Được chọn");
    ApplicationInformation broken;
    broken.isStartable = false;
    catalog->known[QStringLiteral("/opt/text.txt")] = broken;
    AppScanner scanner(catalog);
    std::vector<std::optional<InstalledApp>> answers;
    const auto read = [&](const char* path) {
        const auto count = answers.size();
        scanner.readApp(QString::fromUtf8(path), [&](const auto& app) { answers.push_back(app); });
        EXPECT_EQ(answers.size(), count) << "not from within";
        EXPECT_TRUE(waitFor([&] { return answers.size() == count + 1; }));
    };
    read("/opt/Chosen.app");
    ASSERT_TRUE(answers[0]);
    EXPECT_EQ(answers[0]->name, QStringLiteral("Được chọn"));
    EXPECT_EQ(answers[0]->bundleId, QStringLiteral("x.chosen"));
    EXPECT_EQ(answers[0]->path, QStringLiteral("/opt/Chosen.app"));
    read("/opt/Nameless.app");
    ASSERT_TRUE(answers[1]);
    EXPECT_EQ(answers[1]->name, QStringLiteral("Nameless"));
    EXPECT_EQ(answers[1]->id(), QStringLiteral("/opt/Nameless.app"));
    read("/opt/text.txt");
    EXPECT_FALSE(answers[2]);
    EXPECT_THAT(scanner.apps(), IsEmpty()) << "the list is that of the folders";
}

} // namespace
} // namespace Tavrin
