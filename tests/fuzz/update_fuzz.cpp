#include "check.h"
#include "update/remote_update_info.h"
#include "update/version_order.h"

#include <cstddef>
#include <cstdint>

using namespace lexiquill;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray input(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto info = decodeRemoteUpdateInfo(input);
    if (!info)
        return 0;
    check(decodeRemoteUpdateInfo(encodeRemoteUpdateInfo(*info)) == info);
    const QString &a = info->version;
    const QString &b = info->build;
    const QString &c = info->releaseDate;
    check(std::is_lt(compareVersions(b, a)) == std::is_gt(compareVersions(a, b)));
    check(std::is_eq(compareVersions(b, a)) == std::is_eq(compareVersions(a, b)));
    check(std::is_gt(compareVersions(a, b)) || std::is_gt(compareVersions(b, c)) ||
          std::is_lteq(compareVersions(a, c)));
    check(std::is_gt(compareVersions(a + u'1', a)));
    return 0;
}
