#include "Core/Update/VersionComparison.h"

#include <QList>

#include <algorithm>
#include <span>

namespace Tavrin {
namespace {

using Characters = std::span<const uint>;

/// Only ASCII: digits of other scripts are characters like any other.
bool isDigit(uint character)
{
    return character >= '0' && character <= '9';
}

/// Takes the run of digits off the front of `text`; the run comes without its leading zeros.
Characters takeNumber(Characters& text)
{
    const auto end = std::ranges::find_if_not(text, isDigit);
    const auto length = static_cast<std::size_t>(end - text.begin());
    Characters number = text.first(length);
    text = text.subspan(length);
    while (!number.empty() && number.front() == '0')
        number = number.subspan(1);
    return number;
}

/// No arithmetic, so that no run is too long: of two numbers without leading zeros the one with more
/// digits is greater.
std::weak_ordering compareNumbers(Characters left, Characters right)
{
    if (left.size() != right.size())
        return left.size() <=> right.size();
    return std::lexicographical_compare_three_way(left.begin(), left.end(), right.begin(), right.end());
}

std::weak_ordering compareCharacters(Characters left, Characters right)
{
    while (!left.empty() && !right.empty()) {
        std::weak_ordering order = std::weak_ordering::equivalent;
        if (isDigit(left.front()) && isDigit(right.front())) {
            order = compareNumbers(takeNumber(left), takeNumber(right));
        } else {
            order = left.front() <=> right.front();
            left = left.subspan(1);
            right = right.subspan(1);
        }
        if (std::is_neq(order))
            return order;
    }
    return left.size() <=> right.size();
}

} // namespace

std::weak_ordering compareVersions(QStringView left, QStringView right)
{
    const QList<uint> leftCharacters = left.toUcs4();
    const QList<uint> rightCharacters = right.toUcs4();
    return compareCharacters(leftCharacters, rightCharacters);
}

} // namespace Tavrin
