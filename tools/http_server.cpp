#include "http_server.h"

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>
#include <QTemporaryDir>

#include <sys/socket.h>
#include <zlib.h>

using namespace Qt::StringLiterals;

namespace lexiquill {

namespace {

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

constexpr int tick = 20; ///< milliseconds between a waiting thread's checks whether it should end

class Listener : public QTcpServer {
public:
    std::function<void(qintptr)> accept;

protected:
    void incomingConnection(qintptr descriptor) override { accept(descriptor); }
};

/// A private key and a certificate for this machine, both new.
std::pair<QByteArray, QByteArray> selfSigned() {
    const QTemporaryDir directory;
    const QString key = directory.filePath(u"key.pem"_s);
    const QString certificate = directory.filePath(u"certificate.pem"_s);
    QProcess openssl;
    const QString command =
        u"req -x509 -newkey rsa:2048 -nodes -subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1 -days 2"_s;
    openssl.start(u"openssl"_s, command.split(u' ') + QStringList{u"-keyout"_s, key, u"-out"_s, certificate});
    openssl.waitForFinished();
    return {contentOf(key), contentOf(certificate)};
}

/// One connection with blocking calls. They end when the server stops or the peer disconnects.
class Connection {
public:
    Connection(QSslSocket &socket, const std::atomic<bool> &isStopping)
        : m_socket(socket),
          m_isStopping(isStopping) {}

    bool isUsable() const { return !m_isStopping && m_socket.state() == QAbstractSocket::ConnectedState; }

    void wait(int milliseconds) {
        for (; isUsable() && milliseconds > 0; milliseconds -= tick)
            m_socket.waitForReadyRead(std::min(milliseconds, tick));
    }

    bool read(ServedRequest &request) {
        QByteArray received;
        qsizetype end = -1;
        while ((end = received.indexOf("\r\n\r\n")) < 0) {
            if (!more(received))
                return false;
        }
        const QList<QByteArray> lines = received.first(end).split('\n');
        const QList<QByteArray> words = lines.first().trimmed().split(' ');
        request.method = words.value(0);
        request.target = words.value(1);
        for (const QByteArray &line : lines.sliced(1)) {
            const qsizetype colon = line.indexOf(':');
            request.headers.append({line.left(colon), line.mid(colon + 1).trimmed()});
        }
        const qsizetype length = request.header("Content-Length").toLongLong();
        while (received.size() < end + 4 + length) {
            if (!more(received))
                return false;
        }
        request.body = received.sliced(end + 4);
        return true;
    }

    void write(const QByteArray &bytes) {
        m_socket.write(bytes);
        while (isUsable() && m_socket.bytesToWrite() > 0)
            m_socket.waitForBytesWritten(tick);
    }

    void trickle(const QByteArray &bytes, int pause) {
        for (const char byte : bytes) {
            if (!isUsable())
                return;
            write(QByteArray(1, byte));
            wait(pause);
        }
    }

    void waitForPeer() {
        while (isUsable())
            wait(tick);
    }

    void reset() {
        const linger hard{.l_onoff = 1, .l_linger = 0};
        ::setsockopt(static_cast<int>(m_socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &hard,
                     sizeof hard);
        m_socket.abort();
    }

    void close() {
        m_socket.disconnectFromHost();
        waitForPeer();
    }

private:
    bool more(QByteArray &received) {
        wait(m_socket.bytesAvailable() > 0 ? 0 : tick);
        received += m_socket.readAll();
        return isUsable() || m_socket.bytesAvailable() > 0;
    }

    QSslSocket &m_socket;
    const std::atomic<bool> &m_isStopping;
};

QByteArray headOf(const ServedAnswer &answer) {
    QByteArray head = "HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\nConnection: close\r\n";
    for (const auto &[name, value] : answer.headers)
        head += name + ": " + value + "\r\n";
    using Manner = ServedAnswer::Manner;
    if (answer.manner == Manner::Chunked || answer.manner == Manner::ChunkedCut)
        head += "Transfer-Encoding: chunked\r\n";
    else if (answer.manner != Manner::Endless)
        head += "Content-Length: " + QByteArray::number(answer.body.size()) + "\r\n";
    return head + "\r\n";
}

QByteArray chunk(const QByteArray &bytes) {
    return QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n";
}

void send(Connection &connection, const ServedAnswer &answer) {
    using Manner = ServedAnswer::Manner;
    const QByteArray head = headOf(answer);
    const QByteArray half = answer.body.first(answer.body.size() / 2);
    switch (answer.manner) {
    case Manner::Proper:
        connection.write(head + answer.body);
        break;
    case Manner::Chunked:
    case Manner::ChunkedCut:
        connection.write(head + chunk(half) + chunk(answer.body.sliced(half.size())));
        if (answer.manner == Manner::Chunked)
            connection.write("0\r\n\r\n");
        break;
    case Manner::Cut:
        connection.write(head + half);
        break;
    case Manner::Reset:
        return connection.reset();
    case Manner::ResetInMiddle:
        connection.write(head + half);
        connection.wait(5 * tick);
        return connection.reset();
    case Manner::Silent:
        return connection.waitForPeer();
    case Manner::SilentInMiddle:
        connection.write(head + half);
        return connection.waitForPeer();
    case Manner::Trickle:
        connection.trickle(head + answer.body, answer.pause);
        break;
    case Manner::Endless:
        connection.write(head);
        while (connection.isUsable())
            connection.write(answer.body);
        return;
    case Manner::Raw:
        connection.write(answer.body);
        break;
    }
    connection.close();
}

} // namespace

QByteArray ServedRequest::header(const char *name) const {
    for (const auto &[each, value] : headers) {
        if (each.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

HttpServer::HttpServer(Handler handler, Protocol protocol)
    : m_handler(std::move(handler)),
      m_protocol(protocol) {
    if (m_protocol == Protocol::SelfSigned)
        std::tie(m_key, m_certificate) = selfSigned();
    m_listener = std::thread([this] { listen(); });
    while (m_port == 0)
        std::this_thread::yield();
}

HttpServer::HttpServer(const ServedAnswer &answer, Protocol protocol)
    : HttpServer([answer](const ServedRequest &) { return answer; }, protocol) {}

HttpServer::~HttpServer() {
    stop();
}

QString HttpServer::base() const {
    const QString scheme = m_protocol == Protocol::Plain ? u"http"_s : u"https"_s;
    return scheme + u"://127.0.0.1:"_s + QString::number(m_port);
}

void HttpServer::setHandler(Handler handler) {
    const std::lock_guard guard(m_mutex);
    m_handler = std::move(handler);
}

void HttpServer::stop() {
    m_isStopping = true;
    if (m_listener.joinable())
        m_listener.join();
}

QList<ServedRequest> HttpServer::requests() const {
    const std::lock_guard guard(m_mutex);
    return m_requests;
}

QString HttpServer::targets() const {
    QByteArrayList list;
    for (const ServedRequest &request : requests())
        list += request.target;
    return QString::fromUtf8(list.join(' '));
}

void HttpServer::listen() {
    Listener listener;
    listener.accept = [this](qintptr descriptor) {
        ++m_connections;
        ++m_openConnections;
        m_workers.emplace_back([this, descriptor] {
            serve(descriptor);
            --m_openConnections;
        });
    };
    if (!listener.listen(QHostAddress::LocalHost))
        qFatal("no port to listen on");
    m_port = listener.serverPort();
    while (!m_isStopping)
        listener.waitForNewConnection(tick);
    listener.close();
    for (std::thread &worker : m_workers)
        worker.join();
    m_workers.clear();
}

void HttpServer::serve(qintptr descriptor) {
    QSslSocket socket;
    socket.setSocketDescriptor(descriptor);
    if (m_protocol == Protocol::SelfSigned) {
        socket.setPrivateKey(QSslKey(m_key, QSsl::Rsa));
        socket.setLocalCertificate(QSslCertificate(m_certificate));
        socket.startServerEncryption();
        if (!socket.waitForEncrypted(5000))
            return;
    }
    Connection connection(socket, m_isStopping);
    ServedRequest request;
    if (!connection.read(request))
        return;
    ServedAnswer answer;
    {
        const std::lock_guard guard(m_mutex);
        m_requests += request;
        answer = m_handler(request);
    }
    send(connection, answer);
}

QString refusingBase() {
    HttpServer server(ServedAnswer{});
    return server.base();
}

QByteArray gzipped(const QByteArray &bytes) {
    z_stream stream{};
    constexpr int gzip = 16 + MAX_WBITS;
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, gzip, 9, Z_DEFAULT_STRATEGY);
    QByteArray out(static_cast<qsizetype>(deflateBound(&stream, static_cast<uLong>(bytes.size()))),
                   Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.constData()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef *>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.truncate(static_cast<qsizetype>(stream.total_out));
    deflateEnd(&stream);
    return out;
}

QByteArray gzippedBlanks(int megabytes) {
    return gzipped(QByteArray(qsizetype{megabytes} << 20, ' '));
}

} // namespace lexiquill
