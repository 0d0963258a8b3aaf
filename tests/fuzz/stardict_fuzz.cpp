#include "../support/files.h"
#include "check.h"
#include "dictionaries/dictionary.h"
#include "dictionaries/stardict/ifo_file.h"
#include "dictionaries/stardict/stardict_format.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace lexiquill;

namespace {

/// Removes the next file from the input: a 16-bit length, then the bytes.
QByteArrayView takePart(QByteArrayView &input) {
    if (input.size() < 2)
        return {};
    const qsizetype size = static_cast<unsigned char>(input[0]) | static_cast<unsigned char>(input[1]) << 8;
    input = input.sliced(2);
    const QByteArrayView part = input.first(std::min(size, input.size()));
    input = input.sliced(part.size());
    return part;
}

/// `input` has all files of one dictionary. For any content, a second lookup, which uses the cache, gives the
/// same answer.
void checkFiles(QByteArrayView input) {
    static const QTemporaryDir directory;
    static const QString base = directory.filePath(QStringLiteral("d"));
    const bool packed = !input.isEmpty() && (input[0] & 1) != 0;
    input = input.sliced(input.isEmpty() ? 0 : 1);
    for (const char *suffix : {".idx", ".idx.gz", ".dict", ".dict.dz"})
        QFile::remove(base + QLatin1StringView(suffix));
    QByteArray ifo = "StarDict's dict ifo file\n";
    ifo += takePart(input);
    check(writeFile(base + QStringLiteral(".ifo"), ifo));
    check(writeFile(base + (packed ? QStringLiteral(".idx.gz") : QStringLiteral(".idx")),
                    takePart(input).toByteArray()));
    check(writeFile(base + (packed ? QStringLiteral(".dict.dz") : QStringLiteral(".dict")),
                    takePart(input).toByteArray()));
    check(writeFile(base + QStringLiteral(".syn"), takePart(input).toByteArray()));
    const QByteArrayView cache = takePart(input);

    const QString cacheDirectory = directory.filePath(QStringLiteral("cache"));
    const auto ask = [&](const QString &word) {
        static const DictionaryFormat format = stardict::format();
        return Dictionary(format, base + QStringLiteral(".ifo"), cacheDirectory).find(word);
    };
    const QString word = QString::fromUtf8(takePart(input));
    const auto first = ask(word);
    check(ask(word) == first);
    if (!cache.isEmpty()) {
        for (const QString &name : QDir(cacheDirectory).entryList(QDir::Files))
            check(writeFile(QDir(cacheDirectory).filePath(name), cache.toByteArray()));
        check(ask(word) == first);
    }
    QDir(cacheDirectory).removeRecursively();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArrayView input(data, static_cast<qsizetype>(size));
    if (input.isEmpty())
        return 0;
    stardict::parseIfo(input);
    checkFiles(input);
    return 0;
}
