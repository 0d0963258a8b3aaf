#pragma once

#include "network/http_message.h"
#include "support/gzip.h"

#include <QCoroTask>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>

#include <memory>

class QNetworkAccessManager;

namespace lexiquill {

/// One request in progress, with its redirects, until its reply.
class HttpTransfer : public QObject {
public:
    HttpTransfer(QNetworkAccessManager &network, const HttpRequest &request);
    ~HttpTransfer() override;

    /// An awaitable for the end of the transfer. Only one coroutine may await it.
    struct End {
        HttpTransfer *transfer;
        bool await_ready() const noexcept { return transfer->m_isOver; }
        void await_suspend(std::coroutine_handle<> waiting) const noexcept { transfer->m_waiting = waiting; }
        void await_resume() const noexcept {}
    };
    End end() { return {this}; }

    HttpReply takeReply() { return std::move(m_reply); }
    /// Ends the transfer at once.
    void abandon(HttpError error);

private:
    void open(const QUrl &url);
    void readHeaders();
    bool goesIntoSink() const;
    void readPosition();
    void readBody();
    void take(const QByteArray &bytes);
    void complete();
    bool followRedirect();
    void finish(std::optional<HttpError> error);
    void drop();
    void resume();

    QNetworkAccessManager &m_network;
    HttpRequest m_request;
    QNetworkReply *m_incoming = nullptr;
    std::unique_ptr<GzipReader> m_inflater;
    std::optional<qint64> m_announced; ///< size of the body on the wire
    qint64 m_before = 0;               ///< bytes that the sink contained before this body
    qint64 m_received = 0;             ///< bytes of the body on the wire
    qint64 m_decoded = 0;
    qint64 m_bodyLimit = 0; ///< of the current answer
    int m_redirects = 0;
    bool m_hasHeaders = false;
    bool m_isOver = false;
    HttpReply m_reply;
    QTimer m_idle;
    QTimer m_total;
    QTimer m_resumption;
    std::coroutine_handle<> m_waiting;
};

} // namespace lexiquill
