#include "dictionaries/mdict/lzo.h"

#include <QLibrary>

#include <algorithm>
#include <limits>

namespace lexiquill::mdict {

namespace {

// From the library's documentation, so that its header is not needed to build this program.
using Decode = int(void *out, int *outSize, const void *in, int *inSize);
constexpr qsizetype inputPadding = 8;
constexpr qsizetype outputPadding = 12;

/// Null when there is no such library.
Decode *loadDecoder() {
    // All of these versions have the same function. It depends on other large libraries, so it is not linked.
    for (const int version : {60, 59, 58, 57, 56, 55}) {
        QLibrary library(QStringLiteral("avutil"), version);
        if (const auto function = library.resolve("av_lzo1x_decode"))
            return reinterpret_cast<Decode *>(function);
    }
    return nullptr;
}

Decode *decoder() {
    static Decode *const function = loadDecoder();
    return function;
}

} // namespace

bool hasLzo() {
    return decoder() != nullptr;
}

bool unpackLzo(QByteArrayView packed, qsizetype size, QByteArray &out) {
    constexpr qsizetype most = std::numeric_limits<int>::max() - outputPadding;
    if (!hasLzo() || packed.size() > most || size > most)
        return false;
    QByteArray in(packed.size() + inputPadding, '\0');
    std::copy(packed.begin(), packed.end(), in.begin());
    out = QByteArray(size + outputPadding, '\0');
    int inLeft = static_cast<int>(packed.size());
    int outLeft = static_cast<int>(size);
    // The result does not matter: the checksum of the block tells whether these are the right bytes.
    decoder()(out.data(), &outLeft, in.constData(), &inLeft);
    out.truncate(size);
    return outLeft == 0;
}

} // namespace lexiquill::mdict
