#pragma once

#include "app/search/text_paragraph.h"
#include "app/wordbook/word_deletions.h"
#include "model/word_record.h"
#include "support/cancellation.h"

#include <QObject>
#include <QQmlEngine>
#include <QVariantList>

#include <memory>

namespace lexiquill {

class CurrentWeeklyPlan;
class DictionaryShelf;
class StorageManager;
struct Services;

/// The data that a definition card shows for one record of the wordbook, and the actions on it.
class WordCard : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The record's id; an unknown or empty one leaves the card empty.
    Q_PROPERTY(QString wordId READ wordId WRITE setWordId NOTIFY wordIdChanged)
    /// Whether the word itself is left out, so that the card asks for it.
    Q_PROPERTY(bool hidesWord READ hidesWord WRITE setHidesWord NOTIFY hidesWordChanged)
    Q_PROPERTY(bool exists READ exists NOTIFY changed)
    Q_PROPERTY(QString headword READ headword NOTIFY contentChanged)
    Q_PROPERTY(QString phonetic READ phonetic NOTIFY contentChanged)
    Q_PROPERTY(QVariantList groups READ groups NOTIFY contentChanged)
    /// Number of senses that are not in `groups` yet; see showMore().
    Q_PROPERTY(int hiddenSenses READ hiddenSenses NOTIFY contentChanged)
    /// A TextParagraphs value.
    Q_PROPERTY(QVariant examples READ examples NOTIFY contentChanged)
    Q_PROPERTY(bool hasExamples READ hasExamples NOTIFY contentChanged)
    /// The source's text; empty when there is anything better.
    Q_PROPERTY(QString rawText READ rawText NOTIFY contentChanged)
    /// The article of the dictionary as rich text, instead of the text of a source without structure.
    Q_PROPERTY(QString article READ article NOTIFY contentChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY changed)
    Q_PROPERTY(QString statusColorName READ statusColorName NOTIFY changed)
    Q_PROPERTY(QString memoryText READ memoryText NOTIFY changed)
    Q_PROPERTY(QString userNotes READ userNotes NOTIFY userNotesChanged)
    /// The tags in the note.
    Q_PROPERTY(QStringList tags READ tags NOTIFY userNotesChanged)

public:
    explicit WordCard(QObject *parent = nullptr);
    explicit WordCard(Services &services, QObject *parent = nullptr);

    const QString &wordId() const { return m_wordId; }
    void setWordId(const QString &wordId);
    bool hidesWord() const { return m_hidesWord; }
    void setHidesWord(bool hidesWord);
    bool exists() const { return m_record.has_value(); }
    QString headword() const;
    QString phonetic() const;
    const QVariantList &groups() const { return m_groups; }
    int hiddenSenses() const;
    QVariant examples() const { return QVariant::fromValue(m_examples); }
    bool hasExamples() const { return !m_examples.isEmpty(); }
    QString rawText() const;
    const QString &article() const { return m_article; }
    QString statusText() const;
    QString statusColorName() const;
    /// Such as "间隔 6 天 · 6 天后复习 · 查询 3 次"
    QString memoryText() const;
    QString userNotes() const;
    QStringList tags() const;
    /// The record itself; no value when the card is empty.
    const std::optional<WordRecord> &record() const { return m_record; }

    Q_INVOKABLE void showMore();
    /// Records one review answer.
    Q_INVOKABLE void answer(bool remembered);
    /// Saves the note; does nothing when it is unchanged.
    Q_INVOKABLE void saveNotes(const QString &notes);
    /// Puts the definition on the clipboard as text.
    Q_INVOKABLE void copy();
    /// Deletes the word from the wordbook and returns a message for the user.
    Q_INVOKABLE QString remove();
    /// Restores the last deleted word with its history.
    Q_INVOKABLE void undoRemoval();

Q_SIGNALS:
    void wordIdChanged();
    void hidesWordChanged();
    void changed();
    void contentChanged();
    void userNotesChanged();

private:
    void refresh();
    void show(std::optional<WordRecord> record);
    void describe();
    void findArticle();

    StorageManager &m_storage;
    DictionaryShelf &m_shelf;
    CurrentWeeklyPlan &m_plan;
    QString m_wordId;
    bool m_hidesWord = false;
    std::optional<WordRecord> m_record;
    WordDeletions m_deletions;
    QVariantList m_groups;
    TextParagraphs m_examples;
    qsizetype m_senseLimit = 0;
    QString m_article;
    std::unique_ptr<Cancellation> m_articleSearch;
};

} // namespace lexiquill
