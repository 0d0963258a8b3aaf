#include "dictionaries/recording_accents.h"

#include <QRegularExpression>

#include <algorithm>
#include <optional>

namespace lexiquill {

namespace {

/// The accent that a path such as "uk/apple.mp3" or "apple__us_1.mp3" shows; no value if it shows none.
std::optional<Accent> accentOf(const QString &path) {
    static const QRegularExpression separator(QStringLiteral("[^a-z]+"));
    static const QStringList british{QStringLiteral("uk"), QStringLiteral("gb"), QStringLiteral("bre"),
                                     QStringLiteral("british"), QStringLiteral("breprons")};
    static const QStringList american{QStringLiteral("us"),       QStringLiteral("usa"),
                                      QStringLiteral("ame"),      QStringLiteral("nam"),
                                      QStringLiteral("american"), QStringLiteral("ameprons")};
    for (const QString &part : path.toLower().split(separator, Qt::SkipEmptyParts)) {
        if (british.contains(part))
            return Accent::British;
        if (american.contains(part))
            return Accent::American;
    }
    return std::nullopt;
}

} // namespace

QStringList inOrderFor(Accent accent, QStringList paths) {
    const auto distance = [accent](const QString &path) {
        const std::optional<Accent> shown = accentOf(path);
        return shown == accent ? 0 : shown ? 2 : 1;
    };
    std::ranges::stable_sort(paths, {}, distance);
    return paths;
}

} // namespace lexiquill
