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

    /// The value of a header; the case of `name` does not matter. Null when there is no such header.
    QByteArray header(const char *name) const;
};

/// An answer, and how it is sent.
struct ServedAnswer {
    enum class Manner {
        Proper,         ///< complete and correct
        Chunked,        ///< in chunks, without an announced length
        ChunkedCut,     ///< the same, but closed before the last chunk
        Cut,            ///< closed in the middle of the body
        Reset,          ///< the connection is reset without an answer
        ResetInMiddle,  ///< the connection is reset in the middle of the body
        Silent,         ///< no answer, and the connection stays open
        SilentInMiddle, ///< half the body, then nothing more
        Trickle,        ///< a byte every `pause`, from the status line on
        Endless,        ///< the body is repeated without end
        Raw,            ///< only `body`, which contains the head, too
    };

    int status = 200;
    QByteArray body = {};
    HttpHeaders headers = {};
    Manner manner = Manner::Proper;
    int pause = 1000; ///< milliseconds
};

/// A real HTTP server on the loopback interface. It has its own threads, so it also serves programs that the
/// test waits for. Records the requests and sends the given answers. Every connection serves one request.
class HttpServer {
public:
    /// Returns the answer to a request. Called in one of the server's threads, one call at a time.
    using Handler = std::function<ServedAnswer(const ServedRequest &)>;
    enum class Protocol {
        Plain,
        SelfSigned, ///< TLS with a self-signed certificate
    };

    explicit HttpServer(Handler handler, Protocol protocol = Protocol::Plain);
    /// Answers every request in the same way.
    explicit HttpServer(const ServedAnswer &answer, Protocol protocol = Protocol::Plain);
    ~HttpServer();
    HttpServer(const HttpServer &) = delete;
    HttpServer &operator=(const HttpServer &) = delete;

    /// "http://127.0.0.1:PORT", or the same with https.
    QString base() const;
    /// The certificate of a SelfSigned server in PEM form, for clients that trust it.
    QByteArray certificate() const { return m_certificate; }
    void setHandler(Handler handler);
    /// Stops listening and drops all connections; further ones are refused.
    void stop();

    /// All requests so far, in order.
    QList<ServedRequest> requests() const;
    /// The targets of the requests, separated by blanks.
    QString targets() const;
    /// Connections so far, including those without a request.
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
/// A gzip file of blanks: about 1 KB for each unpacked megabyte.
QByteArray gzippedBlanks(int megabytes);

} // namespace lexiquill
