#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace lexiquill::mdict {

/// The digest that key indexes are encrypted with. It is in a library of its own, because few dictionaries
/// need it and it needs a large one.
class KeyDigest {
public:
    static constexpr const char *library = "lexiquill_key_digest";

    virtual ~KeyDigest() = default;
    /// RIPEMD-128: 16 bytes.
    virtual QByteArray digest(QByteArrayView bytes) = 0;
};

} // namespace lexiquill::mdict
