#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

namespace lexiquill::article {

/// A part of speech. Of the usual ones `pos` is the English name, such as "noun"; of the others the usual
/// abbreviation, such as "art.".
struct PartOfSpeech {
    QString pos;
    QString chineseName = {}; ///< empty when it follows from `pos`

    friend bool operator==(const PartOfSpeech &, const PartOfSpeech &) = default;
};

/// A part of speech as a label names it.
struct LabelledPart {
    PartOfSpeech part;
    /// What else the label says of the senses, such as 复数; often empty.
    QString context;
};

/// Labels found in a text: usually one, several for "n. & v.".
struct LabelMatch {
    QList<LabelledPart> parts;
    /// Characters they take, with the separators behind them.
    qsizetype length = 0;
};

/// The part of speech that a line begins with ("n.", "transitive verb", "【名词】"), if any. `lettersCount`
/// says that "a." is the first of a list a, b, c rather than an adjective.
std::optional<LabelMatch> labelAtStart(QStringView line, bool lettersCount);

/// The part of speech at `position` within a line; only what cannot be mistaken for running text.
std::optional<LabelMatch> labelInside(QStringView line, qsizetype position);

} // namespace lexiquill::article
