#include "update/version_order.h"

#include <algorithm>

namespace lexiquill {

namespace {

bool isDigit(QChar unit) {
    return unit >= u'0' && unit <= u'9';
}

/// Removes the run of digits at the beginning of the text, and returns it without leading zeros.
QStringView takeNumber(QStringView &text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const QStringView digits = text.first(end - text.begin());
    text = text.sliced(digits.size());
    const auto first = std::find_if(digits.begin(), digits.end(), [](QChar digit) { return digit != u'0'; });
    return digits.sliced(first - digits.begin());
}

} // namespace

std::strong_ordering compareVersions(QStringView a, QStringView b) {
    while (!a.isEmpty() && !b.isEmpty()) {
        if (isDigit(a.first()) && isDigit(b.first())) {
            const QStringView left = takeNumber(a);
            const QStringView right = takeNumber(b);
            if (left.size() != right.size())
                return left.size() <=> right.size();
            if (const int difference = left.compare(right); difference != 0)
                return difference <=> 0;
        } else {
            if (a.first() != b.first())
                return a.first().unicode() <=> b.first().unicode();
            a = a.sliced(1);
            b = b.sliced(1);
        }
    }
    return a.size() <=> b.size();
}

} // namespace lexiquill
