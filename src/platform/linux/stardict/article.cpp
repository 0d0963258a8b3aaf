#include "platform/linux/stardict/article.h"

#include <QtEndian>

namespace lexiquill::stardict {

namespace {

/// Takes a part off the front of `rest`. Types in upper case carry their size, the others end with a zero
/// byte; the last part of a known sequence has neither.
bool takeField(QByteArrayView &rest, char type, bool last, std::vector<Field> &fields) {
    const bool sized = type >= 'A' && type <= 'Z';
    if (sized && !last) {
        if (rest.size() < 4)
            return false;
        const quint32 size = qFromBigEndian<quint32>(rest.data());
        rest = rest.sliced(4);
        if (size > static_cast<quint64>(rest.size()))
            return false;
        fields.push_back({type, rest.first(size)});
        rest = rest.sliced(size);
        return true;
    }
    const qsizetype end = sized ? -1 : rest.indexOf('\0');
    fields.push_back({type, end < 0 ? rest : rest.first(end)});
    rest = end < 0 ? QByteArrayView() : rest.sliced(end + 1);
    return true;
}

} // namespace

std::vector<Field> splitArticle(QByteArrayView article, const QByteArray &typeSequence) {
    std::vector<Field> fields;
    if (!typeSequence.isEmpty()) {
        for (qsizetype i = 0; i < typeSequence.size(); ++i) {
            if (!takeField(article, typeSequence[i], i + 1 == typeSequence.size(), fields))
                break;
        }
        return fields;
    }
    while (!article.isEmpty()) {
        const char type = article[0];
        article = article.sliced(1);
        if (!takeField(article, type, false, fields))
            break;
    }
    return fields;
}

} // namespace lexiquill::stardict
