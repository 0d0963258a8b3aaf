#include "dictionaries/article/sense_numbers.h"

#include "dictionaries/article/text_scan.h"

#include <algorithm>
#include <iterator>

namespace lexiquill::article {

namespace {

/// The value of a number of one or two ASCII digits at `at`; 0 when there is none. Moves `at` to the end of
/// the number.
int smallNumber(QStringView line, qsizetype &at) {
    const qsizetype start = at;
    int value = 0;
    while (at < line.size() && line[at] >= u'0' && line[at] <= u'9') {
        if (at - start == 2)
            return 0;
        value = value * 10 + line[at].digitValue();
        ++at;
    }
    return value;
}

/// The value of a number that is one character: ①, ⑴ or ⒈.
int enclosedNumber(QChar c) {
    const char16_t code = c.unicode();
    return code >= u'①' && code <= u'⒛' ? (code - u'①') % 20 + 1 : 0;
}

} // namespace

QList<SenseNumberFinder::Candidate> SenseNumberFinder::candidates(QStringView line) {
    QList<Candidate> found;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (const int number = enclosedNumber(line[i])) {
            found.append({{i, i + 1, number}, number, Enclosed});
            continue;
        }
        const bool parenthesis = line[i] == u'(' || line[i] == u'（';
        const QChar previous = charAt(line, i - 1);
        const bool free =
            !isAsciiLetter(previous) && !previous.isDigit() && previous != u'.' && previous != u'-';
        if (!parenthesis && (!free || line[i] < u'0' || line[i] > u'9'))
            continue;
        qsizetype end = parenthesis ? i + 1 : i;
        const int number = smallNumber(line, end);
        const QChar mark = charAt(line, end);
        const QChar after = charAt(line, end + 1);
        if (number == 0)
            continue;
        if (parenthesis) {
            if (mark == u')' || mark == u'）')
                found.append({{i, end + 1, number}, number, Parenthesized});
        } else if (mark == u')' || mark == u'）') {
            found.append({{i, end + 1, number}, number, Bracketed});
        } else if (mark == u'、' && !charAt(line, skipBlanks(line, end + 1)).isDigit()) {
            found.append({{i, end + 1, number}, number, Listed});
        } else if ((mark == u'.' || mark == u'．') && !after.isDigit()) {
            found.append({{i, end + 1, number}, number, Pointed});
        } else if ((mark == u':' || mark == u'：') && !after.isDigit()) {
            found.append({{i, end + 1, number}, number, Colon});
        } else if (mark.isSpace() && after == u':') {
            found.append({{i, end + 2, number}, number, Colon});
        } else if (mark.isSpace()) {
            found.append({{i, end + 1, number}, number, Bare});
        }
        if (!found.isEmpty() && found.last().place.start == i)
            i = found.last().place.end - 1;
    }
    return found;
}

bool SenseNumberFinder::counts(const Candidate &candidate, QStringView line, bool atStart, bool bareAllowed,
                               bool secondFollows) const {
    const int previousNumber = candidate.number - 1;
    // Some dictionaries continue the numbers after the next part of speech.
    const bool continues =
        previousNumber > 0 && (m_last[candidate.style] == previousNumber ||
                               (atStart && m_lastBefore[candidate.style] == previousNumber));
    const bool begins = candidate.number == 1;
    if (atStart) {
        const bool isMarked = charAt(line, skipBlanks(line, candidate.place.end)) == u'[';
        return continues || (begins && (candidate.style != Bare || secondFollows || bareAllowed || isMarked));
    }
    const QChar previous = charAt(line, candidate.place.start - 1);
    if (candidate.style == Bare) {
        const QChar last = charAt(line, candidate.place.start - 2);
        const QChar next = charAt(line, skipBlanks(line, candidate.place.end));
        return continues && (isHan(last) || last.isPunct()) &&
               (isHan(next) || !closingBracket(next).isNull() || next.isLower() || next == u'~');
    }
    return continues || (begins && secondFollows && (previous.isSpace() || previous.isPunct()));
}

QList<SenseNumber> SenseNumberFinder::find(QStringView line, bool bareAllowed) {
    const QList<Candidate> all = candidates(line);
    if (all.isEmpty())
        return {};
    const QList<int> depths = bracketDepths(line);
    qsizetype lastSecond[StyleCount] = {};
    for (const Candidate &candidate : all) {
        if (candidate.number == 2)
            lastSecond[candidate.style] = candidate.place.start;
    }
    QList<SenseNumber> accepted;
    for (const Candidate &candidate : all) {
        const qsizetype start = candidate.place.start;
        if (depths[start] > (candidate.style == Parenthesized ? 1 : 0))
            continue;
        const qsizetype textStart = accepted.isEmpty() ? 0 : skipBlanks(line, accepted.last().end);
        if (!counts(candidate, line, start == textStart, bareAllowed, lastSecond[candidate.style] > start))
            continue;
        m_last[candidate.style] = candidate.number;
        accepted.append(candidate.place);
    }
    return accepted;
}

std::optional<SenseNumber> SenseNumberFinder::atStart(QStringView line) {
    // More than any number, so that the length of the line does not matter.
    constexpr qsizetype longest = 16;
    const QList<Candidate> all = candidates(line.first(std::min(longest, line.size())));
    if (all.isEmpty() || all.first().place.start != 0 || all.first().style == Bare)
        return std::nullopt;
    return all.first().place;
}

qsizetype SenseNumberFinder::letterLength(QStringView line) {
    const qsizetype at = line.startsWith(u'(') ? 1 : 0;
    const QChar letter = charAt(line, at);
    const QChar mark = charAt(line, at + 1);
    if (letter < u'a' || letter > u'h' || (mark != u')' && (mark != u'.' || at == 1)))
        return 0;
    return charAt(line, at + 2).isSpace() || isHan(charAt(line, at + 2)) ? skipBlanks(line, at + 2) : 0;
}

void SenseNumberFinder::restart() {
    std::copy(std::begin(m_last), std::end(m_last), std::begin(m_lastBefore));
    std::fill(std::begin(m_last), std::end(m_last), 0);
}

} // namespace lexiquill::article
