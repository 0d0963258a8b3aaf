#include "dictionaries/mdict/style_sheet.h"

#include <QStringList>

namespace lexiquill::mdict {

namespace {

/// A number between grave accents at the start of a text; length 0 if there is none.
struct Mark {
    quint32 number = 0;
    qsizetype length = 0;
};

Mark readMark(QStringView text) {
    constexpr qsizetype mostDigits = 6;
    Mark mark;
    qsizetype at = 1;
    for (; at < text.size() && at <= mostDigits && text[at] >= u'0' && text[at] <= u'9'; ++at)
        mark.number = mark.number * 10 + (text[at].unicode() - u'0');
    if (at > 1 && at < text.size() && text[at] == u'`')
        mark.length = at + 1;
    return mark;
}

} // namespace

StyleSheet::StyleSheet(const QString &text) {
    QStringList lines = text.split(u'\n');
    for (QString &line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
    }
    for (qsizetype i = 0; i < lines.size();) {
        bool isNumber = false;
        const quint32 number = lines[i].trimmed().toUInt(&isNumber);
        ++i;
        if (!isNumber)
            continue;
        m_styles.insert(number, {.before = lines.value(i), .after = lines.value(i + 1)});
        i += 2;
    }
}

std::optional<QString> StyleSheet::applied(const QString &article, qsizetype limit) const {
    QString text;
    text.reserve(article.size());
    const QStringView rest(article);
    const QString *after = nullptr;
    qsizetype copied = 0;
    for (qsizetype at = article.indexOf(u'`'); at >= 0; at = article.indexOf(u'`', at)) {
        const Mark mark = readMark(rest.sliced(at));
        const auto style = mark.length > 0 ? m_styles.constFind(mark.number) : m_styles.constEnd();
        if (style == m_styles.constEnd()) {
            ++at;
            continue;
        }
        text += rest.sliced(copied, at - copied);
        if (after != nullptr)
            text += *after;
        text += style->before;
        after = &style->after;
        at += mark.length;
        copied = at;
        if (text.size() > limit)
            return std::nullopt;
    }
    text += rest.sliced(copied);
    if (after != nullptr)
        text += *after;
    return text.size() > limit ? std::nullopt : std::optional(text);
}

} // namespace lexiquill::mdict
