// The minimum work of a program that records a search: start the library, read the wordbook, parse it, and
// durably replace it with the same bytes.

#include <QByteArray>
#include <QFile>
#include <QString>

#include <fcntl.h>
#include <simdjson.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

bool writeDurably(const QByteArray &path, const QByteArray &bytes) {
    const QByteArray beside = path + ".bare";
    const int file = ::open(beside.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const bool isWritten =
        file >= 0 && ::write(file, bytes.constData(), static_cast<size_t>(bytes.size())) == bytes.size() &&
        ::fsync(file) == 0 && ::close(file) == 0 && std::rename(beside.constData(), path.constData()) == 0;
    const int directory =
        ::open(path.first(path.lastIndexOf('/')).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    return isWritten && directory >= 0 && ::fsync(directory) == 0;
}

} // namespace

/// Usage: bare_search WORDBOOK
int main(int, char **argv) {
    const QString path = QString::fromLocal8Bit(argv[1]);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return EXIT_FAILURE;
    const QByteArray bytes = file.readAll();
    simdjson::dom::parser parser;
    if (parser.parse(bytes.constData(), static_cast<size_t>(bytes.size())).error() != simdjson::SUCCESS)
        return EXIT_FAILURE;
    if (!writeDurably(QFile::encodeName(path), bytes))
        return EXIT_FAILURE;
    std::puts("written");
    return EXIT_SUCCESS;
}
