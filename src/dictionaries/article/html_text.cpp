#include "dictionaries/article/html_text.h"

#include "dictionaries/article/entities.h"
#include "dictionaries/article/text_scan.h"

#include <QSet>

#include <algorithm>

namespace lexiquill::article {

namespace {

bool isLayoutElement(const QString &name) {
    static const QSet<QString> names{
        QStringLiteral("a"),      QStringLiteral("b"),    QStringLiteral("big"),  QStringLiteral("center"),
        QStringLiteral("div"),    QStringLiteral("em"),   QStringLiteral("font"), QStringLiteral("h1"),
        QStringLiteral("h2"),     QStringLiteral("h3"),   QStringLiteral("h4"),   QStringLiteral("i"),
        QStringLiteral("li"),     QStringLiteral("ol"),   QStringLiteral("p"),    QStringLiteral("small"),
        QStringLiteral("span"),   QStringLiteral("sub"),  QStringLiteral("sup"),  QStringLiteral("table"),
        QStringLiteral("strong"), QStringLiteral("td"),   QStringLiteral("tr"),   QStringLiteral("u"),
        QStringLiteral("ul"),     QStringLiteral("dl"),   QStringLiteral("dd"),   QStringLiteral("dt"),
        QStringLiteral("html"),   QStringLiteral("body"), QStringLiteral("h5"),   QStringLiteral("h6"),
    };
    return names.contains(name);
}

/// Whether what follows the name of an element ends its tag: ">", "/>", or attributes with values.
bool endsTag(QStringView rest) {
    constexpr qsizetype longest = 300;
    rest = rest.first(std::min(longest, rest.size()));
    const qsizetype close = rest.indexOf(u'>');
    if (close < 0)
        return false;
    QStringView attributes = rest.first(close).trimmed();
    if (attributes.endsWith(u'/'))
        attributes = attributes.chopped(1).trimmed();
    return attributes.isEmpty() || (rest[0].isSpace() && attributes.contains(u'=') &&
                                    isAsciiLetter(attributes[0]) && !attributes.contains(u'<'));
}

/// Whether a text has a line break, or an element with its closing tag.
bool hasElements(const QString &text) {
    QSet<QString> opened;
    constexpr qsizetype longestName = 8;
    int marks = 0;
    constexpr int mostMarks = 2000;
    for (qsizetype at = text.indexOf(u'<'); at >= 0 && marks < mostMarks;
         ++marks, at = text.indexOf(u'<', at + 1)) {
        const bool closing = charAt(text, at + 1) == u'/';
        const qsizetype start = at + (closing ? 2 : 1);
        qsizetype end = start;
        while (end - start < longestName && end < text.size() &&
               (isAsciiLetter(text[end]) || text[end].isDigit()))
            ++end;
        const QString name = text.sliced(std::min(start, text.size()), end - start).toLower();
        if (name.isEmpty() || !endsTag(QStringView(text).sliced(end)))
            continue;
        if (name == QStringLiteral("br") || (closing && opened.contains(name)))
            return true;
        if (!closing && isLayoutElement(name))
            opened.insert(name);
    }
    return false;
}

QString withoutReferences(const QString &text) {
    QString result;
    qsizetype start = 0;
    for (qsizetype at = text.indexOf(u'&'); at >= 0; at = text.indexOf(u'&', at + 1)) {
        const Entity entity = readEntity(QStringView(text).sliced(at));
        if (entity.length == 0)
            continue;
        result += QStringView(text).sliced(start, at - start);
        result += entity.text;
        start = at + entity.length;
    }
    return result += QStringView(text).sliced(start);
}

} // namespace

Part withRealForm(const Part &part) {
    if (part.form != Form::Text)
        return part;
    if (part.text.contains(u'<') && hasElements(part.text)) {
        QString html = part.text;
        html.remove(u'\r');
        // Some converters write a line break as these two characters.
        if (!html.contains(u'\n'))
            html.replace(QStringLiteral("\\n"), QStringLiteral("\n"));
        html.replace(u'\n', QStringLiteral("<br>"));
        return {Form::Html, html};
    }
    if (part.text.contains(u'&') && part.text.contains(u';'))
        return {Form::Text, withoutReferences(part.text)};
    return part;
}

} // namespace lexiquill::article
