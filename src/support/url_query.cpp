#include "support/url_query.h"

namespace lexiquill {

std::optional<QByteArray> queryEncoded(const QString &text) {
    if (!text.isValidUtf16())
        return std::nullopt;
    return text.toUtf8().toPercentEncoding("!$&'()*+,/:;=?@");
}

} // namespace lexiquill
