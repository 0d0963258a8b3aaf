#pragma once

#include "dictionaries/dictionary_format.h"
#include "model/word_record.h"

#include <QList>
#include <QString>

#include <vector>

namespace lexiquill::bench {

/// The reference time of the samples: searches are before it, reviews around it.
Instant sampleInstant();

/// A wordbook of `count` different words with the content of real entries, in all states of learning.
QList<WordRecord> sampleRecords(qsizetype count);

/// Entries of the starter dictionary, parsed.
const QList<DictionaryEntry> &sampleEntries();

/// Saves `count` sample records as a wordbook, in the way of this program. False when that fails.
bool saveRecords(const QString &wordbook, qsizetype count);

/// A new directory that exists as long as this process, on the disk of the build tree.
QString newDirectory();

/// The `index`-th of half a million different made-up words.
QByteArray madeUpWord(quint32 index);

enum class SampleFormat { StarDict, MDict, Dictd };
inline constexpr SampleFormat sampleFormats[] = {SampleFormat::StarDict, SampleFormat::MDict,
                                                 SampleFormat::Dictd};
const char *nameOf(SampleFormat format);
std::vector<DictionaryFormat> allFormats();

/// Writes a dictionary of `words` with the articles of real entries into `directory`; false on failure.
bool writeDictionary(const QString &directory, SampleFormat format, const std::vector<QByteArray> &words);

/// `count` made-up words.
std::vector<QByteArray> madeUpWords(quint32 count);

} // namespace lexiquill::bench
