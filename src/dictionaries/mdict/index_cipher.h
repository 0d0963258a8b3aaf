#pragma once

#include <QByteArray>

namespace lexiquill::mdict {

/// Decrypts a packed key index. False when it is too short or the library that this needs is missing.
bool decryptIndex(QByteArray &packed);

} // namespace lexiquill::mdict
