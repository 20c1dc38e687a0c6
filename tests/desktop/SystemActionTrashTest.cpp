// The real trash is emptied by the real program. It reaches into every file system that is mounted, so the
// test runs only where none but the test's own trash can be met.
#include "support/SystemActionsFixture.h"

#include <QStorageInfo>

namespace Tavrin {

using namespace Qt::StringLiterals;
using namespace Testing;

namespace {

/// A trash outside the test's home that the program could reach (Trash Specification, directories of other
/// file systems); empty if there is none.
QString foreignTrash()
{
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        for (const QString& name : {u"/.Trash-%1"_s.arg(getuid()), u"/.Trash/%1"_s.arg(getuid())}) {
            const QString folder = volume.rootPath() + name;
            if (!QDir(folder + u"/files").isEmpty())
                return folder;
        }
    }
    return {};
}

class Trash : public SystemActionsFixture {
protected:
    void SetUp() override
    {
        if (const QString foreign = foreignTrash(); !foreign.isEmpty())
            GTEST_SKIP() << "there is a trash that is not the test's own: " << qPrintable(foreign);
        setVariable("GIO_USE_VFS", QByteArray());
        useReal(u"gio"_s);
    }

    QStringList trashed() const
    {
        return QDir(qEnvironmentVariable("XDG_DATA_HOME") + u"/Trash/files")
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

TEST_F(Trash, IsEmptied)
{
    for (const QString& name : {u"một"_s, u".hai"_s}) {
        QFile file(QDir::homePath() + u'/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.moveToTrash());
    }
    ASSERT_EQ(trashed().size(), 2);
    perform(SystemActionType::emptyTrash);
    EXPECT_TRUE(waitFor([this] { return trashed().isEmpty() && isQuiet(); }));
    perform(SystemActionType::emptyTrash);
    EXPECT_TRUE(waitFor([this] { return isQuiet(); }));
    drainEvents();
    EXPECT_EQ(failures, QStringList());
}

} // namespace
} // namespace Tavrin
