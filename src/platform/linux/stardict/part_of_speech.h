#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

namespace lexiquill::stardict {

/// A part of speech in the words of the definition format, such as "noun" or "数".
struct PartOfSpeech {
    QString label;
    /// What the label does not say, such as 缩写 for an abbreviation; often empty.
    QString context;
};

/// Labels found in a text: usually one, several for "n. & v.".
struct LabelMatch {
    QList<PartOfSpeech> parts;
    /// Characters they take, with the separators behind them.
    qsizetype length = 0;
};

/// The part of speech that a line begins with ("n.", "transitive verb", "【名词】"), if any. `lettersCount`
/// says that "a." is the first of a list a, b, c rather than an adjective.
std::optional<LabelMatch> labelAtStart(QStringView line, bool lettersCount);

/// The part of speech at `position` within a line; only what cannot be mistaken for running text.
std::optional<LabelMatch> labelInside(QStringView line, qsizetype position);

} // namespace lexiquill::stardict
