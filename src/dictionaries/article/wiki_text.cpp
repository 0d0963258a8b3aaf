#include "dictionaries/article/wiki_text.h"

#include "dictionaries/article/markup.h"
#include "dictionaries/article/text_scan.h"

#include <algorithm>
#include <vector>

namespace lexiquill::article {

namespace {

struct Range {
    qsizetype start;
    qsizetype end;
};

/// The outermost templates and tables ("{{…}}", "{|…|}") that are closed.
std::vector<Range> templatesIn(QStringView text) {
    std::vector<Range> found;
    std::vector<qsizetype> open;
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        const bool opens = text[i] == u'{' && (text[i + 1] == u'{' || text[i + 1] == u'|');
        const bool closes = text[i + 1] == u'}' && (text[i] == u'}' || text[i] == u'|');
        if (opens) {
            open.push_back(i++);
        } else if (closes && !open.empty()) {
            const qsizetype start = open.back();
            open.pop_back();
            while (!found.empty() && found.back().start > start)
                found.pop_back();
            found.push_back({start, i + 2});
            ++i;
        }
    }
    return found;
}

/// The text without what does not belong to the article's words.
QString withoutTemplates(QStringView text, QString &phonetic) {
    QString plain;
    qsizetype start = 0;
    for (const Range &range : templatesIn(text)) {
        plain += text.sliced(start, range.start - start);
        start = range.end;
        const QStringView inside = text.sliced(range.start, range.end - range.start);
        const qsizetype bar = inside.indexOf(u"|/");
        if (phonetic.isEmpty() && inside.startsWith(u"{{IPA", Qt::CaseInsensitive) && bar > 0)
            phonetic = inside.sliced(bar + 1).chopped(2).toString().section(u'|', 0, 0);
    }
    return plain += text.sliced(start);
}

/// The words of a link: "[[page|words]]" or "[address words]". Moves `at` behind it; false for other
/// brackets.
bool readLink(QStringView line, qsizetype &at, QString &words) {
    const bool isPage = charAt(line, at + 1) == u'[';
    const qsizetype start = at + (isPage ? 2 : 1);
    constexpr qsizetype longest = 500;
    const QStringView front = line.sliced(start, std::min(longest, line.size() - start));
    const qsizetype close = front.indexOf(isPage ? QStringView(u"]]") : QStringView(u"]"));
    if (close < 0)
        return false;
    const QStringView inside = front.first(close);
    if (isPage) {
        const bool isFile = inside.startsWith(u"File:", Qt::CaseInsensitive) ||
                            inside.startsWith(u"Image:", Qt::CaseInsensitive) ||
                            inside.startsWith(u"Category:", Qt::CaseInsensitive);
        words = isFile ? QString() : inside.sliced(inside.lastIndexOf(u'|') + 1).toString();
        at = start + close + 2;
        return true;
    }
    if (!inside.contains(u"://"))
        return false;
    const qsizetype blank = inside.indexOf(u' ');
    words = blank < 0 ? QString() : inside.sliced(blank + 1).toString();
    at = start + close + 1;
    return true;
}

QString plainLine(QStringView line) {
    QString plain;
    QString words;
    for (qsizetype i = 0; i < line.size();) {
        if (line[i] == u'[' && readLink(line, i, words)) {
            plain += words;
            continue;
        }
        qsizetype quotes = i;
        while (quotes < line.size() && line[quotes] == u'\'')
            ++quotes;
        if (quotes - i >= 2) {
            i = quotes;
            continue;
        }
        plain += line[i++];
    }
    return plain.trimmed();
}

} // namespace

PlainArticle readWikiText(const QString &text) {
    PlainArticle result;
    const QString words = readMarkup(withoutTemplates(text, result.phonetic), MarkupKind::Pango).rawText;
    for (QStringView line : QStringView(words).tokenize(u'\n')) {
        line = line.trimmed();
        qsizetype mark = 0;
        while (mark < line.size() && QStringView(u"#*:;=").contains(line[mark]))
            ++mark;
        const QStringView marks = line.first(mark);
        QStringView rest = line.sliced(mark);
        const bool isHeading = marks.startsWith(u"==");
        while (isHeading && rest.endsWith(u'='))
            rest.chop(1);
        const QString plain = plainLine(rest);
        if (plain.isEmpty()) {
            if (line.isEmpty() && !result.rawText.isEmpty())
                result.rawText += u'\n';
            continue;
        }
        const bool isItem = marks.contains(u'#');
        const bool isExample = isItem && (marks.endsWith(u':') || marks.endsWith(u'*'));
        const LineRole role = isHeading   ? LineRole::Heading
                              : isExample ? LineRole::Example
                              : isItem    ? LineRole::Item
                                          : LineRole::Plain;
        result.lines.append({plain, role});
        const bool isList = !isHeading && !isExample && (isItem || marks.contains(u'*'));
        result.rawText += (isList ? QStringLiteral("• ") : QString()) + plain + u'\n';
    }
    result.rawText = result.rawText.trimmed();
    return result;
}

} // namespace lexiquill::article
