#pragma once

#include "network/http_client.h"
#include "support/cancellation.h"

#include <QObject>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>

namespace lexiquill {

/// Where the recording of a word is; empty for a word that cannot be asked for.
QUrl pronunciationUrl(const QString &youdaoBase, const QString &word);

/// Fetches recordings of words. Nothing is made before the first one is asked for.
class Pronunciation : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool isFetching READ isFetching NOTIFY isFetchingChanged)

public:
    explicit Pronunciation(QObject *parent = nullptr);
    ~Pronunciation() override;

    bool isFetching() const { return m_isFetching; }

    /// Ends in ready() or failed(), unless another word is asked for before.
    Q_INVOKABLE void fetch(const QString &word);
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void isFetchingChanged();
    /// The recording is in this file, which stays until the next one is fetched.
    void ready(const QUrl &file);
    /// `message`: a sentence that tells the user what to do.
    void failed(const QString &message);

private:
    QCoro::Task<> download(QUrl url, CancellationToken cancellation);
    void setFetching(bool isFetching);
    QUrl store(const QByteArray &sound);

    bool m_isFetching = false;
    int m_files = 0;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<Cancellation> m_cancellation;
};

} // namespace lexiquill
