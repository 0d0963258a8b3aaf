#include "support/instant.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace lexiquill {

namespace {

using namespace std::chrono;

constexpr double firstUnixSecond = sys_seconds{sys_days{year{1} / January / 1}}.time_since_epoch().count();
constexpr double lastUnixSecond =
    sys_seconds{sys_days{year{9999} / December / 31} + 86399s}.time_since_epoch().count();

/// Reads the decimal digits of a text from front to back.
class DigitReader {
public:
    explicit DigitReader(QStringView text) : m_text(text) {}

    bool atEnd() const { return m_position == m_text.size(); }

    char16_t take() { return atEnd() ? u'\0' : m_text[m_position++].unicode(); }

    bool takeIf(char16_t character) {
        if (atEnd() || m_text[m_position] != character)
            return false;
        ++m_position;
        return true;
    }

    /// Exactly `count` digits as a number, or -1.
    int number(int count) {
        int value = 0;
        for (int i = 0; i < count; ++i) {
            const char16_t digit = take();
            if (digit < u'0' || digit > u'9')
                return -1;
            value = value * 10 + (digit - u'0');
        }
        return value;
    }

    /// One or more digits as a decimal fraction, or no value.
    std::optional<double> fraction() {
        double value = 0;
        double scale = 0.1;
        const qsizetype start = m_position;
        while (!atEnd() && m_text[m_position] >= u'0' && m_text[m_position] <= u'9') {
            value += (m_text[m_position++].unicode() - u'0') * scale;
            scale /= 10;
        }
        return m_position == start ? std::nullopt : std::optional(value);
    }

private:
    QStringView m_text;
    qsizetype m_position = 0;
};

} // namespace

Instant Instant::now() {
    const auto sinceEpoch = system_clock::now().time_since_epoch();
    return fromUnixSeconds(duration<double>(sinceEpoch).count());
}

std::optional<Instant> Instant::fromIso8601(QStringView text) {
    DigitReader reader(text);
    const int yearNumber = reader.number(4);
    if (yearNumber < 1 || !reader.takeIf(u'-'))
        return std::nullopt;
    const int monthNumber = reader.number(2);
    if (monthNumber < 1 || !reader.takeIf(u'-'))
        return std::nullopt;
    const int dayNumber = reader.number(2);
    if (dayNumber < 1 || !reader.takeIf(u'T'))
        return std::nullopt;
    const year_month_day date = year{yearNumber} / monthNumber / dayNumber;
    if (!date.ok())
        return std::nullopt;

    const int hourNumber = reader.number(2);
    if (!reader.takeIf(u':'))
        return std::nullopt;
    const int minuteNumber = reader.number(2);
    if (!reader.takeIf(u':'))
        return std::nullopt;
    const int secondNumber = reader.number(2);
    const auto isBelow = [](int value, int limit) {
        return value >= 0 && value < limit;
    };
    if (!isBelow(hourNumber, 24) || !isBelow(minuteNumber, 60) || !isBelow(secondNumber, 60))
        return std::nullopt;

    double fraction = 0;
    if (reader.takeIf(u'.')) {
        const auto digits = reader.fraction();
        if (!digits)
            return std::nullopt;
        fraction = *digits;
    }

    int offsetMinutes = 0;
    const char16_t zone = reader.take();
    if (zone == u'+' || zone == u'-') {
        const int offsetHours = reader.number(2);
        reader.takeIf(u':');
        const int minutes = reader.number(2);
        if (!isBelow(offsetHours, 24) || !isBelow(minutes, 60))
            return std::nullopt;
        offsetMinutes = (offsetHours * 60 + minutes) * (zone == u'-' ? -1 : 1);
    } else if (zone != u'Z') {
        return std::nullopt;
    }
    if (!reader.atEnd())
        return std::nullopt;

    const sys_seconds whole = sys_days{date} + hours{hourNumber} + minutes{minuteNumber - offsetMinutes} +
                              std::chrono::seconds{secondNumber};
    return fromUnixSeconds(static_cast<double>(whole.time_since_epoch().count()) + fraction);
}

QString Instant::toIso8601() const {
    const double clamped = std::clamp(std::floor(unixSeconds()), firstUnixSecond, lastUnixSecond);
    const sys_seconds whole{std::chrono::seconds{static_cast<qint64>(clamped)}};
    const sys_days day = floor<days>(whole);
    const year_month_day date{day};
    const hh_mm_ss time{whole - day};
    QString text = QStringLiteral("0000-00-00T00:00:00Z");
    QChar *const characters = text.data();
    // Writes a number so that it ends before the position `end`.
    const auto write = [characters](qint64 number, qsizetype end) {
        for (; number > 0; number /= 10)
            characters[--end] = QChar(static_cast<char16_t>(u'0' + number % 10));
    };
    write(static_cast<int>(date.year()), 4);
    write(static_cast<unsigned>(date.month()), 7);
    write(static_cast<unsigned>(date.day()), 10);
    write(time.hours().count(), 13);
    write(time.minutes().count(), 16);
    write(time.seconds().count(), 19);
    return text;
}

} // namespace lexiquill
