#include "dictionaries/article/plain_article.h"

#include "dictionaries/article/html_lines.h"
#include "dictionaries/article/html_text.h"
#include "dictionaries/article/markup.h"
#include "dictionaries/article/part_of_speech.h"
#include "dictionaries/article/sections.h"
#include "dictionaries/article/sense_numbers.h"
#include "dictionaries/article/text_scan.h"
#include "dictionaries/article/webster_text.h"
#include "dictionaries/article/wiki_text.h"
#include "dictionaries/article/wordnet_text.h"

#include <algorithm>

namespace lexiquill::article {

namespace {

/// Whether a "\n" between `last` and `after` is a line break.
bool isLineBreak(QChar last, QStringView after) {
    const QChar next = charAt(after, 0);
    if (last.isNull() || next.isNull() || after.startsWith(u"\\n") || QStringView(u"▸•¶").contains(next) ||
        labelAtStart(after, false) || SenseNumberFinder::atStart(after))
        return true;
    if (isHan(last) || QStringView(u".!?。！？…;；)）]】/").contains(last))
        return isAsciiLetter(next) || isHan(next) || next == u'*' || !closingBracket(next).isNull();
    return (isAsciiLetter(last) || last.isDigit()) && isHan(next);
}

/// Some converters write every line break as the two characters "\n". Other articles, which have real line
/// breaks or just one line, mean the characters themselves, for example in a path.
QString withLineBreaks(const QString &text) {
    const QStringView mark = u"\\n";
    if (text.contains(u'\n') || !text.contains(mark))
        return text;
    QString result;
    qsizetype start = 0;
    for (qsizetype at = text.indexOf(mark); at >= 0; at = text.indexOf(mark, start)) {
        const QStringView before = QStringView(text).sliced(start, at - start);
        const QChar last = before.isEmpty() ? charAt(result, result.size() - 1) : before.back();
        result += before;
        start = at + mark.size();
        // Enough to see what begins there, however long the article is.
        constexpr qsizetype glance = 64;
        const QStringView after = QStringView(text).sliced(start, std::min(glance, text.size() - start));
        const bool isBreak = last == u'\n' || isLineBreak(last, after);
        result += isBreak ? QStringView(u"\n") : mark;
    }
    return result += QStringView(text).sliced(start);
}

/// Places within a line where a title or an example in brackets begins a new line.
bool beginsLine(QStringView text, qsizetype at) {
    if (text[at] == u'▸')
        return true;
    constexpr qsizetype glance = 40;
    const QStringView rest = text.sliced(at, std::min(glance, text.size() - at));
    return at > 0 && text[at] == u'【' && (exampleMarkLength(rest) > 0 || sectionAtStart(rest));
}

QList<Line> linesOf(const QString &text) {
    QList<Line> lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && text[i] != u'\n' && !beginsLine(text, i))
            continue;
        lines.append({text.sliced(start, i - start)});
        start = i < text.size() && text[i] == u'\n' ? i + 1 : i;
    }
    return lines;
}

} // namespace

QString readable(QString text) {
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    text.removeIf([](QChar c) { return c.category() == QChar::Other_Control && c != u'\n' && c != u'\t'; });
    return text;
}

PlainArticle plainArticle(const Part &stored) {
    const Part part = withRealForm(stored);
    PlainArticle article;
    switch (part.form) {
    case Form::Phonetic:
        return {{}, part.text, part.text};
    case Form::Text:
        article = isWebsterText(part.text)   ? readWebster(part.text)
                  : isWordNetText(part.text) ? readWordNet(part.text)
                                             : PlainArticle{{{withLineBreaks(readable(part.text))}}, {}, {}};
        article.rawText = part.text;
        break;
    case Form::WordNet:
        article = part.text.trimmed().startsWith(u'<') ? readMarkup(part.text, MarkupKind::WordNet)
                                                       : readWordNet(part.text);
        break;
    case Form::MediaWiki:
        article = readWikiText(part.text);
        break;
    case Form::PowerWord:
        article = readMarkup(part.text, MarkupKind::PowerWord);
        break;
    case Form::Xdxf:
        article = readMarkup(part.text, MarkupKind::Xdxf);
        break;
    case Form::Html:
        article = readHtml(part.text);
        break;
    case Form::Pango:
        article = readMarkup(part.text, MarkupKind::Pango);
        break;
    }
    QList<Line> lines;
    for (const Line &line : std::as_const(article.lines)) {
        if (line.role == LineRole::Plain)
            lines += linesOf(readable(line.text));
        else
            lines.append({readable(line.text), line.role});
    }
    article.lines = lines;
    article.phonetic = readable(article.phonetic);
    return article;
}

} // namespace lexiquill::article
