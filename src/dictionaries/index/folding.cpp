#include "dictionaries/index/folding.h"

#include <QString>

namespace lexiquill {

namespace {

char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// Calls `visit` with every byte in lower case. Stops and returns false at the first byte that is not ASCII.
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

} // namespace lexiquill
