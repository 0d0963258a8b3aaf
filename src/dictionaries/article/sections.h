#pragma once

#include <QStringView>

#include <optional>

namespace lexiquill::article {

/// What the lines below a title such as "相关词组:" are.
enum class Section {
    Senses,
    Web,         ///< meanings that were collected on the web
    Definitions, ///< definitions in English beside the Chinese ones
    Phrases,
    Examples,
    Other, ///< derivatives, synonyms, inflections, notes: not shown as senses
};

/// A title at the start of a line.
struct SectionStart {
    Section section = Section::Senses;
    /// Length of the title with the separators behind it.
    qsizetype length = 0;
    /// False if only its brackets or its colon are missing, so that it may also be a gloss.
    bool certain = true;
};
std::optional<SectionStart> sectionAtStart(QStringView line);

/// Whether a line only has tags: levels of examinations, frequencies, inflections, classifiers, stars.
bool isTagLine(QStringView line);

/// The text without tags ("-K5", "(中高 275/289)") and stars at its ends.
QStringView withoutTags(QStringView text);

/// The mark of an example ("▸", "【例】", "* ") at the start of a line, with the blanks behind it; 0 if there
/// is none.
qsizetype exampleMarkLength(QStringView line);

} // namespace lexiquill::article
