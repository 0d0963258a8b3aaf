#include "dictionaries/article/senses.h"

#include "dictionaries/article/gloss.h"
#include "dictionaries/article/part_of_speech.h"
#include "dictionaries/article/sense_numbers.h"
#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <algorithm>
#include <iterator>

namespace lexiquill::article {

namespace {

/// A piece of an article between two boundaries: line breaks, numbers, parts of speech.
struct Chunk {
    enum class Kind { Text, Numbered, Example };
    Kind kind;
    QString text;
};

/// The chunks under one label, not yet divided into senses.
struct Part {
    QList<LabelledPart> labels;
    QList<Chunk> chunks;
};

/// The text of a line that is marked as an example; a null string for other lines.
QString markedExample(const QString &line) {
    static constexpr QStringView marks[] = {u"▸",    u"•",   u"¶",    u"例如：", u"例如:",
                                            u"例：", u"例:", u"e.g.", u"E.g."};
    QStringView rest = line;
    bool found = true;
    while (found) {
        found = std::any_of(std::begin(marks), std::end(marks), [&rest](QStringView mark) {
            if (!rest.startsWith(mark))
                return false;
            rest = rest.sliced(mark.size()).trimmed();
            return true;
        });
    }
    if (rest.size() == line.size())
        return {};
    return rest.isEmpty() ? QStringLiteral("") : rest.toString();
}

bool endsSentence(QChar c) {
    return QStringView(u".!?。！？…").contains(c);
}

/// True for a line that begins with an English sentence, not with a short phrase that is explained.
bool isEnglishSentence(QStringView line) {
    if (!line.isEmpty() && QStringView(u"\"“'‘").contains(line.front()))
        line = line.sliced(1);
    if (!isAsciiLetter(charAt(line, 0)))
        return false;
    const qsizetype han = std::find_if(line.begin(), line.end(), isHan) - line.begin();
    QStringView english = line.first(han).trimmed();
    int words = 0;
    bool inWord = false;
    for (const QChar c : english) {
        const bool letter = isAsciiLetter(c);
        words += letter && !inWord ? 1 : 0;
        inWord = letter || (inWord && (c == u'\'' || c == u'’' || c == u'-'));
    }
    while (!english.isEmpty() && QStringView(u"\"”'’([（“").contains(english.back()))
        english.chop(1);
    const bool sentence = english.front().isUpper() || endsSentence(english.back());
    constexpr int fewestWords = 3;
    return words > fewestWords || (words == fewestWords && sentence);
}

/// True for the Chinese half of an example whose English half is on the line before.
bool isTranslation(const QString &line) {
    QStringView text = line;
    while (!text.isEmpty() && QStringView(u"”’》」）").contains(text.back()))
        text.chop(1);
    return !text.isEmpty() && QStringView(u"。！？…").contains(text.back()) &&
           isHan(charAt(line, skipBlanks(line, 0)));
}

/// Length of a remark such as "[C]" or "(pl.)" and the blanks after it at the start of a line; 0 without one.
qsizetype grammarRemarkLength(QStringView line) {
    constexpr qsizetype longest = 16;
    const QChar open = charAt(line, 0);
    if (open != u'[' && open != u'(')
        return 0;
    const QStringView front = line.first(std::min(longest, line.size()));
    const qsizetype close = front.indexOf(closingBracket(open));
    const bool isRemark = close > 1 && isAsciiLetter(front[1]) && !containsHan(front.first(close));
    return isRemark ? skipBlanks(line, close + 1) : 0;
}

/// Divides the lines of one article into parts and chunks.
class LineReader {
public:
    explicit LineReader(const QStringList &lines) : m_lines(lines) {
        m_hasChinese =
            std::any_of(lines.begin(), lines.end(), [](const QString &line) { return containsHan(line); });
        m_lettersCount = std::any_of(lines.begin(), lines.end(), [](const QString &line) {
            return line.startsWith(QStringLiteral("b.")) || line.startsWith(QStringLiteral("b)"));
        });
        m_bareCount = std::any_of(lines.begin(), lines.end(), [](const QString &line) {
            return line.startsWith(u'2') && charAt(line, 1).isSpace();
        });
    }

    QList<Part> read() {
        m_parts.append(Part());
        for (const QString &line : m_lines)
            readLine(line);
        return std::move(m_parts);
    }

private:
    QList<Chunk> &chunks() { return m_parts.last().chunks; }

    void readLine(const QString &line) {
        if (takeLabel(line))
            return;
        const QString example = markedExample(line);
        if (!example.isNull()) {
            if (!example.isEmpty())
                addExample(example);
            return;
        }
        if (!chunks().isEmpty() && chunks().last().kind == Chunk::Kind::Example && isTranslation(line) &&
            !containsHan(chunks().last().text)) {
            chunks().last().text += u' ' + line;
            return;
        }
        if (m_hasChinese && hasSense() && isEnglishSentence(line)) {
            addExample(line);
            return;
        }
        readText(line);
    }

    bool hasSense() { return !chunks().isEmpty() || m_parts.size() > 1; }

    /// An example without a sense before it is kept as a sense.
    void addExample(const QString &text) {
        const bool attached = !chunks().isEmpty();
        chunks().append({attached ? Chunk::Kind::Example : Chunk::Kind::Text, text});
    }

    /// Reads a line that begins with a part of speech, possibly after a number. False for other lines.
    bool takeLabel(const QString &line) {
        const bool numbered = !line.isEmpty() && (line[0].isDigit() || line[0] == u'(');
        qsizetype at = 0;
        if (numbered && !labelAtStart(line, m_lettersCount)) {
            const auto number = SenseNumberFinder::atStart(line);
            if (!number)
                return false;
            at = skipBlanks(line, number->end);
        }
        const auto label = labelAtStart(QStringView(line).sliced(at), m_lettersCount);
        if (!label)
            return false;
        // In an entry on a term of grammar, "1. 形容词" is a sense.
        const bool isSense =
            at > 0 && at + label->length >= line.size() && isHan(line[at]) && m_parts.size() > 1;
        if (isSense)
            return false;
        begin(*label);
        readText(line.sliced(at + label->length));
        return true;
    }

    void begin(const LabelMatch &label) {
        Part part;
        part.labels = label.parts;
        m_parts.append(part);
        m_numbers.restart();
    }

    /// Divides text at parts of speech, then at sense numbers.
    void readText(const QString &text) {
        const QList<int> depths = bracketDepths(text);
        qsizetype start = 0;
        for (qsizetype i = 1; i < text.size(); ++i) {
            if (!isAsciiLetter(text[i]) || isAsciiLetter(text[i - 1]) || depths[i] > 0)
                continue;
            const auto label = labelInside(text, i);
            if (!label)
                continue;
            readNumbered(text.sliced(start, i - start));
            begin(*label);
            start = i + label->length;
            i = start - 1;
        }
        readNumbered(text.sliced(start));
    }

    void readNumbered(const QString &line) {
        // A grammar remark before the first number ("n. [C] 1 …") belongs to the sense of that number.
        const qsizetype remark = grammarRemarkLength(line);
        const QString text = line.sliced(remark);
        const QList<SenseNumber> numbers = m_numbers.find(text, m_bareCount);
        if (numbers.isEmpty()) {
            add(Chunk::Kind::Text, line);
            return;
        }
        qsizetype start = 0;
        Chunk::Kind kind = Chunk::Kind::Text;
        QString front = line.first(remark);
        for (const SenseNumber &number : numbers) {
            if (number.start > start) {
                add(kind, front + text.sliced(start, number.start - start));
                front.clear();
            }
            start = number.end;
            kind = Chunk::Kind::Numbered;
        }
        add(kind, front + text.sliced(start));
    }

    void add(Chunk::Kind kind, const QString &text) {
        const QString trimmed = text.trimmed();
        if (!trimmed.isEmpty())
            chunks().append({kind, trimmed});
    }

    const QStringList &m_lines;
    QList<Part> m_parts;
    SenseNumberFinder m_numbers;
    bool m_hasChinese = false;
    bool m_lettersCount = false;
    bool m_bareCount = false;
};

/// Appends the senses of a chunk. A numbered chunk is one sense.
void appendSenses(QList<Sense> &senses, const Chunk &chunk, bool numbered) {
    if (!numbered) {
        senses += splitGlosses(chunk.text);
        return;
    }
    const Sense sense = senseFrom(chunk.text);
    if (!sense.meaning.isEmpty())
        senses.append(sense);
}

QList<Sense> sensesOf(const QList<Chunk> &chunks, bool hasChinese) {
    const bool numbered = std::any_of(chunks.begin(), chunks.end(),
                                      [](const Chunk &chunk) { return chunk.kind == Chunk::Kind::Numbered; });
    QList<Sense> senses;
    for (const Chunk &chunk : chunks) {
        if (chunk.kind == Chunk::Kind::Example && !senses.isEmpty()) {
            senses.last().examples.append(chunk.text);
        } else if (numbered && !hasChinese && chunk.kind == Chunk::Kind::Text && !senses.isEmpty()) {
            // English dictionaries break long definitions into several lines.
            senses.last().meaning += u' ' + chunk.text;
        } else {
            appendSenses(senses, chunk, numbered);
        }
    }
    return senses;
}

} // namespace

QList<SenseGroup> readSenses(const QStringList &lines) {
    const bool hasChinese =
        std::any_of(lines.begin(), lines.end(), [](const QString &line) { return containsHan(line); });
    QList<SenseGroup> groups{SenseGroup()};
    for (const Part &part : LineReader(lines).read()) {
        const QList<Sense> senses = sensesOf(part.chunks, hasChinese);
        if (part.labels.isEmpty())
            groups.first().senses += senses;
        for (const LabelledPart &label : part.labels) {
            if (senses.isEmpty())
                continue;
            if (groups.size() == 1 || groups.last().part != label.part)
                groups.append({label.part, {}});
            for (Sense sense : senses) {
                if (!label.context.isEmpty())
                    sense.contexts.prepend(label.context);
                groups.last().senses.append(sense);
            }
        }
    }
    return groups;
}

} // namespace lexiquill::article
