#include "dictionaries/article/article_reader.h"

#include "dictionaries/article/definition_parser.h"
#include "dictionaries/article/markup.h"
#include "dictionaries/article/part_of_speech.h"
#include "dictionaries/article/phonetics.h"
#include "dictionaries/article/sense_numbers.h"
#include "dictionaries/article/senses.h"
#include "dictionaries/article/text_scan.h"

#include <algorithm>

namespace lexiquill::article {

namespace {

/// The text without a byte order mark at its start, and without control characters, which could control a
/// terminal. Line feeds and tabs stay.
QString readable(QString text) {
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    text.removeIf([](QChar c) { return c.category() == QChar::Other_Control && c != u'\n' && c != u'\t'; });
    return text;
}

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

bool saysAnything(QStringView text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.isLetterOrNumber() || c.isSurrogate(); });
}

/// The length of the headword and the blanks after it at the start of a line; 0 if the line does not start
/// with the headword as the title of the article.
qsizetype headwordLength(const QString &line, const QString &headword) {
    if (!line.startsWith(headword, Qt::CaseInsensitive))
        return 0;
    const QStringView rest = QStringView(line).sliced(headword.size());
    const QStringView next = rest.sliced(skipBlanks(rest, 0));
    if (next.isEmpty())
        return line.size();
    if (isAsciiLetter(rest[0]) || isHan(rest[0]))
        return 0;
    const bool opensArticle = next[0] == u'*' || leadingPhonetic(next, headword).length > 0 ||
                              (rest[0].isSpace() && labelAtStart(next, false));
    return opensArticle ? line.size() - next.size() : 0;
}

/// The lines of an article, without the headword and the phonetic at the start.
class ArticleLines {
public:
    explicit ArticleLines(const QString &headword) : m_headword(headword) {}

    void add(QString text) {
        // An example mark always starts a new line.
        text.replace(u'▸', QStringLiteral("\n▸"));
        bool isOpening = true;
        for (const QStringView raw : QStringView(text).tokenize(u'\n')) {
            QString line = raw.trimmed().toString();
            if (isOpening && !line.isEmpty())
                isOpening = trimOpening(line);
            if (!line.isEmpty())
                m_lines.append(line);
        }
    }

    void takePhonetic(QStringView text) {
        if (m_phonetic.isEmpty())
            m_phonetic = cleanPhonetic(text);
    }

    const QStringList &lines() const { return m_lines; }
    const QString &phonetic() const { return m_phonetic; }

private:
    /// Removes the headword and the phonetic from the start of a line. True if nothing is left, so that the
    /// article itself has not begun.
    bool trimOpening(QString &line) {
        line.remove(0, headwordLength(line, m_headword));
        const LeadingPhonetic leading = leadingPhonetic(line, m_headword);
        if (leading.length > 0) {
            takePhonetic(leading.phonetic);
            line = line.sliced(leading.length).trimmed();
        }
        return line.isEmpty();
    }

    QString m_headword;
    QStringList m_lines;
    QString m_phonetic;
};

PartOfSpeechGroup groupOf(const SenseGroup &group) {
    PartOfSpeechGroup result = PartOfSpeechGroup::named(group.part.pos, {});
    if (!group.part.chineseName.isEmpty())
        result.posChinese = group.part.chineseName;
    result.senses.reserve(group.senses.size());
    for (const Sense &sense : group.senses) {
        SenseItem item{
            .number = result.senses.size() + 1, .chineseMeaning = sense.meaning, .examples = sense.examples};
        if (!sense.contexts.isEmpty())
            item.context = sense.contexts.join(u'，');
        result.senses += item;
    }
    return result;
}

/// Collects the articles on one word.
class EntryBuilder {
public:
    explicit EntryBuilder(const QString &headword) : m_headword(headword) {}

    void add(const Article &article) {
        ArticleLines lines(m_headword);
        // A separate phonetic part is more reliable than a phonetic at the start of the text.
        for (const Part &part : article) {
            if (part.form == Form::Phonetic)
                lines.takePhonetic(readable(part.text));
        }
        for (const Part &part : article)
            addPart(part, lines);
        if (m_phonetic.isEmpty())
            m_phonetic = lines.phonetic();
        addGroups(readSenses(lines.lines()));
    }

    std::optional<DictionaryEntry> entry() const {
        const QString definition = m_definitions.join(u'\n');
        if (m_headword.trimmed().isEmpty() || !saysAnything(definition))
            return std::nullopt;
        DictionaryEntry entry{
            .headword = m_headword, .posGroups = groups(), .rawText = m_rawTexts.join(u'\n')};
        if (!m_phonetic.isEmpty())
            entry.phonetic = m_phonetic;
        if (entry.posGroups.isEmpty())
            entry.posGroups = groupsOfText(readable(definition).trimmed());
        return entry;
    }

private:
    void addPart(const Part &part, ArticleLines &lines) {
        const auto addMarkup = [&](MarkupKind kind) {
            const PlainArticle plain = readMarkup(part.text, kind, m_headword);
            lines.takePhonetic(readable(plain.phonetic));
            lines.add(readable(plain.text));
            addText(plain.rawText);
        };
        switch (part.form) {
        case Form::Text:
            lines.add(withLineBreaks(readable(part.text)));
            addText(part.text);
            break;
        case Form::Phonetic:
            m_rawTexts += part.text;
            break;
        case Form::Xdxf:
            addMarkup(MarkupKind::Xdxf);
            break;
        case Form::Html:
            addMarkup(MarkupKind::Html);
            break;
        case Form::Pango:
            addMarkup(MarkupKind::Pango);
            break;
        }
    }

    /// For a definition without structure.
    static QList<PartOfSpeechGroup> groupsOfText(const QString &text) {
        QList<PartOfSpeechGroup> groups = extractPOSGroups(text);
        groups.removeIf([](const PartOfSpeechGroup &group) { return group.senses.isEmpty(); });
        if (groups.isEmpty())
            groups +=
                PartOfSpeechGroup::named(QStringLiteral("释义"), {{.number = 1, .chineseMeaning = text}});
        return groups;
    }

    void addText(const QString &text) {
        m_rawTexts += text;
        m_definitions += text;
    }

    void addGroups(const QList<SenseGroup> &groups) {
        m_loose += groups.first().senses;
        for (const SenseGroup &group : groups.sliced(1)) {
            if (!m_groups.isEmpty() && m_groups.last().part == group.part)
                m_groups.last().senses += group.senses;
            else
                m_groups.append(group);
        }
    }

    QList<PartOfSpeechGroup> groups() const {
        QList<SenseGroup> groups = m_groups;
        if (groups.isEmpty() && !m_loose.isEmpty())
            groups.append({PartOfSpeech{.pos = QStringLiteral("释义")}, m_loose});
        else if (!groups.isEmpty())
            groups.first().senses += m_loose;
        QList<PartOfSpeechGroup> result;
        for (const SenseGroup &group : std::as_const(groups))
            result += groupOf(group);
        return result;
    }

    QString m_headword;
    QString m_phonetic;
    QList<SenseGroup> m_groups;
    QList<Sense> m_loose;
    QStringList m_rawTexts;
    QStringList m_definitions; ///< the same without the separate phonetics
};

} // namespace

std::optional<DictionaryEntry> readArticles(const QString &headword, const std::vector<Article> &articles) {
    EntryBuilder builder(headword);
    for (const Article &article : articles)
        builder.add(article);
    return builder.entry();
}

} // namespace lexiquill::article
