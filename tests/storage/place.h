#pragma once

#include "model/record_codec.h"
#include "storage/storage_manager.h"
#include "support/test.h"

#include <sys/wait.h>
#include <unistd.h>

namespace lexiquill {

inline DictionaryEntry entryFor(const QString &word, const std::optional<QString> &phonetic = {}) {
    const SenseItem sense{.chineseMeaning = u"释义"_s};
    return {.headword = word,
            .phonetic = phonetic,
            .posGroups = {PartOfSpeechGroup::named(u"noun"_s, {sense})},
            .rawText = u"noun 释义"_s};
}

/// The words separated by blanks.
inline QByteArray names(const QList<WordRecord> &words) {
    QByteArrayList list;
    for (const WordRecord &record : words)
        list += record.word.toUtf8();
    return list.join(' ');
}

/// The directory of a wordbook, with everything that a store needs. The tests set the clock.
class Place {
public:
    QString path(const char *name) const { return m_directory.filePath(QString::fromLatin1(name)); }
    QString directory() const { return path("Lexiquill"); }
    QString wordbook() const { return directory() + u"/vocabulary.json"_s; }

    std::unique_ptr<StorageManager> open() { return open(m_deletedWords); }
    std::unique_ptr<StorageManager> open(DeletedWords &deletedWords) {
        const auto firstWords = [this] {
            QList<WordRecord> records;
            for (const QString &word : {u"concise"_s, u"serendipity"_s})
                records += newRecord({.entry = entryFor(word), .date = now});
            return records;
        };
        const auto utc = [] {
            return Calendar{QTimeZone::utc()};
        };
        auto store =
            std::make_unique<StorageManager>(StorageManager::Dependencies{.storageFile = wordbook(),
                                                                          .deletedWords = deletedWords,
                                                                          .firstWords = firstWords,
                                                                          .clock = [this] { return now; },
                                                                          .calendar = utc});
        const auto tell = [this](char sign) {
            return [this, sign](const QList<WordRecord> &records) {
                told += sign + names(records) + ' ';
            };
        };
        QObject::connect(store.get(), &StorageManager::recordsChanged, tell('+'));
        QObject::connect(store.get(), &StorageManager::wordsReplaced, tell('='));
        QObject::connect(store.get(), &StorageManager::recordsRemoved,
                         [this](const QStringList &words) { told += '-' + words.join(u' ').toUtf8() + ' '; });
        return store;
    }
    void setContent(const QByteArray &json) const { QVERIFY(writeFile(wordbook(), json)); }
    void setWords(const QStringList &words) const {
        QList<WordRecord> records;
        for (const QString &word : words)
            records += newRecord({.entry = entryFor(word), .date = now});
        setContent(encodeWordRecords(records, JsonForm::File));
    }
    QList<WordRecord> saved() const { return savedIn(wordbook()); }
    QList<WordRecord> savedIn(const QString &file) const {
        return decodeWordRecords(readFile(file), JsonForm::File, now).value_or(QList{WordRecord()});
    }
    QStringList backups() const { return QDir(directory() + u"/backups"_s).entryList(QDir::Files); }

    /// Starts another process, with its own settings, that works on a store.
    template <typename Work> pid_t startElsewhere(Work work) {
        const pid_t child = ::fork();
        if (child == 0) {
            UserDefaults settings(path("Lexiquill.conf"));
            DeletedWords deletedWords(settings);
            work(*open(deletedWords));
            ::_exit(0);
        }
        return child;
    }
    template <typename Work> void elsewhere(Work work) {
        const pid_t child = startElsewhere(work);
        int status = -1;
        QCOMPARE(::waitpid(child, &status, 0), child);
        QCOMPARE(status, 0);
    }
    /// The signals of the stores since the last call: "+" before the words of changed records, "-" before
    /// removed words, "=" before the words of a replaced wordbook.
    QByteArray takeTold() { return std::exchange(told, {}).trimmed(); }

    Instant now = *Instant::fromIso8601(u"2025-03-14T09:26:53Z");
    QByteArray told;

private:
    QTemporaryDir m_directory;

public:
    UserDefaults defaults{path("Lexiquill.conf")};

private:
    DeletedWords m_deletedWords{defaults};
};

} // namespace lexiquill
