#include "platform/linux/activation/start_socket.h"

#include "platform/application_endpoint.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace lexiquill::StartSocket {

namespace {

constexpr int patience = 200; // milliseconds
constexpr qsizetype longestMessage =
    (ApplicationRequests::mostUrls + 1) * (ApplicationRequests::longestUrl + 1);

bool fillAddress(sockaddr_un &address) {
    const QByteArray name = QFile::encodeName(path());
    if (name.size() >= static_cast<qsizetype>(sizeof(address.sun_path)))
        return false;
    address.sun_family = AF_UNIX;
    std::copy(name.begin(), name.end(), std::begin(address.sun_path));
    return true;
}

/// A descriptor that is connected to the listener; -1 without one.
int connectToListener() {
    sockaddr_un address{};
    if (!fillAddress(address))
        return -1;
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return -1;
    if (::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0)
        return socket;
    ::close(socket);
    return -1;
}

} // namespace

QString path() {
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString directory =
        runtime.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) : runtime;
    return QDir(directory).filePath(QStringLiteral("lexiquill.socket"));
}

bool send(const QStringList &message) {
    const int socket = connectToListener();
    if (socket < 0)
        return false;
    const QByteArray bytes = message.join(QChar(u'\0')).toUtf8();
    const bool isSent =
        ::send(socket, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL) == bytes.size();
    ::close(socket);
    return isSent;
}

int listen() {
    sockaddr_un address{};
    if (!fillAddress(address))
        return -1;
    if (const int other = connectToListener(); other >= 0) {
        ::close(other);
        return -1;
    }
    ::unlink(address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0)
        return -1;
    if (::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0 &&
        ::chmod(address.sun_path, S_IRUSR | S_IWUSR) == 0 && ::listen(socket, 8) == 0)
        return socket;
    ::close(socket);
    return -1;
}

QStringList receive(int listener) {
    const int socket = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (socket < 0)
        return {};
    QByteArray bytes;
    std::array<char, 4096> buffer{};
    pollfd readable{.fd = socket, .events = POLLIN, .revents = 0};
    while (bytes.size() < longestMessage && ::poll(&readable, 1, patience) == 1) {
        const ssize_t count = ::read(socket, buffer.data(), buffer.size());
        if (count <= 0)
            break;
        bytes.append(buffer.data(), count);
    }
    ::close(socket);
    return QString::fromUtf8(bytes).split(QChar(u'\0'));
}

} // namespace lexiquill::StartSocket
