#include "dictionaries/import/archive_names.h"

#include <QStringList>

#include <unicode/ucnv.h>

#include <algorithm>

namespace lexiquill {

namespace {

bool isControl(QChar character) {
    return character.unicode() < 0x20 || (character.unicode() >= 0x7f && character.unicode() < 0xa0);
}

} // namespace

std::optional<QString> decodedName(QByteArrayView name) {
    if (name.isValidUtf8())
        return QString::fromUtf8(name);
    UErrorCode error = U_ZERO_ERROR;
    UConverter *const converter = ucnv_open("gb18030", &error);
    if (U_FAILURE(error) != 0)
        return std::nullopt;
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    // Every byte becomes at most one code unit.
    QString text(name.size(), Qt::Uninitialized);
    const qsizetype size =
        ucnv_toUChars(converter, reinterpret_cast<UChar *>(text.data()), static_cast<int32_t>(text.size()),
                      name.data(), static_cast<int32_t>(name.size()), &error);
    ucnv_close(converter);
    if (U_FAILURE(error) != 0)
        return std::nullopt;
    text.truncate(size);
    return text;
}

std::optional<QString> safePath(const QString &name, const ImportLimits &limits) {
    if (name.startsWith(u'/') || std::ranges::any_of(name, isControl) || !name.isValidUtf16() ||
        name.toUtf8().size() > limits.pathSize)
        return std::nullopt;
    // Some programs write the paths of Windows, where a drive may come first.
    QString path = name;
    path.replace(u'\\', u'/');
    if (path.startsWith(u'/') || path.indexOf(u':') == 1)
        return std::nullopt;
    QStringList parts;
    for (const QString &part : path.split(u'/', Qt::SkipEmptyParts)) {
        if (part == QLatin1StringView(".."))
            return std::nullopt;
        if (part != QLatin1StringView("."))
            parts += part;
    }
    const bool isTooLong = std::ranges::any_of(
        parts, [&limits](const QString &part) { return part.toUtf8().size() > limits.nameSize; });
    if (isTooLong || parts.size() > limits.depth)
        return std::nullopt;
    return parts.join(u'/');
}

} // namespace lexiquill
