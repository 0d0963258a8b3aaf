#pragma once

#include <QHashFunctions>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace lexiquill {

/// An English sentence with its Chinese translation.
struct ExampleSentence {
    QString en;
    QString cn;

    /// Identity in lists: the English sentence.
    QString id() const { return en; }

    friend bool operator==(const ExampleSentence &, const ExampleSentence &) = default;
};

/// One sense of a word in one part of speech.
struct SenseItem {
    std::optional<qint64> number = std::nullopt;   ///< within its group, as the source counts
    std::optional<QString> context = std::nullopt; ///< label such as a register or subject
    QString chineseMeaning;                        ///< may contain several glosses separated by ";", "；" or
                                                   ///< ","
    QStringList examples = {};

    friend bool operator==(const SenseItem &, const SenseItem &) = default;
};

/// The senses of a word in one part of speech.
struct PartOfSpeechGroup {
    QString pos;        ///< as the source writes it, e.g. "vt."
    QString posChinese; ///< e.g. "动词"
    QList<SenseItem> senses;

    /// A group whose Chinese name is derived from `pos`.
    static PartOfSpeechGroup named(const QString &pos, const QList<SenseItem> &senses);

    /// The Chinese name of a part of speech; an unknown one is returned unchanged.
    static QString localizePOS(const QString &pos);
    /// The short English form, e.g. "n." for "noun"; an unknown one gets a full stop if it has none.
    QString posAbbreviation() const;
    /// The Chinese tokens of all senses without duplicates. If there are none, the trimmed non-empty glosses.
    QStringList cleanChineseList() const;

    friend bool operator==(const PartOfSpeechGroup &, const PartOfSpeechGroup &) = default;
};

/// A parsed dictionary result for one headword.
struct DictionaryEntry {
    QString headword;
    std::optional<QString> phonetic = std::nullopt;
    QList<PartOfSpeechGroup> posGroups;
    QString rawText; ///< the source's text, shown if there is nothing else
    QList<ExampleSentence> examples = {};

    /// One line such as "n. 苹果；苹果树 | v. 提供": two tokens of each group, else the first non-blank line
    /// of the raw text, else empty.
    QString conciseSummary() const;

    friend bool operator==(const DictionaryEntry &, const DictionaryEntry &) = default;
};

size_t qHash(const ExampleSentence &example, size_t seed = 0) noexcept;
size_t qHash(const SenseItem &sense, size_t seed = 0) noexcept;
size_t qHash(const PartOfSpeechGroup &group, size_t seed = 0) noexcept;
size_t qHash(const DictionaryEntry &entry, size_t seed = 0) noexcept;

} // namespace lexiquill

Q_DECLARE_TYPEINFO(lexiquill::ExampleSentence, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(lexiquill::SenseItem, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(lexiquill::PartOfSpeechGroup, Q_RELOCATABLE_TYPE);
Q_DECLARE_TYPEINFO(lexiquill::DictionaryEntry, Q_RELOCATABLE_TYPE);
