#include "UI/Picker/AppPickerModel.h"

#include "Core/Applications/AppScanner.h"
#include "Platform/Fake/FakeApplications.h"
#include "UI/Picker/ApplicationIconProvider.h"
#include "support/CapturedOutput.h"
#include "support/Wait.h"

#include <QAbstractItemModelTester>
#include <QSemaphore>
#include <QSignalSpy>
#include <gmock/gmock.h>

namespace Tavrin {
namespace {

using Testing::CapturedOutput;
using Testing::drainEvents;
using testing::ElementsAre;
using testing::IsEmpty;
using Testing::waitFor;

class AppPicker : public testing::Test {
protected:
    using Entries = std::vector<std::pair<const char*, const char*>>;

    static std::shared_ptr<FakeApplicationCatalog> catalogOf(const Entries& entries)
    {
        auto result = std::make_shared<FakeApplicationCatalog>();
        for (const auto& [id, name] : entries)
            result->add(QStringLiteral("/apps"), QString::fromUtf8(name) + u".app",
                {QString::fromUtf8(id), QString::fromUtf8(name), {}, {}});
        result->known[QStringLiteral("/opt/Nameless.app")] = {};
        ApplicationInformation text;
        text.isStartable = false;
        result->known[QStringLiteral("/opt/note.txt")] = text;
        return result;
    }
    void awaitScan()
    {
        ASSERT_TRUE(waitFor([this] { return !scanner.isLoading(); }));
    }
    std::vector<std::string> names() const
    {
        std::vector<std::string> result;
        for (int row = 0; row < picker.rowCount(); ++row)
            result.push_back(text(row, AppPickerModel::nameRole).toStdString());
        return result;
    }
    QString text(int row, int role) const { return picker.index(row).data(role).toString(); }
    std::vector<std::string> search(const QString& text)
    {
        picker.setSearchText(text);
        return names();
    }

    /// Asked on another thread: each scan has a catalog that does not change any more.
    class Catalog : public FakeApplicationCatalog {
    public:
        QStringList folders() const override
        {
            current = m_scans++ == 0 ? before : after;
            return current->folders();
        }
        QStringList contents(const QString& folder) const override { return current->contents(folder); }
        ApplicationInformation information(const QString& path) const override
        {
            return before->known.contains(path) ? before->information(path) : after->information(path);
        }

        std::shared_ptr<FakeApplicationCatalog> before = catalogOf({{"com.example.chrome", "Google Chrome"},
            {"com.example.mail", "Thư điện tử"}, {"org.sample.Term", "Terminal"}, {"", "Công cụ nhỏ"}});
        std::shared_ptr<FakeApplicationCatalog> after = catalogOf({{"com.example.chrome", "Google Chrome"},
            {"org.example.chromium", "Chromium"}, {"x", "Một\nhai\tba"}});
        mutable std::shared_ptr<FakeApplicationCatalog> current;

    private:
        mutable int m_scans = 0;
    };

    std::shared_ptr<Catalog> catalog = std::make_shared<Catalog>();
    FakeOpenPanel panel;
    AppScanner scanner{catalog};
    std::vector<std::string> events;
    InstalledApp selected;
    AppPickerModel picker{scanner, panel, [this](const InstalledApp& app) {
                              selected = app;
                              events.emplace_back("selected");
                          }};
    QAbstractItemModelTester tester{&picker, QAbstractItemModelTester::FailureReportingMode::Warning};
    QMetaObject::Connection finished
        = QObject::connect(&picker, &AppPickerModel::finished, [this] { events.emplace_back("finished"); });
};

TEST_F(AppPicker, ListsWhatTheScannerHas)
{
    EXPECT_TRUE(picker.isLoading());
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(picker.totals(), QStringLiteral("0 ứng dụng đã cài đặt"));
    QSignalSpy loading(&picker, &AppPickerModel::loadingChanged);
    awaitScan();
    EXPECT_FALSE(picker.isLoading());
    EXPECT_GE(loading.count(), 1);
    EXPECT_THAT(names(), ElementsAre("Công cụ nhỏ", "Google Chrome", "Terminal", "Thư điện tử"));
    EXPECT_EQ(text(0, AppPickerModel::detailRole), QStringLiteral("/apps/Công cụ nhỏ.app"));
    EXPECT_EQ(text(1, AppPickerModel::detailRole), QStringLiteral("com.example.chrome"));
    EXPECT_EQ(picker.totals(), QStringLiteral("4 ứng dụng đã cài đặt"));
}

TEST_F(AppPicker, Searches)
{
    awaitScan();
    struct Case {
        const char* text;
        std::vector<std::string> names;
    };
    const std::vector<std::string> all = names();
    for (const Case& each : {
             Case{"chrome", {"Google Chrome"}},
             Case{"CHROME", {"Google Chrome"}},
             Case{"com.example", {"Google Chrome", "Thư điện tử"}},
             Case{"org.sample.TERM", {"Terminal"}},
             Case{"thư ĐIỆN", {"Thư điện tử"}},
             Case{"thu\u031B \u0111ie\u0323\u0302n", {"Thư điện tử"}},
             Case{"thu dien", {}},
             Case{" ", {"Công cụ nhỏ", "Google Chrome", "Thư điện tử"}},
             Case{"chrome ", {}},
             Case{"/apps", {}},
             Case{"zz", {}},
             Case{"", all},
         }) {
        EXPECT_EQ(search(QString::fromUtf8(each.text)), each.names) << each.text;
        EXPECT_EQ(picker.count(), static_cast<int>(each.names.size()));
        EXPECT_EQ(picker.totals(), QStringLiteral("4 ứng dụng đã cài đặt"));
    }
    picker.setSearchText(QString(100'000, u'\u0301'));
    EXPECT_EQ(picker.count(), 0);
}

TEST_F(AppPicker, TellsTheViewWhichRowsChanged)
{
    awaitScan();
    QSignalSpy inserted(&picker, &AppPickerModel::rowsInserted);
    QSignalSpy removed(&picker, &AppPickerModel::rowsRemoved);
    QSignalSpy changed(&picker, &AppPickerModel::dataChanged);
    QSignalSpy reset(&picker, &AppPickerModel::modelReset);
    search(QStringLiteral("e"));
    search({});
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(reset.count(), 0) << "a view would build all of its rows anew";
    picker.setSearchText({});
    EXPECT_EQ(changed.count(), 2) << "nothing has changed";
}

TEST_F(AppPicker, FollowsTheScannerAndKeepsTheSearch)
{
    awaitScan();
    search(QStringLiteral("chrom"));
    scanner.scanApps();
    EXPECT_THAT(names(), ElementsAre("Google Chrome"));
    awaitScan();
    EXPECT_THAT(names(), ElementsAre("Chromium", "Google Chrome"));
    EXPECT_EQ(picker.totals(), QStringLiteral("3 ứng dụng đã cài đặt"));
}

TEST_F(AppPicker, ChoosesARow)
{
    awaitScan();
    search(QStringLiteral("term"));
    picker.choose(1);
    picker.choose(-1);
    EXPECT_THAT(events, IsEmpty()) << "rows that are not there";
    picker.choose(0);
    EXPECT_EQ(selected.path, QStringLiteral("/apps/Terminal.app"));
    EXPECT_THAT(events, ElementsAre("selected", "finished"));
}

TEST_F(AppPicker, BrowsesForAFile)
{
    awaitScan();
    picker.browse();
    picker.browse();
    EXPECT_EQ(panel.requests, 1) << "one panel at a time";
    EXPECT_TRUE(panel.answer(QStringLiteral("/opt/Nameless.app")));
    ASSERT_TRUE(waitFor([this] { return !events.empty(); }));
    EXPECT_THAT(events, ElementsAre("selected", "finished"));
    EXPECT_TRUE(selected.bundleId.isEmpty());
    EXPECT_EQ(selected.name, QStringLiteral("Nameless"));
    EXPECT_EQ(selected.id(), QStringLiteral("/opt/Nameless.app"));
    EXPECT_EQ(picker.totals(), QStringLiteral("4 ứng dụng đã cài đặt"));
}

TEST_F(AppPicker, StaysWhenThePanelIsCancelled)
{
    picker.browse();
    EXPECT_TRUE(panel.answer(std::nullopt));
    drainEvents();
    EXPECT_THAT(events, IsEmpty());
    picker.browse();
    EXPECT_EQ(panel.requests, 2) << "and can be asked again";
}

TEST_F(AppPicker, StaysWhenTheChosenFileIsNoApplication)
{
    awaitScan();
    CapturedOutput output;
    picker.browse();
    panel.answer(QStringLiteral("/opt/note.txt"));
    // The answer of a second one comes after that of the first.
    bool isRead = false;
    scanner.readApp(QStringLiteral("/opt/note.txt"), [&](const auto&) { isRead = true; });
    ASSERT_TRUE(waitFor([&] { return isRead; }));
    drainEvents();
    EXPECT_THAT(events, IsEmpty());
    EXPECT_THAT(output.lines(), ElementsAre(QStringLiteral("Không phải ứng dụng: /opt/note.txt")));
}

TEST(AppPickerPanel, ClosesWithTheSheet)
{
    const auto catalog = std::make_shared<FakeApplicationCatalog>();
    FakeOpenPanel panel;
    AppScanner scanner(catalog);
    {
        AppPickerModel picker(scanner, panel, [](const InstalledApp&) { FAIL(); });
        picker.browse();
        EXPECT_TRUE(panel.isOpen());
    }
    EXPECT_FALSE(panel.isOpen());
    {
        AppPickerModel picker(scanner, panel, [](const InstalledApp&) { FAIL(); });
        picker.browse();
        panel.answer(QStringLiteral("/opt/A.app"));
    }
    EXPECT_TRUE(waitFor([&] { return !scanner.isLoading(); }));
    drainEvents();
}

TEST_F(AppPicker, ShowsAnyNameOnOneLine)
{
    awaitScan();
    scanner.scanApps();
    awaitScan();
    EXPECT_THAT(search(QStringLiteral("hai")), ElementsAre("Một hai ba"));
}

TEST(ApplicationPictures, AreAddressedByAnyName)
{
    for (const char* name : {"", "chrome", "/opt/a b/%41%?#&/ảnh.png", "../..//", "a\\b:c@d"}) {
        InstalledApp app;
        app.icon = QString::fromUtf8(name);
        const QUrl url(applicationIconSource(app));
        EXPECT_TRUE(url.isValid()) << name;
        EXPECT_EQ(url.host(), QLatin1String(applicationIconProviderName));
        // As the views' engine hands it to the provider.
        const QString id = url.toString(QUrl::RemoveScheme | QUrl::RemoveAuthority).mid(1);
        EXPECT_EQ(QUrl::fromPercentEncoding(id.toUtf8()).toStdString(), name);
    }
}

} // namespace
} // namespace Tavrin
