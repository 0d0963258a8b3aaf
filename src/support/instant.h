#pragma once

#include <QString>
#include <QStringView>

#include <compare>
#include <functional>
#include <optional>

namespace lexiquill {

/// An absolute point in time: seconds, with fraction, since 2001-01-01 00:00:00 UTC.
struct Instant {
    double seconds = 0;

    static Instant now();
    static constexpr Instant fromUnixSeconds(double unixSeconds) {
        return {unixSeconds - referenceUnixSeconds};
    }
    /// Reads an ISO 8601 date and time with a "Z" or "±hh:mm" offset; a fraction of a second is kept. No
    /// value for anything else, including out-of-range fields.
    static std::optional<Instant> fromIso8601(QStringView text);

    constexpr double unixSeconds() const { return seconds + referenceUnixSeconds; }
    constexpr Instant adding(double interval) const { return {seconds + interval}; }
    /// "2025-03-14T09:26:53Z": UTC, whole seconds (the fraction is dropped); years are limited to 0001 to
    /// 9999.
    QString toIso8601() const;

    // clang-tidy mistakes the zero in the generated comparison for a null pointer.
    friend constexpr auto operator<=>(Instant, Instant) = default; // NOLINT(modernize-use-nullptr)

    static constexpr double referenceUnixSeconds = 978307200;
};

inline constexpr double secondsPerDay = 86400;

/// Returns the current time. A parameter, so that tests can use a fixed time.
using Clock = std::function<Instant()>;

} // namespace lexiquill
