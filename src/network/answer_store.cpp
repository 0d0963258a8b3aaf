#include "network/answer_store.h"

#include "platform/durable_file.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace lexiquill {

namespace {

constexpr qint64 largestFile = qint64{16} << 20;
/// Milliseconds after which no process is still writing a temporary file.
constexpr qint64 abandonedAfter = 3'600'000;
/// Milliseconds by which a file may be ahead of the clock, for example on a network disk.
constexpr qint64 clockTolerance = 60'000;
const QString temporarySuffix = QStringLiteral(".tmp");

QByteArray hexHash(const QByteArray &bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

/// The text before the body: the URL, because two URLs may have the same hash, and the hash of the body.
QByteArray headerOf(const QByteArray &url, const QByteArray &body) {
    return "Lexiquill answer 1\n" + url + '\n' + hexHash(body) + '\n';
}

} // namespace

AnswerStore::AnswerStore(const QString &directory, qint64 mostBytes, Clock clock)
    : m_directory(directory),
      m_mostBytes(mostBytes),
      m_clock(std::move(clock)) {}

QString AnswerStore::pathOf(const QByteArray &url) const {
    return m_directory + u'/' + QString::fromLatin1(hexHash(url));
}

std::optional<QByteArray> AnswerStore::find(const QUrl &url) const {
    const QByteArray name = url.toEncoded();
    const QFileInfo info(pathOf(name));
    QFile file(info.filePath());
    // Reading a pipe of that name would never end.
    if (!info.isFile() || info.size() > largestFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray content = file.read(largestFile);
    const qsizetype headerSize = headerOf(name, {}).size();
    const QByteArray body = content.sliced(std::min(headerSize, content.size()));
    if (content.first(content.size() - body.size()) != headerOf(name, body))
        return std::nullopt;
    return body;
}

void AnswerStore::keep(const QUrl &url, const QByteArray &body) const {
    const QByteArray name = url.toEncoded();
    const QByteArray header = headerOf(name, body);
    if (header.size() + body.size() > std::min(largestFile, m_mostBytes))
        return;
    if (!QFileInfo::exists(m_directory)) {
        QDir().mkpath(QFileInfo(m_directory).absolutePath());
        QDir().mkdir(m_directory, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    // Not synced: a file that a system crash has truncated simply counts as no answer.
    if (replaceFile(pathOf(name), header + body, {.durability = DurableFile::Durability::Cached}) ==
        DurableFile::Problem::None)
        makeRoom();
}

void AnswerStore::makeRoom() const {
    struct File {
        QString path;
        qint64 modified; ///< milliseconds
        qint64 size;
    };
    // Read the attributes of each file once, because other processes may be replacing it.
    const auto now = static_cast<qint64>(m_clock().unixSeconds() * 1000);
    QList<File> files;
    for (QDirIterator iterator(m_directory, QDir::Files | QDir::Hidden | QDir::System); iterator.hasNext();) {
        const QFileInfo info(iterator.next());
        const qint64 modified = info.lastModified().toMSecsSinceEpoch();
        // The clock was wrong when this file was written. Count it as old, so that it is not kept longer than
        // newer files.
        const bool isFromFuture = modified - now > clockTolerance;
        files += File{info.filePath(), isFromFuture ? 0 : modified, info.size()};
    }
    std::sort(files.begin(), files.end(),
              [](const File &a, const File &b) { return a.modified > b.modified; });
    qint64 size = 0;
    for (const File &file : std::as_const(files)) {
        const bool isLeftBehind = file.path.endsWith(temporarySuffix) && now - file.modified > abandonedAfter;
        // Files that fit are kept, even if a newer file does not fit.
        if (isLeftBehind || file.size > m_mostBytes - size)
            QFile::remove(file.path);
        else
            size += file.size;
    }
}

} // namespace lexiquill
