#pragma once

#include "app/search/suggestion_model.h"
#include "lookup/dictionary_service.h"
#include "support/background_task.h"
#include "support/cancellation.h"

#include <QList>
#include <QObject>
#include <QQmlEngine>
#include <QUuid>

#include <functional>
#include <memory>
#include <stop_token>

namespace lexiquill {

struct Services;
class StorageManager;

/// The state of the search screen. Suggests words while the user types, looks up a word and records it.
/// Suggests similar words if it is not found. Further typing cancels a running lookup.
class SearchSession : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The text of the search field.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    Q_PROPERTY(lexiquill::SuggestionModel *suggestions READ suggestions CONSTANT)
    /// The id of the record of the word that was found.
    Q_PROPERTY(QString wordId READ wordId NOTIFY stateChanged)
    /// The word that is or was looked up.
    Q_PROPERTY(QString word READ word NOTIFY stateChanged)
    /// The form that was looked up if its base form was found, e.g. "went" when the result is "go"; else
    /// empty.
    Q_PROPERTY(QString askedForm READ askedForm NOTIFY stateChanged)
    /// The source of the definition, for display.
    Q_PROPERTY(QString sourceText READ sourceText NOTIFY stateChanged)
    /// The message for a word that was not found: which sources do not have it.
    Q_PROPERTY(QString missingText READ missingText NOTIFY stateChanged)

public:
    enum class State { Suggesting, LookingUp, Found, NotFound };
    Q_ENUM(State)

    explicit SearchSession(QObject *parent = nullptr);
    explicit SearchSession(Services &services, QObject *parent = nullptr);
    /// Stops the thread that reads the dictionaries and waits for it.
    ~SearchSession() override;

    const QString &text() const { return m_text; }
    /// Cancels the lookup and suggests words for the new text, or recent words when it is blank.
    void setText(const QString &text);
    State state() const { return m_state; }
    SuggestionModel *suggestions() { return &m_suggestions; }
    const QString &wordId() const { return m_wordId; }
    const QString &word() const { return m_word; }
    const QString &askedForm() const { return m_askedForm; }
    const QString &sourceText() const { return m_sourceText; }
    const QString &missingText() const { return m_missingText; }

    /// Looks a word up, puts it into the field, and records it when it is found; a blank one is ignored.
    Q_INVOKABLE void lookUp(const QString &word);
    /// Call this after the found word has been deleted from the wordbook.
    Q_INVOKABLE void forget();
    /// Shows the word seen before or after the present one, without looking it up again. Words that are no
    /// longer in the wordbook are passed over. False when there is none.
    Q_INVOKABLE bool goBack();
    Q_INVOKABLE bool goForward();

Q_SIGNALS:
    void textChanged();
    void stateChanged();
    /// A lookup has found its word; follows stateChanged().
    void found();

private:
    using Search = std::function<QStringList(const std::stop_token &stop)>;

    struct SeenWord {
        QUuid record;
        QString headword;
        QString askedForm;
        QString sourceText;
    };

    QCoro::Task<> ask(QString word, std::stop_token stop);
    void finish(const LookupResult &result);
    void see(const SeenWord &word);
    void show(const SeenWord &word);
    bool showSeen(qsizetype place, qsizetype step);
    void setState(State state);
    void abandon();
    void suggest();
    void suggestRecent();
    void takeWords();
    void inBackground(Search search, Suggestion::Origin origin);
    void add(const QStringList &words, Suggestion::Origin origin);
    void explain(const QStringList &words, const QStringList &summaries);

    DictionaryService &m_dictionary;
    SystemDictionaryService &m_offline;
    StorageManager &m_storage;
    QString m_text;
    State m_state = State::Suggesting;
    SuggestionModel m_suggestions;
    QString m_wordId;
    QString m_headword;
    QString m_word;
    QString m_askedForm;
    QString m_sourceText;
    QString m_missingText;
    QList<SeenWord> m_seen;
    qsizetype m_place = -1; ///< of the last word shown among those seen
    std::unique_ptr<Cancellation> m_cancellation;
    std::stop_source m_stop;
    BackgroundQueue m_queue;
};

} // namespace lexiquill
