#include "check.h"
#include "support/dictzip.h"
#include "support/gzip.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace lexiquill;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // With a copy of the exact size, the sanitizer detects every read beyond it.
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    constexpr qsizetype limit = 100'000;
    QByteArray whole;
    GzipReader reader;
    const bool isSound = reader.feed(input, whole, limit);
    // Byte by byte the result must be the same.
    QByteArray pieced;
    GzipReader slowReader;
    bool isPiecedSound = true;
    for (qsizetype i = 0; i < input.size() && isPiecedSound && pieced.size() <= limit; ++i)
        isPiecedSound = slowReader.feed(QByteArrayView(input).sliced(i, 1), pieced, limit);
    if (isSound && whole.size() <= limit)
        check(isPiecedSound && pieced == whole && slowReader.isComplete() == reader.isComplete());

    QByteArray exact;
    if (isSound && reader.isComplete() && unpackGzip(input, whole.size(), exact))
        check(exact == whole);

    const auto read = [&input](qint64 offset, char *to, qsizetype count) {
        const bool isThere = offset >= 0 && offset <= input.size() && count <= input.size() - offset;
        if (isThere)
            std::copy_n(input.cbegin() + offset, count, to);
        return isThere;
    };
    const auto zip = DictZip::open({.size = input.size(), .read = read});
    if (!zip)
        return 0;
    for (const quint64 offset : {quint64(0), quint64(5), quint64(100'000), ~quint64(0)}) {
        for (const quint32 length : {1U, 100U, 0xffffffffU}) {
            const auto part = zip->read(offset, length);
            check(!part || part->size() == qsizetype(length));
        }
    }
    return 0;
}
