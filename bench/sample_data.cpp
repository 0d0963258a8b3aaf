#include "sample_data.h"

#include "dictd_writer.h"
#include "dictionaries/dictd/dictd_format.h"
#include "dictionaries/dictionary_shelf.h"
#include "dictionaries/mdict/mdict_format.h"
#include "dictionaries/stardict/stardict_format.h"
#include "dictionaries/system_dictionary_service.h"
#include "mdict_writer.h"
#include "stardict_headwords.h"
#include "stardict_writer.h"
#include "storage/wordbook_file.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <array>
#include <cstdio>
#include <random>

namespace lexiquill::bench {

namespace {

QStringList starterWords() {
    return tools::stardictHeadwords(QStringLiteral(LEXIQUILL_STARTER_DIRECTORY "/lexiquill-starter.idx"));
}

WordRecord sampleRecord(const DictionaryEntry &entry, const QString &word, std::mt19937 &random) {
    const auto number = [&random](qint64 from, qint64 to) {
        return std::uniform_int_distribution<qint64>(from, to)(random);
    };
    const auto daysLater = [](Instant instant, qint64 days) {
        return instant.adding(static_cast<double>(days) * secondsPerDay);
    };
    // An online source has separate sentences besides those of the senses.
    QList<ExampleSentence> sentences;
    for (const PartOfSpeechGroup &group : entry.posGroups) {
        for (const SenseItem &sense : group.senses) {
            for (const QString &example : sense.examples) {
                const qsizetype split = example.indexOf(QRegularExpression(QStringLiteral("\\p{Han}")));
                sentences += ExampleSentence{example.first(split).trimmed(), example.sliced(split)};
            }
        }
    }
    WordRecord record{.word = word,
                      .phonetic = entry.phonetic,
                      .conciseSummary = entry.conciseSummary(),
                      .posGroups = entry.posGroups,
                      .rawDefinition = entry.rawText,
                      .examples = sentences,
                      .firstSearchedDate = daysLater(sampleInstant(), -number(60, 700)),
                      .lastSearchedDate = daysLater(sampleInstant(), -number(0, 60)),
                      .searchCount = number(1, 9),
                      .nextReviewDate = daysLater(sampleInstant(), number(-10, 40)),
                      .reviewHistory = {},
                      .userNotes =
                          number(0, 3) == 0 ? QStringLiteral("和同事开会时听到的词 #工作") : QString()};
    const qint64 reviews = number(0, 16);
    for (qint64 i = 0; i < reviews; ++i) {
        const bool isRemembered = number(0, 3) != 0;
        record.repetitionCount = isRemembered ? record.repetitionCount + 1 : 0;
        record.intervalDays = isRemembered ? record.intervalDays * 2 + 1 : 1;
        record.easeFactor = 1.3 + 0.05 * static_cast<double>(number(0, 34));
        record.lastReviewDate = daysLater(sampleInstant(), i - number(17, 40));
        record.reviewHistory +=
            ReviewLog{.reviewDate = *record.lastReviewDate,
                      .feedback = isRemembered ? ReviewFeedback::Remembered : ReviewFeedback::Forgot,
                      .resultingIntervalDays = record.intervalDays,
                      .resultingEaseFactor = record.easeFactor};
        record.memoryStatus = isRemembered ? MemoryStatus::Reviewing : MemoryStatus::Learning;
    }
    record.isMastered = record.repetitionCount >= 5;
    if (record.isMastered)
        record.memoryStatus = MemoryStatus::Mastered;
    return record;
}

} // namespace

Instant sampleInstant() {
    static const Instant instant = Instant::now();
    return instant;
}

const QList<DictionaryEntry> &sampleEntries() {
    static const QList<DictionaryEntry> entries = [] {
        DictionaryShelf shelf({.installed = {},
                               .bundled = {QStringLiteral(LEXIQUILL_STARTER_DIRECTORY)},
                               .cache = newDirectory()},
                              {stardict::format()});
        SystemDictionaryService dictionary(shelf);
        QList<DictionaryEntry> found;
        for (const QString &word : starterWords()) {
            if (const auto entry = dictionary.lookup(word))
                found += *entry;
        }
        return found;
    }();
    return entries;
}

QList<WordRecord> sampleRecords(qsizetype count) {
    const QList<DictionaryEntry> &entries = sampleEntries();
    std::mt19937 random(1);
    QList<WordRecord> records;
    records.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        const DictionaryEntry &entry = entries[i % entries.size()];
        const qsizetype round = i / entries.size();
        const QString word =
            round == 0 ? entry.headword : QStringLiteral("%1-%2").arg(entry.headword).arg(round);
        records += sampleRecord(entry, word, random);
    }
    return records;
}

bool saveRecords(const QString &wordbook, qsizetype count) {
    WordbookFile file(wordbook);
    return file.save(*file.lock(std::chrono::seconds(1)), sampleRecords(count), std::nullopt);
}

QString newDirectory() {
    static const QTemporaryDir root(QStringLiteral(LEXIQUILL_BENCH_DIRECTORY "/run-XXXXXX"));
    static int number = 0;
    QString path = root.filePath(QString::number(++number));
    if (!QDir().mkpath(path))
        std::fprintf(stderr, "cannot create %s\n", qPrintable(path));
    return path;
}

QByteArray madeUpWord(quint32 index) {
    // All of the same length, so that different syllables make different words.
    constexpr std::array syllables{"ba", "ca", "de", "do", "el", "en", "fi", "ga", "hy", "in",
                                   "jo", "ka", "le", "mi", "na", "or", "pe", "qu", "re", "st",
                                   "ti", "ul", "va", "we", "xy", "yo", "ze", "sh"};
    constexpr quint64 count = syllables.size();
    QByteArray word;
    // Spreads the words over the alphabet. The factor is prime, so indexes below count⁴ give different words.
    quint64 rest = quint64{index} * 104729 % (count * count * count * count);
    for (int i = 0; i < 4; ++i, rest /= count)
        word += syllables[rest % count];
    return word;
}

const char *nameOf(SampleFormat format) {
    switch (format) {
    case SampleFormat::StarDict:
        return "StarDict";
    case SampleFormat::MDict:
        return "MDict";
    case SampleFormat::Dictd:
        return "dictd";
    }
    return "";
}

std::vector<DictionaryFormat> allFormats() {
    return {stardict::format(), mdict::format(), dictd::format()};
}

std::vector<QByteArray> madeUpWords(quint32 count) {
    std::vector<QByteArray> words;
    words.reserve(count);
    for (quint32 i = 0; i < count; ++i)
        words.push_back(madeUpWord(i));
    return words;
}

namespace {

QByteArray sampleArticle(size_t number) {
    const DictionaryEntry &sample = sampleEntries()[static_cast<qsizetype>(number) % sampleEntries().size()];
    QString article = u'[' + sample.phonetic.value_or(QString()) + u']';
    for (const PartOfSpeechGroup &group : sample.posGroups)
        article += u'\n' + group.posAbbreviation() + u' ' + group.cleanChineseList().join(u'；');
    return article.toUtf8();
}

/// A vector with `make(word, article)` for each word.
template <typename Make> auto entriesOf(const std::vector<QByteArray> &words, Make make) {
    std::vector<decltype(make(words.front(), QByteArray()))> entries;
    entries.reserve(words.size());
    for (size_t i = 0; i < words.size(); ++i)
        entries.push_back(make(words[i], sampleArticle(i)));
    return entries;
}

} // namespace

bool writeDictionary(const QString &directory, SampleFormat format, const std::vector<QByteArray> &words) {
    const QString name = QStringLiteral("large");
    if (format == SampleFormat::MDict) {
        const auto make = [](const QByteArray &word, const QByteArray &article) {
            return tools::MdictEntry{word, article};
        };
        tools::MdictOptions options;
        options.format = "Text";
        options.title = "英汉词典";
        return tools::writeMdx(directory + u'/' + name + QStringLiteral(".mdx"), entriesOf(words, make),
                               options)
            .isEmpty();
    }
    if (format == SampleFormat::Dictd) {
        const auto make = [](const QByteArray &word, const QByteArray &article) {
            return tools::DictdEntry{word, word + '\n' + article};
        };
        auto entries = entriesOf(words, make);
        entries.push_back({"00-database-short", "英汉词典"});
        return tools::writeDictd(directory, name, entries, true).isEmpty();
    }
    tools::StarDictOptions options;
    options.bookName = "英汉词典";
    options.dictzip = true;
    return tools::writeStarDict(directory, name, entriesOf(words, tools::plainEntry), options).isEmpty();
}

} // namespace lexiquill::bench
