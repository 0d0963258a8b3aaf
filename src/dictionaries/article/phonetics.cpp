#include "dictionaries/article/phonetics.h"

#include "dictionaries/article/part_of_speech.h"
#include "dictionaries/article/text_scan.h"
#include "support/text.h"

#include <QSet>

#include <algorithm>

namespace lexiquill::article {

namespace {

constexpr qsizetype maxLength = 120;

/// Usage labels that may be in brackets where a transcription could be.
bool isUsageLabel(QStringView text) {
    static const QSet<QString> labels{
        QStringLiteral("c"),          QStringLiteral("u"),         QStringLiteral("t"),
        QStringLiteral("i"),          QStringLiteral("pl"),        QStringLiteral("sing"),
        QStringLiteral("obs"),        QStringLiteral("usu"),       QStringLiteral("esp"),
        QStringLiteral("attrib"),     QStringLiteral("slang"),     QStringLiteral("arch"),
        QStringLiteral("fml"),        QStringLiteral("infml"),     QStringLiteral("brit"),
        QStringLiteral("us"),         QStringLiteral("uk"),        QStringLiteral("am"),
        QStringLiteral("br"),         QStringLiteral("colloq"),    QStringLiteral("formal"),
        QStringLiteral("law"),        QStringLiteral("med"),       QStringLiteral("mus"),
        QStringLiteral("math"),       QStringLiteral("chem"),      QStringLiteral("informal"),
        QStringLiteral("archaic"),    QStringLiteral("dated"),     QStringLiteral("literary"),
        QStringLiteral("spoken"),     QStringLiteral("written"),   QStringLiteral("humorous"),
        QStringLiteral("figurative"), QStringLiteral("countable"), QStringLiteral("uncountable"),
        QStringLiteral("plural"),     QStringLiteral("singular"),  QStringLiteral("technical"),
    };
    QString plain = text.trimmed().toString().toLower();
    plain.remove(u'.');
    const auto label = labelAtStart(text, false);
    return labels.contains(plain) || (label && label->length >= text.size());
}

bool isTranscriptionCharacter(QChar c) {
    if (c.isMark() || c.isDigit() || c == QChar(0x04d9) || c.category() == QChar::Letter_Modifier ||
        c.category() == QChar::Symbol_Modifier)
        return true;
    if (c.isLetter()) {
        const QChar::Script script = c.script();
        return script == QChar::Script_Latin || script == QChar::Script_Greek ||
               script == QChar::Script_Hiragana || script == QChar::Script_Katakana ||
               script == QChar::Script_Bopomofo;
    }
    return QStringView(u" '’`:.,;-‐()~^·*|/&").contains(c);
}

/// Distinguishes a transcription from a remark in brackets.
bool looksLikeTranscription(QStringView text, QChar closing, qsizetype headwordLength) {
    if (text.isEmpty() || text.size() > maxLength || isUsageLabel(text) ||
        !std::all_of(text.begin(), text.end(), isTranscriptionCharacter) ||
        !std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); }))
        return false;
    const bool telling = std::any_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() > 0x7f || QStringView(u"':`^").contains(c) || c.isDigit();
    });
    if (telling)
        return true;
    // Plain letters between slashes are probably alternatives ("/hello/hi/").
    constexpr qsizetype usualExcess = 4;
    return closing != u'/' && text.size() <= headwordLength + usualExcess &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return !c.isUpper() && !c.isSpace(); });
}

QChar closingMark(QChar open) {
    if (open == u'[')
        return u']';
    if (open == u'［' || open == u'【')
        return closingBracket(open);
    return open == u'/' || open == u'\\' ? open : QChar();
}

/// Skips a mark such as "英", "KK:" or "UK" and the blanks after it.
qsizetype skipSourceMark(QStringView line, qsizetype at) {
    static constexpr QStringView marks[] = {u"国际音标", u"音标", u"发音", u"读音", u"英式", u"美式", u"英音",
                                            u"美音",     u"英",   u"美",   u"K.K.", u"D.J.", u"KK",   u"DJ",
                                            u"BrE",      u"NAmE", u"AmE",  u"UK",   u"US",   u"Br",   u"Am"};
    at = skipBlanks(line, at);
    const qsizetype first = at;
    const QChar bracket = charAt(line, at);
    const bool bracketed = bracket == u'(' || bracket == u'（' || bracket == u'【' || bracket == u'[';
    for (const QStringView mark : marks) {
        if (!line.sliced(at + bracketed).startsWith(mark, Qt::CaseInsensitive))
            continue;
        const qsizetype end = at + bracketed + mark.size();
        if (bracketed && charAt(line, end) != closingBracket(bracket))
            continue;
        at = skipBlanks(line, end + bracketed);
        if (QStringView(u":：.").contains(charAt(line, at)) && at < line.size())
            ++at;
        at = skipBlanks(line, at);
        // "【音标】 英 [...]"
        return first == 0 && bracketed ? skipSourceMark(line, at) : at;
    }
    return at;
}

/// The first transcription between brackets that hold several, as in "英 tɪə(r) 美 tɪr".
QStringView firstTranscription(QStringView inside) {
    const qsizetype start = skipSourceMark(inside, 0);
    if (start == 0)
        return inside;
    qsizetype end = start;
    while (end < inside.size() && !isHan(inside[end]) && !QStringView(u";；,，").contains(inside[end]))
        ++end;
    QStringView first = inside.sliced(start, end - start).trimmed();
    for (const QStringView mark : {u" US", u" NAmE", u" AmE"}) {
        if (const qsizetype next = first.indexOf(mark); next > 0)
            first = first.first(next);
    }
    return first;
}

} // namespace

QString cleanPhonetic(QStringView text) {
    text = text.trimmed();
    const qsizetype marked = skipSourceMark(text, 0);
    if (!closingMark(charAt(text, marked)).isNull())
        text = text.sliced(marked);
    if (const QChar closing = closingMark(charAt(text, 0)); !closing.isNull()) {
        const qsizetype end = text.indexOf(closing, 1);
        text = end < 0 ? text.sliced(1) : text.sliced(1, end - 1);
    } else {
        while (!text.isEmpty() && QStringView(u"]］/\\").contains(text.back()))
            text.chop(1);
    }
    QString clean = text.toString().simplified();
    if (clean.size() > maxLength || containsHan(clean))
        return {};
    return clean;
}

QStringView withoutLastSourceMark(QStringView text) {
    text = text.trimmed();
    qsizetype start = text.size();
    while (start > 0 && !QStringView(u" ;；,，").contains(text[start - 1]))
        --start;
    if (start < text.size() && skipSourceMark(text.sliced(start), 0) == text.size() - start)
        text = text.first(start);
    while (!text.isEmpty() && QStringView(u" ;；,，").contains(text.back()))
        text.chop(1);
    return text;
}

LeadingPhonetic leadingPhonetic(QStringView line, const QString &headword, bool onlyCertain) {
    LeadingPhonetic result;
    const qsizetype usualLength = onlyCertain ? -maxLength : headword.size();
    QChar first;
    qsizetype at = 0;
    constexpr int mostTranscriptions = 8;
    for (int i = 0; i < mostTranscriptions; ++i) {
        qsizetype start = skipBlanks(line, at);
        while (start < line.size() && QStringView(u"*★☆,，;；").contains(line[start]))
            start = skipBlanks(line, start + 1);
        const qsizetype mark = start;
        start = skipSourceMark(line, start);
        const QChar closing = closingMark(charAt(line, start));
        if (closing.isNull() || (!first.isNull() && closing != first))
            break;
        const qsizetype reach = std::min(line.size() - start - 1, maxLength + 1);
        const qsizetype length = line.sliced(start + 1, reach).indexOf(closing);
        // Behind a mark such as "US", plain letters between slashes are a transcription, too.
        const bool isMarked = start > mark;
        const bool isAlone =
            length > 0 && !containsHan(headword) && !line.sliced(start + length + 2).contains(u'/');
        const QChar kind = (isMarked || isAlone) && closing == u'/' ? QChar(u']') : closing;
        const QStringView inside = line.sliced(start + 1, std::max<qsizetype>(length, 0));
        const QStringView transcription = firstTranscription(inside);
        const qsizetype excess = transcription.size() < inside.size() ? headword.size()
                                 : closing == u'】'                   ? -maxLength
                                                                      : usualLength;
        if (length <= 0 || !looksLikeTranscription(transcription, kind, excess))
            break;
        if (result.phonetic.isEmpty())
            result.phonetic = cleanPhonetic(transcription);
        first = closing;
        at = start + length + 2;
        result.length = at;
    }
    return result;
}

} // namespace lexiquill::article
