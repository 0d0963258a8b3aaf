#include "check.h"
#include "settings/ini_format.h"

#include <QVariantMap>

#include <cstddef>
#include <cstdint>

using namespace lexiquill;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    // Values that have been read once do not change when they are written and read again.
    const QVariantMap values = iniValues(text);
    check(iniValues(iniText(values)) == values);
    return 0;
}
