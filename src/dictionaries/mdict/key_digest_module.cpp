#include "dictionaries/mdict/key_digest.h"
#include "platform/module.h"

#include <crypto++/ripemd.h>

namespace lexiquill::mdict {

namespace {

class Module final : public KeyDigest {
public:
    QByteArray digest(QByteArrayView bytes) override {
        QByteArray result(CryptoPP::RIPEMD128::DIGESTSIZE, Qt::Uninitialized);
        CryptoPP::RIPEMD128().CalculateDigest(reinterpret_cast<CryptoPP::byte *>(result.data()),
                                              reinterpret_cast<const CryptoPP::byte *>(bytes.data()),
                                              static_cast<size_t>(bytes.size()));
        return result;
    }
};

} // namespace

} // namespace lexiquill::mdict

LEXIQUILL_MODULE(mdict::KeyDigest, lexiquill::mdict::Module)
