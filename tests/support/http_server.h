#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <atomic>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace lexiquill {

using HttpHeaders = QList<std::pair<QByteArray, QByteArray>>;

/// A request as it arrived; the headers in their order and case.
struct ServedRequest {
    QByteArray method;
    QByteArray target; ///< path and query, as sent
    HttpHeaders headers;
    QByteArray body;

    /// The value of a header in whatever case; null without one.
    QByteArray header(const char *name) const;
};

/// What to answer, and how well.
struct ServedAnswer {
    enum class Manner {
        Proper,         ///< as it should be
        Chunked,        ///< in chunks, without an announced length
        ChunkedCut,     ///< the same, but closed before the last chunk
        Cut,            ///< closed in the middle of the body
        Reset,          ///< the connection is reset without an answer
        ResetInMiddle,  ///< the connection is reset in the middle of the body
        Silent,         ///< no answer, and the connection stays open
        SilentInMiddle, ///< half the body, then nothing more
        Trickle,        ///< a byte every `pause`, from the status line on
        Endless,        ///< the body again and again without end
        Raw,            ///< nothing but `body`, which holds the head, too
    };

    int status = 200;
    QByteArray body = {};
    HttpHeaders headers = {};
    Manner manner = Manner::Proper;
    int pause = 1000; ///< milliseconds
};

/// A real HTTP server on the loopback interface with threads of its own, so it also serves programs that the
/// test waits for. Records the requests and answers them as it is told. Every connection serves one request.
class HttpServer {
public:
    /// Asked for the answer to each request, one at a time, in one of the server's threads.
    using Handler = std::function<ServedAnswer(const ServedRequest &)>;
    enum class Protocol {
        Plain,
        SelfSigned, ///< TLS with a certificate that nobody has reason to trust
    };

    explicit HttpServer(Handler handler, Protocol protocol = Protocol::Plain);
    /// Answers every request in the same way.
    explicit HttpServer(const ServedAnswer &answer, Protocol protocol = Protocol::Plain);
    ~HttpServer();
    HttpServer(const HttpServer &) = delete;
    HttpServer &operator=(const HttpServer &) = delete;

    /// "http://127.0.0.1:PORT", or the same with https.
    QString base() const;
    /// Of a SelfSigned server, in PEM form: what somebody who trusts it must know.
    QByteArray certificate() const { return m_certificate; }
    void setHandler(Handler handler);
    /// Stops listening and drops all connections; further ones are refused.
    void stop();

    /// What has arrived, in order.
    QList<ServedRequest> requests() const;
    /// The targets of the requests, separated by blanks.
    QString targets() const;
    /// Connections so far, also those on which no request came.
    int connections() const { return m_connections; }
    /// Connections that are open now.
    int openConnections() const { return m_openConnections; }

private:
    void listen();
    void serve(qintptr descriptor);

    Handler m_handler;
    Protocol m_protocol;
    QByteArray m_key;
    QByteArray m_certificate;
    QList<ServedRequest> m_requests;
    mutable std::mutex m_mutex;
    std::atomic<int> m_port{0};
    std::atomic<int> m_connections{0};
    std::atomic<int> m_openConnections{0};
    std::atomic<bool> m_isStopping{false};
    std::vector<std::thread> m_workers; ///< used by the listening thread only
    std::thread m_listener;
};

/// An address at which every connection is refused.
QString refusingBase();

/// Bytes as a gzip file.
QByteArray gzipped(const QByteArray &bytes);
/// A gzip file of a few kilobytes for each megabyte of blanks that it unpacks to.
QByteArray gzippedBlanks(int megabytes);

} // namespace lexiquill
