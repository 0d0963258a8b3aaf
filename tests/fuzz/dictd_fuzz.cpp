#include "../support/files.h"
#include "check.h"
#include "dictionaries/dictd/dictd_format.h"
#include "dictionaries/dictionary.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace lexiquill;

/// The input is an index, a zero byte, and the articles. Every word of the index can be asked for, and a
/// second lookup, which uses the cache, gives the same answer.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const QTemporaryDir directory;
    static const QString base = directory.filePath(QStringLiteral("d"));
    static const DictionaryFormat format = dictd::format();
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const qsizetype end = std::max<qsizetype>(input.indexOf('\0'), 0);
    const QByteArray index = input.first(end);
    check(writeFile(base + QStringLiteral(".index"), index));
    check(writeFile(base + QStringLiteral(".dict"), input.sliced(std::min(end + 1, input.size()))));

    QDir(directory.filePath(QStringLiteral("cache"))).removeRecursively();
    const auto open = [] {
        return Dictionary(format, base + QStringLiteral(".index"),
                          directory.filePath(QStringLiteral("cache")));
    };
    Dictionary first = open();
    Dictionary second = open();
    constexpr int mostWords = 20;
    int asked = 0;
    for (const QByteArray &line : index.split('\n')) {
        if (++asked > mostWords)
            break;
        const QString word = QString::fromUtf8(line.left(line.indexOf('\t')));
        check(first.find(word) == second.find(word));
    }
    return 0;
}
