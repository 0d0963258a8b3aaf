#include "dictionaries/article/phrases.h"

#include "dictionaries/article/gloss.h"
#include "dictionaries/article/sections.h"
#include "dictionaries/article/sense_numbers.h"
#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <algorithm>

namespace lexiquill::article {

namespace {

/// The line without ornaments and a number at its start.
QStringView withoutOrnaments(QStringView line) {
    line = withoutTags(line);
    while (!line.isEmpty() && (line[0].isSpace() || QStringView(u"■□◆◇●○·•▸►▶♦*>-–—→").contains(line[0])))
        line = line.sliced(1);
    if (const auto number = SenseNumberFinder::atStart(line))
        line = line.sliced(number->end).trimmed();
    return line.sliced(SenseNumberFinder::letterLength(line));
}

/// The text without separators such as ":" at its ends.
QStringView withoutSeparators(QStringView text) {
    const auto isSeparator = [](QChar c) {
        return c.isSpace() || QStringView(u":：=|,，;；-–—→").contains(c);
    };
    while (!text.isEmpty() && isSeparator(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isSeparator(text.back()))
        text.chop(1);
    return withoutTornMarks(text);
}

/// The meanings of a phrase without their numbers.
QString withoutNumbers(QStringView meaning) {
    SenseNumberFinder finder;
    QStringList pieces;
    qsizetype start = 0;
    const auto take = [&](qsizetype end) {
        const QStringView piece = withoutSeparators(meaning.sliced(start, end - start));
        if (!piece.isEmpty())
            pieces += piece.toString();
    };
    for (const SenseNumber &number : finder.find(meaning, false)) {
        take(number.start);
        start = number.end;
    }
    take(meaning.size());
    return pieces.join(u'；');
}

bool isSentence(QStringView english) {
    return latinWordCount(english) > 2 && english[0].isUpper() && endsSentence(english.back());
}

/// Where the next phrase of a line begins, as in "in fact 事实上 in short 总之"; 0 if there is none.
qsizetype nextPhrase(QStringView text) {
    const qsizetype han = chineseStart(text);
    if (han == 0)
        return 0;
    for (qsizetype at = han + 1; at < text.size(); ++at) {
        if (!isAsciiLetter(text[at]) || !text[at - 1].isSpace())
            continue;
        qsizetype before = at - 1;
        while (before > 0 && text[before].isSpace())
            --before;
        const QStringView rest = text.sliced(at);
        const qsizetype end = chineseStart(rest);
        constexpr int fewestWords = 2;
        const bool isPhrase = (isHan(text[before]) || text[before] == u'。' || text[before] == u')') &&
                              !text[at].isUpper() && end < rest.size() &&
                              latinWordCount(rest.first(end)) >= fewestWords;
        if (isPhrase)
            return at;
        at += end;
    }
    return 0;
}

} // namespace

void PhraseCollector::add(QStringView line) {
    const bool marked = exampleMarkLength(line) > 0 && !line.startsWith(u'•') && !line.startsWith(u'*');
    line = line.sliced(marked ? exampleMarkLength(line) : 0);
    QStringView text = withoutOrnaments(line);
    if (text.isEmpty())
        return;
    const SentencePair pair = sentencePair(text);
    if (!m_phrases.isEmpty() && (marked || isSentence(pair.english.isEmpty() ? text : pair.english))) {
        m_phrases.last().examples.append(text.toString());
        return;
    }
    for (qsizetype next = nextPhrase(text); next > 0; next = nextPhrase(text)) {
        addPiece(text.first(next));
        text = text.sliced(next);
    }
    const QStringList pieces = splitOutsideBrackets(text.toString(), u";；");
    const bool several = std::all_of(pieces.begin(), pieces.end(), [](const QString &piece) {
        const SentencePair both = sentencePair(piece);
        return !both.english.isEmpty() && !both.chinese.isEmpty();
    });
    if (!several || pieces.size() < 2) {
        addPiece(text);
        return;
    }
    for (const QString &piece : pieces)
        addPiece(piece);
}

void PhraseCollector::addPhrase(QStringView phrase) {
    QStringView text = withoutSeparators(withoutOrnaments(phrase));
    if (text.endsWith(u"(idm)"))
        text = text.chopped(5).trimmed();
    if (!text.isEmpty())
        m_phrases.append({{text.toString()}, {}, {}});
}

void PhraseCollector::addPair(QStringView phrase, QStringView meaning) {
    const QString text = withoutNumbers(meaning);
    if (text.isEmpty())
        return;
    addPhrase(phrase);
    if (!m_phrases.isEmpty())
        m_phrases.last().meaning = text;
}

void PhraseCollector::addMeaning(QStringView meaning) {
    if (m_phrases.isEmpty())
        return;
    QString &known = m_phrases.last().meaning;
    known += known.isEmpty() ? meaning.toString() : QStringLiteral("; ") + meaning.toString();
}

void PhraseCollector::addPiece(QStringView piece) {
    const SentencePair pair = sentencePair(piece);
    const QString meaning = withoutNumbers(pair.chinese);
    if (pair.chinese.isEmpty()) {
        const qsizetype colon = piece.indexOf(u':');
        addPhrase(colon > 0 ? piece.first(colon) : piece);
        if (colon > 0 && !m_phrases.isEmpty())
            m_phrases.last().meaning = withoutNumbers(piece.sliced(colon + 1));
        return;
    }
    if (pair.english.isEmpty()) {
        if (m_phrases.isEmpty())
            return;
        Sense &last = m_phrases.last();
        if (last.meaning.isEmpty())
            last.meaning = meaning;
        else if (last.examples.isEmpty())
            last.meaning += u'；' + meaning;
        else if (!containsHan(last.examples.last()))
            last.examples.last() += u' ' + piece.toString();
        return;
    }
    addPhrase(pair.english);
    if (!m_phrases.isEmpty())
        m_phrases.last().meaning = meaning;
}

QList<Sense> PhraseCollector::phrases() const {
    QList<Sense> explained = m_phrases;
    explained.removeIf([](const Sense &phrase) { return phrase.meaning.isEmpty(); });
    return explained;
}

void ExampleCollector::add(QStringView line) {
    const QStringView text = withoutOrnaments(line.sliced(exampleMarkLength(line)));
    if (text.isEmpty())
        return;
    const SentencePair pair = sentencePair(text);
    const bool hasLast = !m_examples.isEmpty();
    if (pair.english.isEmpty()) {
        if (hasLast && m_examples.last().cn.isEmpty())
            m_examples.last().cn = text.toString();
        return;
    }
    if (hasLast && pair.chinese.isEmpty() && m_examples.last().en.isEmpty())
        m_examples.last().en = text.toString();
    else
        m_examples.append({pair.english.toString(), pair.chinese.toString()});
}

} // namespace lexiquill::article
