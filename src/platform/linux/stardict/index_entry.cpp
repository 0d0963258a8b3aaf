#include "platform/linux/stardict/index_entry.h"

#include <QString>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace lexiquill::stardict {

namespace {

/// The zero-terminated word at the start of `bytes`; nothing without an end mark within the limit.
std::optional<QByteArrayView> readWord(QByteArrayView bytes) {
    const auto range = static_cast<size_t>(std::min(bytes.size(), maxWordSize + 1));
    const void *end = range > 0 ? std::memchr(bytes.data(), 0, range) : nullptr;
    if (end == nullptr)
        return std::nullopt;
    return bytes.first(static_cast<const char *>(end) - bytes.data());
}

char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// False as soon as a byte is no ASCII character; `visit` has then seen the bytes before it.
template <typename Visit> bool foldAscii(QByteArrayView text, Visit visit) {
    for (const char c : text) {
        if (static_cast<signed char>(c) < 0)
            return false;
        visit(lowerAscii(c));
    }
    return true;
}

/// FNV-1a.
class Hash {
public:
    void add(char c) { m_value = (m_value ^ static_cast<unsigned char>(c)) * 16777619U; }
    quint32 value() const { return m_value; }

private:
    quint32 m_value = 2166136261U;
};

} // namespace

std::optional<IndexEntry> readIndexEntry(QByteArrayView bytes, int offsetBytes) {
    const auto word = readWord(bytes);
    const qsizetype numbers = word ? word->size() + 1 : 0;
    if (!word || bytes.size() - numbers < offsetBytes + 4)
        return std::nullopt;
    const char *at = bytes.data() + numbers;
    IndexEntry entry;
    entry.word = *word;
    entry.offset = offsetBytes == 8 ? qFromBigEndian<quint64>(at) : qFromBigEndian<quint32>(at);
    entry.size = qFromBigEndian<quint32>(at + offsetBytes);
    entry.length = numbers + offsetBytes + 4;
    return entry;
}

std::optional<SynonymEntry> readSynonymEntry(QByteArrayView bytes) {
    const auto word = readWord(bytes);
    if (!word || bytes.size() - word->size() - 1 < 4)
        return std::nullopt;
    return SynonymEntry{*word, qFromBigEndian<quint32>(bytes.data() + word->size() + 1), word->size() + 5};
}

QByteArray foldCase(QByteArrayView text) {
    QByteArray folded;
    folded.reserve(text.size());
    if (foldAscii(text, [&folded](char c) { folded.append(c); }))
        return folded;
    return QString::fromUtf8(text).toCaseFolded().toUtf8();
}

quint32 foldedHash(QByteArrayView text) {
    Hash hash;
    if (foldAscii(text, [&hash](char c) { hash.add(c); }))
        return hash.value();
    Hash unicodeHash;
    for (const char c : foldCase(text))
        unicodeHash.add(c);
    return unicodeHash.value();
}

} // namespace lexiquill::stardict
