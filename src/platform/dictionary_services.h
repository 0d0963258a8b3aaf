#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <stop_token>

namespace lexiquill {

/// The operating system's dictionary service and the places where it keeps dictionaries.
class DictionaryServices {
public:
    virtual ~DictionaryServices() = default;

    /// The plain-text definition of `word` from the active dictionaries, as fields separated by "|":
    /// headword, phonetic (left out when unknown), body. Nothing when no dictionary knows the word.
    virtual std::optional<QString> copyTextDefinition(const QString &word) = 0;

    /// At most `limit` headwords that start with `prefix`, without regard to case, the shorter first. May be
    /// called on any thread, and gives up when asked to stop.
    virtual QStringList headwordsStartingWith(const QString &prefix, qsizetype limit,
                                              const std::stop_token &stop) {
        Q_UNUSED(prefix)
        Q_UNUSED(limit)
        Q_UNUSED(stop)
        return {};
    }

    /// At most `limit` headwords that differ from `word` by one or two letters, the likeliest first, as far
    /// as they are found within a third of a second. May be called on any thread, and gives up when asked to
    /// stop.
    virtual QStringList headwordsSimilarTo(const QString &word, qsizetype limit,
                                           const std::stop_token &stop) {
        Q_UNUSED(word)
        Q_UNUSED(limit)
        Q_UNUSED(stop)
        return {};
    }

    /// A dictionary that answers.
    struct ActiveDictionary {
        QString name;
        qint64 wordCount = 0;
        QString path; ///< of one of its files
    };

    /// The dictionaries in the order in which they are asked. May search the disk; may be called on any
    /// thread.
    virtual QList<ActiveDictionary> activeDictionaries() { return {}; }

    /// Names of the entries of a directory; an unreadable or missing one counts as empty.
    virtual QStringList directoryContents(const QString &path) = 0;

    /// Replaces the preference domain `domain` with the single entry `key` = `values` and makes it lasting.
    virtual void setPersistentDomain(const QString &domain, const QString &key,
                                     const QStringList &values) = 0;
};

} // namespace lexiquill
