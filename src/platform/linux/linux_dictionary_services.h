#pragma once

#include "platform/dictionary_services.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <mutex>
#include <vector>

namespace lexiquill {

namespace stardict {
class Dictionary;
}

/// Offline dictionaries in StarDict format. All members may be called from several threads.
class LinuxDictionaryServices final : public DictionaryServices {
public:
    /// `directories` and then `bundledDirectories` are searched recursively for dictionaries.
    /// Look-up tables are kept in `cacheDirectory`, which is created when needed; an unwritable one only
    /// costs time. Nothing is read before the first definition is asked for.
    LinuxDictionaryServices(QStringList directories, QStringList bundledDirectories, QString cacheDirectory);
    ~LinuxDictionaryServices() override;

    /// Asks the Chinese-English dictionaries first, then the others, each in the order in which they were
    /// found; the first that knows the word answers. When none knows the word as typed, it is tried without
    /// punctuation around it and in its likely base forms ("went": "go").
    std::optional<QString> copyTextDefinition(const QString &word) override;

    /// The dictionaries are asked in the same order, on files of their own, so that a definition never waits.
    QStringList headwordsStartingWith(const QString &prefix, qsizetype limit,
                                      const std::stop_token &stop) override;
    QStringList headwordsSimilarTo(const QString &word, qsizetype limit,
                                   const std::stop_token &stop) override;

    QList<ActiveDictionary> activeDictionaries() override;

    QStringList directoryContents(const QString &path) override;

    /// Does nothing: Linux has no system-wide list of active dictionaries that a program could replace.
    void setPersistentDomain(const QString &domain, const QString &key, const QStringList &values) override;

    /// The places where StarDict dictionaries are kept for this user and for all users; they may be missing.
    static QStringList standardDirectories();

private:
    /// The dictionaries in the order in which they are asked.
    struct Shelf {
        std::vector<std::unique_ptr<stardict::Dictionary>> dictionaries;
        bool isScanned = false;
        std::mutex mutex;
    };

    std::optional<QString> firstAnswer(const QString &word);
    void scan(Shelf &shelf) const;

    QStringList m_directories;
    QStringList m_bundledDirectories;
    QString m_cacheDirectory;
    Shelf m_definitions;
    Shelf m_headwords;
};

} // namespace lexiquill
