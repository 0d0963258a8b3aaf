#pragma once

#include "network/http_client.h"
#include "support/cancellation.h"

#include <QObject>
#include <QProcess>
#include <QQmlEngine>
#include <QTemporaryFile>
#include <QUrl>

#include <functional>
#include <memory>

namespace lexiquill {

/// URL of the recording of a word; empty for a blank or invalid word.
QUrl pronunciationUrl(const QString &youdaoBase, const QString &word);

/// Fetches and plays recordings of words: of the online dictionary, or of an offline one if that is not
/// available; the other way round when words are looked up offline. Creates nothing before the first request.
class Pronunciation : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isFetching READ isFetching NOTIFY isFetchingChanged)

public:
    explicit Pronunciation(QObject *parent = nullptr);
    ~Pronunciation() override;

    bool isFetching() const { return m_isFetching; }

    /// Fetches and plays the recording of a word, and stops any other that is playing. Emits failed() if that
    /// does not work.
    Q_INVOKABLE void play(const QString &word);
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void isFetchingChanged();
    /// `message`: a sentence that tells the user what to do.
    void failed(const QString &message);

private:
    void fetch(const QString &word, const std::function<void(const QString &message)> &failed);
    QCoro::Task<> download(QUrl url, std::stop_token stop,
                           std::function<void(const QString &message)> failed);
    void find(const QString &word, const std::function<void()> &missing);
    void setFetching(bool isFetching);
    void fail(const QString &message);
    void playBytes(const QByteArray &sound, const QString &suffix);
    void playFile(const QString &file);

    bool m_isFetching = false;
    std::unique_ptr<QTemporaryFile> m_file;
    QProcess *m_player = nullptr; ///< null while nothing plays
    std::unique_ptr<Cancellation> m_cancellation;
};

} // namespace lexiquill
