#pragma once

#include "app/search/text_paragraph.h"
#include "model/dictionary_entry.h"
#include "model/word_record.h"

#include <QString>
#include <QVariantList>

namespace lexiquill {

/// The phonetic in slashes, or unchanged if it already begins with a slash or bracket; empty if there is
/// none.
QString shownPhonetic(const WordRecord &record);

/// The text with the word in bold, also where the word has a usual ending.
QList<TextSpan> emphasised(const QString &text, const QString &word);

/// The theme's colour name for the tag of a part of speech.
QString partOfSpeechColor(const PartOfSpeechGroup &group);

/// The number of senses in all groups.
qsizetype senseCount(const QList<PartOfSpeechGroup> &groups);

/// The groups with their first `limit` senses as maps for the screens: `abbreviation`, `name` (Chinese, may
/// be empty), `colorName`, `paragraphs` (TextParagraphs), and for each sense `spoken` (`name` and `examples`)
/// and `meanings`.
QVariantList definitionRows(const QList<PartOfSpeechGroup> &groups, const QString &word, qsizetype limit);

/// Bilingual examples.
TextParagraphs exampleParagraphs(const QList<ExampleSentence> &examples, const QString &word);

/// The content as plain text, for the clipboard.
QString plainDefinition(const QString &word, const QString &phonetic, const QList<PartOfSpeechGroup> &groups,
                        const QList<ExampleSentence> &examples, const QString &rawText);

} // namespace lexiquill
