#pragma once

#include <QStringView>

#include <compare>

namespace lexiquill {

/// The order of two version texts. Runs of ASCII digits of any length are compared as numbers, everything
/// else by code unit. "1.9.2" < "1.10.0", "1.2" < "1.2.0", "1.02" and "1.2" are equal.
std::strong_ordering compareVersions(QStringView a, QStringView b);

} // namespace lexiquill
