#include "app/components/contrast.h"

#include <algorithm>
#include <cmath>

namespace lexiquill {

namespace {

/// The light of a channel from 0 to 1.
double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor mixed(const QColor &from, const QColor &to, int percent) {
    const auto channel = [percent](int a, int b) {
        return a + (b - a) * percent / 100;
    };
    return {channel(from.red(), to.red()), channel(from.green(), to.green()),
            channel(from.blue(), to.blue())};
}

} // namespace

double Contrast::ratio(const QColor &one, const QColor &other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor Contrast::readable(const QColor &base, const QColor &ground, double minimum) {
    const QColor end = ratio(Qt::white, ground) > ratio(Qt::black, ground) ? Qt::white : Qt::black;
    for (int percent = 0; percent < 100; percent += 2) {
        const QColor tone = mixed(base, end, percent);
        if (ratio(tone, ground) >= minimum)
            return tone;
    }
    return end;
}

} // namespace lexiquill
