#include "Platform/Linux/Tray/MenuEdits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace Tavrin {

void PrintTo(const MenuEdit& edit, std::ostream* stream)
{
    constexpr const char* kinds[] = {"remove", "insert", "move"};
    *stream << kinds[int(edit.kind)] << ' ' << edit.identity.toStdString() << " before "
            << edit.before.toStdString();
}

namespace {

using Kind = MenuEdit::Kind;

QStringList list(const char* letters)
{
    return QString::fromLatin1(letters).split(QString(), Qt::SkipEmptyParts);
}

MenuEdit edit(Kind kind, const char* identity, const char* before = "")
{
    return {kind, QString::fromLatin1(identity), QString::fromLatin1(before)};
}

struct EditsCase {
    const char* present;
    const char* wanted;
    std::vector<MenuEdit> edits;
};

class Edits : public testing::TestWithParam<EditsCase> { };

TEST_P(Edits, AreTheFewest)
{
    EXPECT_EQ(menuEdits(list(GetParam().present), list(GetParam().wanted)), GetParam().edits);
}

INSTANTIATE_TEST_SUITE_P(Table, Edits,
    testing::Values(EditsCase{"", "", {}}, EditsCase{"abc", "abc", {}},
        EditsCase{"", "ab", {edit(Kind::insert, "b"), edit(Kind::insert, "a", "b")}},
        EditsCase{"ab", "", {edit(Kind::remove, "a"), edit(Kind::remove, "b")}},
        EditsCase{"abc", "ac", {edit(Kind::remove, "b")}},
        EditsCase{"ac", "abc", {edit(Kind::insert, "b", "c")}},
        EditsCase{"ab", "abc", {edit(Kind::insert, "c")}}, EditsCase{"abcd", "bcda", {edit(Kind::move, "a")}},
        EditsCase{"abcd", "dabc", {edit(Kind::move, "d", "a")}},
        EditsCase{"abc", "xbc", {edit(Kind::remove, "a"), edit(Kind::insert, "x", "b")}}));

QStringList applied(QStringList identities, const std::vector<MenuEdit>& edits)
{
    for (const MenuEdit& step : edits) {
        const auto removed = identities.removeAll(step.identity);
        EXPECT_EQ(removed, step.kind == Kind::insert ? 0 : 1);
        if (step.kind == Kind::remove)
            continue;
        const auto place = step.before.isEmpty() ? identities.size() : identities.indexOf(step.before);
        EXPECT_GE(place, 0);
        identities.insert(place, step.identity);
    }
    return identities;
}

TEST(RandomEdits, AlwaysLeadToTheWantedList)
{
    std::mt19937 random(20240229);
    const QStringList all = list("abcdefghijkl");
    const auto some = [&] {
        QStringList chosen = all;
        std::shuffle(chosen.begin(), chosen.end(), random);
        return QStringList(chosen.first(int(random() % 13)));
    };
    for (int round = 0; round < 2000; ++round) {
        const QStringList present = some();
        const QStringList wanted = some();
        ASSERT_EQ(applied(present, menuEdits(present, wanted)), wanted);
    }
}

} // namespace
} // namespace Tavrin
