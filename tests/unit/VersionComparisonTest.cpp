#include "Core/Update/VersionComparison.h"

#include <gtest/gtest.h>

#include <QString>

namespace Tavrin {

using namespace Qt::StringLiterals;

namespace {

struct Pair {
    QString left;
    QString right;
};

void PrintTo(const Pair& pair, std::ostream* stream)
{
    *stream << '"' << pair.left.left(40).toStdString() << "\", \"" << pair.right.left(40).toStdString()
            << '"';
}

class Descending : public testing::TestWithParam<Pair> { };

TEST_P(Descending, FirstIsGreaterAndSecondIsLesser)
{
    EXPECT_TRUE(std::is_gt(compareVersions(GetParam().left, GetParam().right)));
    EXPECT_TRUE(std::is_lt(compareVersions(GetParam().right, GetParam().left)));
}

QString digits(int count, char digit, const char* end = "")
{
    return QString(count, QLatin1Char(digit)) + QLatin1String(end);
}

const Pair descendingPairs[]{
    // Runs of digits count by their value.
    {u"1.0.10"_s, u"1.0.9"_s},
    {u"1.10"_s, u"1.9"_s},
    {u"2.0"_s, u"1.99.99"_s},
    {u"10"_s, u"9"_s},
    {u"1.0.8"_s, u"1.0.7"_s},
    {u"1.010"_s, u"1.9"_s},
    {u"1.1"_s, u"1.00"_s},
    {u"v12b"_s, u"v9b"_s},
    {u"1.08.2"_s, u"1.8.1"_s},
    // Runs beyond every integer type.
    {u"18446744073709551616"_s, u"18446744073709551615"_s},
    {u"4294967296"_s, u"4294967295"_s},
    {digits(5000, '9', "1"), digits(5000, '9', "0")},
    {digits(5001, '1'), digits(5000, '9')},
    {u"1"_s, digits(5000, '0')},
    {u"2"_s, digits(5000, '0', "1")},
    // What is not a digit counts as a character, case-sensitively.
    {u"1.0.8-beta"_s, u"1.0.8-alpha"_s},
    {u"1.0a"_s, u"1.0A"_s},
    {u"a"_s, u"B"_s},
    {u"1.0"_s, u"1-0"_s},
    {u"v1.0"_s, u"1.1"_s},
    {u"1.0"_s, u" 1.0"_s},
    // A digit against another character is a character as well.
    {u"1.1"_s, u"1.."_s},
    {u"a"_s, u"9"_s},
    {u"1.a"_s, u"1.99"_s},
    // The longer of two texts with the same beginning.
    {u"1.0.7.1"_s, u"1.0.7"_s},
    {u"1.0.0"_s, u"1.0"_s},
    {u"1.0.8-beta"_s, u"1.0.8"_s},
    {u"1.0 "_s, u"1.0"_s},
    {u"1."_s, u"01"_s},
    {u"0"_s, u""_s},
    {u"a"_s, u""_s},
    // Only the digits 0 to 9 are digits: Arabic ones compare one by one, and none equals "1".
    {u"1.\u0669"_s, u"1.\u0661\u0660"_s},
    {u"\u0661"_s, u"1"_s},
    {u"\uFF12"_s, u"\uFF11\uFF10"_s},
    // Outside the Basic Multilingual Plane: above U+FFxx although its surrogates are below.
    {u"1\U0001F680"_s, u"1\uFF21"_s},
};

INSTANTIATE_TEST_SUITE_P(Table, Descending, testing::ValuesIn(descendingPairs));

class Equivalent : public testing::TestWithParam<Pair> { };

TEST_P(Equivalent, NeitherIsGreater)
{
    EXPECT_TRUE(std::is_eq(compareVersions(GetParam().left, GetParam().right)));
    EXPECT_TRUE(std::is_eq(compareVersions(GetParam().right, GetParam().left)));
}

const Pair equivalentPairs[]{
    {u""_s, u""_s},
    {QString(), u""_s},
    {u"1.0.7"_s, u"1.0.7"_s},
    {u"1.08"_s, u"1.8"_s},
    {u"01.0.007"_s, u"1.00.7"_s},
    {u"0"_s, u"000"_s},
    {u"1.0.8-beta"_s, u"1.0.8-beta"_s},
    {digits(5000, '0', "7"), u"7"_s},
    {digits(5000, '9'), digits(5000, '9')},
    {u"\u0661\u0660"_s, u"\u0661\u0660"_s},
};

INSTANTIATE_TEST_SUITE_P(Table, Equivalent, testing::ValuesIn(equivalentPairs));

} // namespace
} // namespace Tavrin
