#include "model/gloss_cleaning.h"

#include "support/text.h"

#include <algorithm>

namespace lexiquill {

// Writing a record cleans all its glosses, so for speed the steps are plain scans. Their comments give the
// equivalent regular expressions.

namespace {

bool isLatinLetter(QChar character) {
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z');
}

/// Matches of "\([^)]*[a-zA-Z]+[^)]*\)" removed.
QString withoutLatinNotes(const QString &text) {
    qsizetype open = text.indexOf(u'(');
    if (open < 0)
        return text;
    QString result;
    qsizetype copied = 0;
    while (open >= 0) {
        const qsizetype close = text.indexOf(u')', open);
        if (close < 0)
            break;
        const QStringView inside = QStringView(text).sliced(open + 1, close - open - 1);
        if (std::any_of(inside.begin(), inside.end(), isLatinLetter)) {
            result += QStringView(text).sliced(copied, open - copied);
            copied = close + 1;
        }
        // Nested parentheses before `close` contain no Latin letter either.
        open = text.indexOf(u'(', close);
    }
    result += QStringView(text).sliced(copied);
    return result;
}

bool isInLatinRun(QChar character) {
    static const QString toneLetters = QStringLiteral("āáǎàēéěèīíǐìōóǒòūúǔùǖǘǚǜü");
    return isLatinLetter(character) || character.isSpace() ||
           (character.unicode() >= 0x80 && character.unicode() < 0x300 && toneLetters.contains(character));
}

/// Matches of "[a-zA-Zāáǎàēéěèīíǐìōóǒòūúǔùǖǘǚǜü\s]{2,}" removed.
QString withoutLatinRuns(const QString &text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size();) {
        qsizetype end = i;
        while (end < text.size() && isInLatinRun(text[end]))
            ++end;
        if (end - i < 2) {
            result += text[i];
            end = i + 1;
        }
        i = end;
    }
    return result;
}

} // namespace

QString withoutAngleQuotes(const QString &text) {
    qsizetype open = text.indexOf(u'‹');
    if (open < 0)
        return text;
    QString result;
    qsizetype copied = 0;
    while (open >= 0) {
        const qsizetype close = text.indexOf(u'›', open);
        if (close < 0)
            break;
        if (close > open + 1) {
            result += QStringView(text).sliced(copied, open - copied);
            copied = close + 1;
        }
        open = text.indexOf(u'‹', close);
    }
    result += QStringView(text).sliced(copied);
    return result;
}

QStringList cleanChineseTokens(const QString &gloss) {
    const QString text = withoutAngleQuotes(gloss);
    QStringList tokens;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && text[i] != u';' && text[i] != u'；' && text[i] != u',')
            continue;
        const QStringView whole = QStringView(text).sliced(start, i - start);
        QString cleaned;
        QStringView piece = whole;
        // Most glosses have nothing to remove.
        if (std::any_of(whole.begin(), whole.end(), isInLatinRun)) {
            cleaned = withoutLatinRuns(withoutLatinNotes(whole.toString()));
            piece = cleaned;
        }
        const QStringView token = trimmedOfPunctuation(piece, true);
        if (containsHan(token))
            tokens += token.toString();
        start = i + 1;
    }
    return tokens;
}

} // namespace lexiquill
