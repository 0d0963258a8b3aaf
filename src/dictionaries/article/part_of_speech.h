#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

namespace lexiquill::article {

/// A part of speech. For common ones `pos` is the English name, such as "noun"; for others it is the usual
/// abbreviation, such as "art.".
struct PartOfSpeech {
    QString pos;
    QString chineseName = {}; ///< empty if it can be derived from `pos`

    friend bool operator==(const PartOfSpeech &, const PartOfSpeech &) = default;
};

/// A part of speech from a label.
struct LabelledPart {
    PartOfSpeech part;
    /// Other information about the senses in the label, such as 复数; often empty.
    QString context;
};

/// Labels found in a text: usually one, several for "n. & v.".
struct LabelMatch {
    QList<LabelledPart> parts;
    /// Length of the labels, including the separators after them.
    qsizetype length = 0;
};

/// The part of speech that a line begins with ("n.", "transitive verb", "【名词】"), if any. `lettersCount`:
/// "a." is the first item of a list a, b, c and not an adjective.
std::optional<LabelMatch> labelAtStart(QStringView line, bool lettersCount);

/// The part of speech at `position` within a line; only if it cannot be ordinary text.
std::optional<LabelMatch> labelInside(QStringView line, qsizetype position);

} // namespace lexiquill::article
