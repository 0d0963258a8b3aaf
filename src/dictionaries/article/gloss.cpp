#include "dictionaries/article/gloss.h"

#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <QSet>

#include <algorithm>

namespace lexiquill::article {

namespace {

QStringList splitOutsideBrackets(const QString &text, QStringView separators) {
    QStringList pieces;
    const QList<int> depths = bracketDepths(text);
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (depths[i] > 0 || !separators.contains(text[i]))
            continue;
        pieces.append(text.sliced(start, i - start));
        start = i + 1;
    }
    pieces.append(text.sliced(start));
    return pieces;
}

/// The text without the separators at both ends, which come from splitting and from careless sources.
QString trimmedGloss(QStringView text) {
    const auto isLoose = [](QChar c) {
        return c.isSpace() || QStringView(u";；,，").contains(c);
    };
    while (!text.isEmpty() && isLoose(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isLoose(text.back()))
        text.chop(1);
    return text.toString();
}

bool isShortChinese(const QString &gloss) {
    constexpr qsizetype longest = 8;
    return gloss.size() <= longest && containsHan(gloss) &&
           std::none_of(gloss.begin(), gloss.end(), [](QChar c) {
               return isAsciiLetter(c) || c.isDigit() || QStringView(u"。！？!?").contains(c);
           });
}

/// A short Chinese label such as 医 or 美俚.
bool isSubject(QStringView text) {
    constexpr qsizetype longest = 6;
    return !text.isEmpty() && text.size() <= longest && isHan(text[0]) &&
           std::all_of(text.begin(), text.end(),
                       [](QChar c) { return isHan(c) || QStringView(u"、,，/").contains(c); });
}

/// Common labels. Other text in parentheses may be an optional part of the meaning, as in "(使)惊讶".
bool isUsualLabel(QStringView text) {
    static const QSet<QString> labels{
        QStringLiteral("美"), QStringLiteral("英"), QStringLiteral("口"),   QStringLiteral("俚"),
        QStringLiteral("俗"), QStringLiteral("古"), QStringLiteral("废"),   QStringLiteral("旧"),
        QStringLiteral("方"), QStringLiteral("书"), QStringLiteral("贬"),   QStringLiteral("褒"),
        QStringLiteral("谑"), QStringLiteral("诗"), QStringLiteral("复"),   QStringLiteral("复数"),
        QStringLiteral("医"), QStringLiteral("化"), QStringLiteral("单数"), QStringLiteral("常复数"),
    };
    return labels.contains(text.toString());
}

/// Marks of grammar such as "C, U", "pl." or "usu pass".
bool isGrammar(QStringView text) {
    static const QSet<QString> words{
        QStringLiteral("c"),        QStringLiteral("u"),       QStringLiteral("t"),
        QStringLiteral("i"),        QStringLiteral("pl"),      QStringLiteral("sing"),
        QStringLiteral("usu"),      QStringLiteral("often"),   QStringLiteral("only"),
        QStringLiteral("not"),      QStringLiteral("before"),  QStringLiteral("after"),
        QStringLiteral("noun"),     QStringLiteral("verb"),    QStringLiteral("v"),
        QStringLiteral("pass"),     QStringLiteral("passive"), QStringLiteral("plural"),
        QStringLiteral("singular"), QStringLiteral("usually"), QStringLiteral("also"),
        QStringLiteral("with"),     QStringLiteral("or"),
    };
    bool isAny = false;
    for (QStringView word : text.tokenize(u' ')) {
        while (!word.isEmpty() && QStringView(u",;.").contains(word.back()))
            word.chop(1);
        if (word == u"+" || word.isEmpty())
            continue;
        for (const QStringView part : word.tokenize(u',')) {
            if (!words.contains(part.toString().toLower()))
                return false;
            isAny = true;
        }
    }
    return isAny;
}

/// Moves a label from the start of `text` to `contexts`; false if there is none or no text would be left.
bool takeContext(QStringView &text, QStringList &contexts) {
    const QChar open = charAt(text, 0);
    if (open.isNull() || !QStringView(u"([【〈<〔").contains(open))
        return false;
    constexpr qsizetype longest = 60;
    const qsizetype close = text.first(std::min(longest, text.size())).indexOf(closingBracket(open));
    if (close < 0)
        return false;
    const QStringView label = text.sliced(1, close - 1).trimmed();
    const QStringView rest = text.sliced(close + 1);
    const bool isGrammarMark = open == u'[' && isGrammar(label);
    bool accepted = isSubject(label) || isGrammarMark;
    if (open == u'(') {
        accepted =
            isUsualLabel(label) || (!label.isEmpty() && !label.contains(u'(') && charAt(rest, 0).isSpace());
    }
    if (!accepted || trimmedGloss(rest).isEmpty())
        return false;
    const QString context = isGrammarMark ? text.first(close + 1).toString() : label.toString();
    if (!contexts.contains(context))
        contexts.append(context);
    text = rest.trimmed();
    return true;
}

} // namespace

Sense senseFrom(const QString &gloss) {
    Sense sense;
    const QString whole = trimmedGloss(gloss);
    QStringView rest = whole;
    constexpr int mostContexts = 4;
    for (int i = 0; i < mostContexts && takeContext(rest, sense.contexts); ++i) {
    }
    sense.meaning = trimmedGloss(rest);
    return sense;
}

QList<Sense> splitGlosses(const QString &line) {
    QList<Sense> senses;
    const auto add = [&senses](const Sense &sense) {
        if (!sense.meaning.isEmpty())
            senses.append(sense);
    };
    const QStringList pieces = splitOutsideBrackets(line, u";；");
    if (pieces.size() > 1) {
        for (const QString &piece : pieces)
            add(senseFrom(piece));
        return senses;
    }
    const Sense whole = senseFrom(line);
    const QStringList glosses = splitOutsideBrackets(whole.meaning, u",，");
    if (glosses.size() < 2 || !std::all_of(glosses.begin(), glosses.end(), isShortChinese)) {
        add(whole);
        return senses;
    }
    for (const QString &gloss : glosses) {
        Sense sense = senseFrom(gloss);
        // Labels at the start of the line apply to each gloss.
        sense.contexts = whole.contexts + sense.contexts;
        add(sense);
    }
    return senses;
}

} // namespace lexiquill::article
