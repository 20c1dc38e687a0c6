#pragma once

#include <QStringView>
#include <compare>

namespace Tavrin {

/// Orders two version texts from left to right: where both have a run of the digits 0 to 9, by the
/// runs' numeric values, however long ("1.0.10" is above "1.0.9", "1.08" equals "1.8"); elsewhere by
/// character, case-sensitively. A text that the other one continues is the lesser ("1.0" is below
/// "1.0.0", "1.0.8" below "1.0.8-beta"). Trims nothing.
std::weak_ordering compareVersions(QStringView left, QStringView right);

} // namespace Tavrin
