#pragma once

#include "app/dictionaries/dictionary_download.h"
#include "dictionaries/import/import_result.h"
#include "support/cancellation.h"

#include <QList>
#include <QObject>
#include <QQmlEngine>
#include <QTimer>
#include <QUrl>
#include <QVariantList>

#include <atomic>
#include <memory>

namespace lexiquill {

struct Services;

/// Adds dictionaries from files and addresses for the window: the question before it, the progress and the
/// results. One import runs at a time; others wait for it.
class DictionaryImports : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    /// The files that are, or would be, imported, for display.
    Q_PROPERTY(QString names READ names NOTIFY stateChanged)
    Q_PROPERTY(QString stageText READ stageText NOTIFY progressChanged)
    /// 0…1; −1 while unknown.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    /// Of the last imports: maps of `name`, `text` and `isSuccess`.
    Q_PROPERTY(QVariantList results READ results NOTIFY resultsChanged)
    /// Whether a sheet of its own shows all this.
    Q_PROPERTY(bool showSheet READ showSheet NOTIFY showSheetChanged)

public:
    enum class State { Idle, Asking, Downloading, Importing };
    Q_ENUM(State)

    explicit DictionaryImports(Services &services, DictionaryDownload::Limits limits = {},
                               QObject *parent = nullptr);
    ~DictionaryImports() override;

    static DictionaryImports *create(QQmlEngine *engine, QJSEngine *scripts);

    State state() const { return m_state; }
    QString names() const;
    QString stageText() const;
    double progress() const;
    const QVariantList &results() const { return m_results; }
    bool showSheet() const { return m_showSheet; }

    /// Imports files that the user has chosen. `inSheet`: shows the sheet.
    Q_INVOKABLE void open(const QList<QUrl> &files, bool inSheet);
    /// Imports files that another program has sent, after the user has agreed.
    void ask(const QStringList &paths);
    /// The user agrees.
    Q_INVOKABLE void confirm();
    /// Downloads and imports. Does nothing if addressProblem() or checksumProblem() is not empty.
    Q_INVOKABLE void openAddress(const QString &address, const QString &checksum);
    /// Cancels what runs and forgets what waits.
    Q_INVOKABLE void cancel();
    /// The user has seen the results, or does not want an import: closes the sheet. What runs goes on.
    Q_INVOKABLE void dismiss();

    /// Why the typed text cannot be used; empty when it can.
    Q_INVOKABLE static QString addressProblem(const QString &address);
    Q_INVOKABLE static QString checksumProblem(const QString &checksum);

    /// The paths that addresses from outside name; others than those of local files are left out.
    static QStringList localPaths(const QStringList &urls);

Q_SIGNALS:
    void stateChanged();
    void progressChanged();
    void resultsChanged();
    void showSheetChanged();
    /// Dictionaries were added.
    void imported();

private:
    struct Counter {
        std::atomic<qint64> done = 0;
        std::atomic<qint64> total = 0;
    };

    void enqueue(const QStringList &paths);
    void startNext();
    void runImport(const QStringList &paths);
    void finishImport(const QList<ImportResult> &results);
    void finishDownload(const DictionaryDownload::Outcome &outcome);
    void setState(State state);
    void setShowSheet(bool isShown);
    void addResult(const QString &name, const QString &text, bool isSuccess);

    Services &m_services;
    DictionaryDownload::Limits m_limits;
    State m_state = State::Idle;
    bool m_showSheet = false;
    QStringList m_asked;   ///< wait for the user
    QStringList m_waiting; ///< wait for the running import
    QStringList m_running;
    QVariantList m_results;
    double m_downloaded = -1;
    std::shared_ptr<Counter> m_counter;
    QTimer m_progressTimer;
    std::unique_ptr<Cancellation> m_import;
    std::unique_ptr<DictionaryDownload> m_download;
};

} // namespace lexiquill
