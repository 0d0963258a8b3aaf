#include "dictionaries/mdict/index_cipher.h"

#include "dictionaries/mdict/key_digest.h"
#include "dictionaries/mdict/packed_block.h"
#include "platform/module.h"

namespace lexiquill::mdict {

bool decryptIndex(QByteArray &packed) {
    static auto *const digest = loadModule<KeyDigest>();
    if (digest == nullptr || packed.size() < blockHeaderSize)
        return false;
    constexpr unsigned char beforeFirst = 0x36;
    const QByteArray checksum = packed.sliced(4, 4);
    const QByteArray key = digest->digest(checksum + QByteArray("\x95\x36\0\0", 4));
    unsigned char previous = beforeFirst;
    for (qsizetype i = 0; i + blockHeaderSize < packed.size(); ++i) {
        char &place = packed[i + blockHeaderSize];
        const auto byte = static_cast<unsigned char>(place);
        const auto swapped = static_cast<unsigned char>(byte << 4 | byte >> 4);
        const auto keyByte = static_cast<unsigned char>(key[i % key.size()]);
        place = static_cast<char>(swapped ^ previous ^ static_cast<unsigned char>(i) ^ keyByte);
        previous = byte;
    }
    return true;
}

} // namespace lexiquill::mdict
