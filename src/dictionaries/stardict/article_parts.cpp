#include "dictionaries/stardict/article_parts.h"

#include <QtEndian>

#include <optional>

namespace lexiquill::stardict {

namespace {

/// No value for types that are not text, such as pictures, or whose format is not supported.
std::optional<article::Form> formOf(char type) {
    switch (type) {
    case 'm':
    case 'l':
        return article::Form::Text;
    case 't':
    case 'y':
        return article::Form::Phonetic;
    case 'x':
        return article::Form::Xdxf;
    case 'h':
        return article::Form::Html;
    case 'g':
        return article::Form::Pango;
    case 'k':
        return article::Form::PowerWord;
    case 'w':
        return article::Form::MediaWiki;
    case 'n':
        return article::Form::WordNet;
    default:
        return std::nullopt;
    }
}

/// Removes a part from the start of `rest`. Parts with an upper-case type begin with their size, the others
/// end with a zero byte; the last part of a known sequence has neither.
std::optional<QByteArrayView> takePart(QByteArrayView &rest, char type, bool isLast) {
    const bool isSized = type >= 'A' && type <= 'Z';
    if (isSized && !isLast) {
        if (rest.size() < 4)
            return std::nullopt;
        const quint32 size = qFromBigEndian<quint32>(rest.data());
        rest = rest.sliced(4);
        if (size > static_cast<quint64>(rest.size()))
            return std::nullopt;
        const QByteArrayView part = rest.first(size);
        rest = rest.sliced(size);
        return part;
    }
    const qsizetype end = isSized ? -1 : rest.indexOf('\0');
    const QByteArrayView part = end < 0 ? rest : rest.first(end);
    rest = end < 0 ? QByteArrayView() : rest.sliced(end + 1);
    return part;
}

} // namespace

article::Article splitArticle(QByteArrayView article, const QByteArray &typeSequence) {
    article::Article parts;
    const bool hasTypes = !typeSequence.isEmpty();
    for (qsizetype i = 0; hasTypes ? i < typeSequence.size() : !article.isEmpty(); ++i) {
        const char type = hasTypes ? typeSequence[i] : article[0];
        if (!hasTypes)
            article = article.sliced(1);
        const auto bytes = takePart(article, type, hasTypes && i + 1 == typeSequence.size());
        if (!bytes)
            break;
        if (const auto form = formOf(type))
            parts.push_back({*form, QString::fromUtf8(*bytes)});
    }
    return parts;
}

} // namespace lexiquill::stardict
