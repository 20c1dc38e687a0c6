#include "Platform/Linux/NewestInstallation.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace Tavrin {

using namespace Qt::StringLiterals;

namespace {

class Installations : public testing::Test {
protected:
    void install(const QString& prefix, const QByteArray& version) const
    {
        folder.write(prefix + u"/bin/Tavrin", "program");
        QFile::setPermissions(executable(prefix), QFile::ReadOwner | QFile::ExeOwner);
        folder.write(prefix + u"/share/Tavrin/version", version + '\n');
    }
    QString executable(const QString& prefix) const { return folder.path(prefix + u"/bin/Tavrin"); }
    /// What runs in the place of this prefix's program.
    QString newer(const QString& prefix) const
    {
        return newerInstallation(executable(prefix), {folder.path(u"usr"_s), folder.path(u"home"_s)});
    }

    const Testing::TemporaryFolder folder;
};

TEST_F(Installations, HandOverToTheNewest)
{
    install(u"usr"_s, "1.0.9");
    install(u"home"_s, "1.0.10");
    EXPECT_EQ(newer(u"usr"_s), executable(u"home"_s));
    EXPECT_EQ(newer(u"home"_s), QString());
    install(u"usr"_s, "1.1");
    EXPECT_EQ(newer(u"usr"_s), QString());
    EXPECT_EQ(newer(u"home"_s), executable(u"usr"_s));
}

TEST_F(Installations, OfOneVersionStayThemselves)
{
    install(u"usr"_s, "1.0.7");
    EXPECT_EQ(newer(u"usr"_s), QString()) << "alone";
    install(u"home"_s, "1.0.7");
    EXPECT_EQ(newer(u"usr"_s), QString());
    EXPECT_EQ(newer(u"home"_s), QString());
}

TEST_F(Installations, ThatAreDamagedAreLeftAlone)
{
    install(u"usr"_s, "1.0.7");
    install(u"home"_s, "1.0.8");
    QFile::setPermissions(executable(u"home"_s), QFile::ReadOwner);
    EXPECT_EQ(newer(u"usr"_s), QString()) << "not executable";
    ASSERT_TRUE(QFile::remove(executable(u"home"_s)));
    EXPECT_EQ(newer(u"usr"_s), QString()) << "no program";
    install(u"home"_s, "");
    EXPECT_EQ(newer(u"usr"_s), QString()) << "no version";
    ASSERT_TRUE(QFile::remove(folder.path(u"home/share/Tavrin/version"_s)));
    EXPECT_EQ(newer(u"usr"_s), QString()) << "no file with one";
}

TEST_F(Installations, OfSomebodyElseAreLeftAlone)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a file to somebody else";
    install(u"usr"_s, "1.0.7");
    install(u"home"_s, "1.0.8");
    ASSERT_EQ(chown(QFile::encodeName(executable(u"home"_s)).constData(), 12345, 12345), 0);
    EXPECT_EQ(newer(u"usr"_s), QString());
    EXPECT_EQ(newer(u"home"_s), QString()) << "it is itself whoever owns it";
}

TEST_F(Installations, WithoutAVersionOfTheirOwnStayThemselves)
{
    install(u"usr"_s, "");
    install(u"home"_s, "1.0.8");
    EXPECT_EQ(newer(u"usr"_s), QString());
}

TEST_F(Installations, AreNotWhatABuildTreeHas)
{
    install(u"usr"_s, "1.0.9");
    install(u"build"_s, "1.0.7");
    EXPECT_EQ(newer(u"build"_s), QString());
}

TEST_F(Installations, MayBeNamedByALink)
{
    install(u"elsewhere"_s, "1.0.8");
    install(u"usr"_s, "1.0.7");
    ASSERT_TRUE(QFile::link(folder.path(u"elsewhere"_s), folder.path(u"home"_s)));
    EXPECT_EQ(newer(u"elsewhere"_s), QString()) << "it is the newest";
    EXPECT_EQ(newer(u"usr"_s), executable(u"home"_s));
    install(u"usr"_s, "1.0.9");
    EXPECT_EQ(newer(u"elsewhere"_s), executable(u"usr"_s));
}

TEST(InstallationPrefixes, AreThePackagesAndTheUsersOwn)
{
    EXPECT_EQ(
        installationPrefixes(u"/home/lan"_s), (QStringList{u"/usr"_s, u"/home/lan/.local/opt/Tavrin.app"_s}));
}

} // namespace
} // namespace Tavrin
