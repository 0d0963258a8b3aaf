#pragma once

#include "network/http_client.h"
#include "support/cancellation.h"

#include <QObject>
#include <QProcess>
#include <QQmlEngine>
#include <QTemporaryFile>
#include <QUrl>

#include <memory>

namespace lexiquill {

/// Where the recording of a word is; empty for a word that cannot be asked for.
QUrl pronunciationUrl(const QString &youdaoBase, const QString &word);

/// Fetches and plays recordings of words. Nothing is made before the first one is asked for.
class Pronunciation : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isFetching READ isFetching NOTIFY isFetchingChanged)

public:
    explicit Pronunciation(QObject *parent = nullptr);
    ~Pronunciation() override;

    bool isFetching() const { return m_isFetching; }

    /// Fetches and plays the recording of a word, in place of whatever is being played. What goes wrong is
    /// told by failed().
    Q_INVOKABLE void play(const QString &word);
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void isFetchingChanged();
    /// `message`: a sentence that tells the user what to do.
    void failed(const QString &message);

private:
    QCoro::Task<> download(QUrl url, std::stop_token stop);
    void setFetching(bool isFetching);
    void playFile(const QString &file);

    bool m_isFetching = false;
    std::unique_ptr<QTemporaryFile> m_file;
    QProcess *m_player = nullptr; ///< while it plays
    std::unique_ptr<Cancellation> m_cancellation;
};

} // namespace lexiquill
