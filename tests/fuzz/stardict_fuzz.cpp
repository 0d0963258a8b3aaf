#include "../support/files.h"
#include "check.h"
#include "dictionaries/article/article_reader.h"
#include "dictionaries/english/inflection.h"
#include "dictionaries/stardict/article_fields.h"
#include "dictionaries/stardict/ifo_file.h"
#include "dictionaries/stardict/stardict_dictionary.h"
#include "support/dictzip.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace lexiquill::stardict;

namespace {

/// Takes the next file off the input: a 16-bit length, then the bytes.
QByteArrayView takePart(QByteArrayView &input) {
    if (input.size() < 2)
        return {};
    const qsizetype size = static_cast<unsigned char>(input[0]) | static_cast<unsigned char>(input[1]) << 8;
    input = input.sliced(2);
    const QByteArrayView part = input.first(std::min(size, input.size()));
    input = input.sliced(part.size());
    return part;
}

/// The line must keep its form whatever it was made of.
void checkLine(const QString &headword, const std::vector<std::vector<Field>> &articles) {
    const auto line = definitionText(headword, articles);
    check(!line || !line->contains(u'\n'));
    check(!line || !line->contains(u'\t'));
    check(!line || line->count(u'|') == 1 || line->count(u'|') == 2);
}

void checkText(QByteArrayView input) {
    for (const char type : {'m', 'x', 'h', 'g', 't'})
        checkLine(QStringLiteral("word"), {{{type, input}}});
    checkLine(QString::fromUtf8(input.first(std::min<qsizetype>(input.size(), 12))), {{{'m', input}}});
    for (const char *sequence : {"", "tm", "Wxy"})
        checkLine(QStringLiteral("w"), {splitArticle(input, sequence)});
    baseForms(QString::fromUtf8(input));
}

void checkCompressed(QByteArrayView input) {
    QByteArray unpacked;
    unpackGzip(input, 1000, unpacked);
    const auto zip = DictZip::open(input);
    if (!zip)
        return;
    for (const quint64 offset : {quint64(0), quint64(5), quint64(100'000), ~quint64(0)}) {
        for (const quint32 size : {1U, 100U, 0xffffffffU})
            zip->read(offset, size);
    }
}

/// All files of one dictionary. Whatever they hold, asking twice gives the same answer: the second time from
/// the cache.
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
        const auto dictionary = Dictionary::fromIfo(base + QStringLiteral(".ifo"), cacheDirectory);
        const auto answer = dictionary ? dictionary->find(word) : std::nullopt;
        return answer ? answer->articles : std::vector<QByteArray>();
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
    const QByteArrayView rest = input.sliced(1);
    switch (input[0] % 4) {
    case 0:
        checkText(rest);
        break;
    case 1:
        parseIfo(rest);
        checkCompressed(rest);
        break;
    default:
        checkFiles(rest);
        break;
    }
    return 0;
}
