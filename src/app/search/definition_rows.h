#pragma once

#include "model/dictionary_entry.h"
#include "model/word_record.h"

#include <QString>
#include <QVariantList>

namespace lexiquill {

/// The phonetic between slashes, unless the source has put it between marks of its own; empty without one.
QString shownPhonetic(const WordRecord &record);

/// The text as styled text in which the word, also with the usual endings, is bold.
QString emphasised(const QString &text, const QString &word);

/// The colour name of a part of speech's tag, as the theme knows it.
QString partOfSpeechColor(const PartOfSpeechGroup &group);

/// The number of senses in all groups.
qsizetype senseCount(const QList<PartOfSpeechGroup> &groups);

/// The groups with their first `limit` senses as maps for the screens: `abbreviation`, `name` (Chinese, may
/// be empty), `colorName` and `senses`, each with `number` (text), `context`, `meaning` and `examples`
/// (styled).
QVariantList definitionRows(const QList<PartOfSpeechGroup> &groups, const QString &word, qsizetype limit);

/// Bilingual examples as maps of `en` (styled) and `cn`.
QVariantList exampleRows(const QList<ExampleSentence> &examples, const QString &word);

/// The content as plain text, as the user wants it on the clipboard.
QString plainDefinition(const QString &word, const QString &phonetic, const QList<PartOfSpeechGroup> &groups,
                        const QList<ExampleSentence> &examples, const QString &rawText);

} // namespace lexiquill
