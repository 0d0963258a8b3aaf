#include "dictionaries/stardict/ifo_file.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace lexiquill::stardict {

namespace {

using Keys = QHash<QByteArray, QByteArray>;

std::optional<quint64> number(const Keys &keys, const char *key, quint64 max) {
    const QByteArray text = keys.value(key);
    const bool digits =
        !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    bool ok = false;
    const quint64 value = text.toULongLong(&ok);
    if (!digits || !ok || value > max)
        return std::nullopt;
    return value;
}

bool isTypeSequence(const QByteArray &types) {
    constexpr qsizetype maxTypes = 64;
    return types.size() <= maxTypes && std::all_of(types.begin(), types.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
           });
}

/// If a key is repeated, its first value is used.
Keys readKeys(const QByteArray &text) {
    Keys keys;
    for (const QByteArray &line : text.split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (equals <= 0)
            continue;
        const QByteArray key = line.left(equals).trimmed();
        if (!keys.contains(key))
            keys.insert(key, line.mid(equals + 1).trimmed());
    }
    return keys;
}

} // namespace

std::optional<IfoInfo> parseIfo(QByteArrayView text) {
    if (text.startsWith("\xef\xbb\xbf"))
        text = text.sliced(3);
    const QByteArray all = text.toByteArray();
    const qsizetype firstEnd = all.indexOf('\n');
    if (firstEnd < 0 || all.left(firstEnd).trimmed() != "StarDict's dict ifo file")
        return std::nullopt;
    const Keys keys = readKeys(all.mid(firstEnd + 1));

    const QByteArray version = keys.value("version");
    if (version != "2.4.2" && version != "3.0.0")
        return std::nullopt;
    constexpr quint64 maxCount = std::numeric_limits<quint32>::max();
    const auto words = number(keys, "wordcount", maxCount);
    const auto indexSize = number(keys, "idxfilesize", quint64(maxIndexSize));
    if (!words || !indexSize || keys.value("bookname").isEmpty())
        return std::nullopt;

    IfoInfo info;
    info.wordCount = static_cast<quint32>(*words);
    info.about = {.name = QString::fromUtf8(keys.value("bookname")),
                  .author = QString::fromUtf8(keys.value("author")),
                  .description = QString::fromUtf8(keys.value("description"))
                                     .replace(QStringLiteral("<br>"), QStringLiteral("\n")),
                  .wordCount = info.wordCount};
    info.indexSize = static_cast<qint64>(*indexSize);
    info.synonymCount = static_cast<quint32>(number(keys, "synwordcount", maxCount).value_or(0));
    info.typeSequence = keys.value("sametypesequence");
    if (!isTypeSequence(info.typeSequence))
        return std::nullopt;
    if (keys.contains("idxoffsetbits")) {
        const quint64 bits = number(keys, "idxoffsetbits", 64).value_or(0);
        if (bits != 32 && (bits != 64 || version != "3.0.0"))
            return std::nullopt;
        info.offsetBytes = static_cast<int>(bits / 8);
    }
    return info;
}

} // namespace lexiquill::stardict
