#include "platform/linux/stardict/shielding.h"

#include "platform/linux/stardict/text_scan.h"

namespace lexiquill::stardict {

namespace {

/// Whether a word may end at this neighbour. In doubt it does: marks and supplementary characters are no part
/// of words for every reader.
bool isBoundary(QChar neighbour) {
    return !neighbour.isLetterOrNumber() && neighbour != u'_';
}

struct LoneCharacter {
    char16_t character;
    QStringView inVerbs;
    QStringView inNouns;
    QStringView otherwise;
    QStringView asContext;
};

const LoneCharacter loneCharacters[] = {
    {u'名', u"命名", u"名字", u"名字", u"名词"},   {u'动', u"移动", u"动作", u"移动", u"动物"},
    {u'形', u"成形", u"形状", u"形状", u"形容词"}, {u'副', u"副的", u"副手", u"副的", u"副词"},
    {u'代', u"代替", u"时代", u"代替", u"代词"},   {u'数', u"计数", u"数目", u"数目", u"数学"},
    {u'量', u"测量", u"数量", u"数量", u"量词"},   {u'连', u"连接", u"连队", u"连同", u"连词"},
    {u'介', u"介入", u"介质", u"介于", u"介词"},   {u'叹', u"叹息", u"叹息", u"叹息", u"叹词"},
};

QStringView writtenOut(const LoneCharacter &lone, QStringView label) {
    if (label.endsWith(u"verb") && label != u"adverb")
        return lone.inVerbs;
    return label == u"noun" ? lone.inNouns : lone.otherwise;
}

QString withoutFieldMarks(QString text) {
    text.replace(u'|', u'｜');
    text.replace(u'‹', u'〈');
    text.replace(u'›', u'〉');
    text.replace(u'▸', u'▹');
    return text;
}

template <typename Replacement>
QString withLoneCharactersWrittenOut(const QString &text, Replacement replacement) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const LoneCharacter *found = nullptr;
        for (const LoneCharacter &lone : loneCharacters) {
            if (text[i] == lone.character && isBoundary(charAt(text, i - 1)) &&
                isBoundary(charAt(text, i + 1)))
                found = &lone;
        }
        if (found != nullptr)
            result += replacement(*found);
        else
            result += text[i];
    }
    return result;
}

/// The label word that begins at `position`, if any; `atEnd` are words that only together with a label
/// behind the text would become one.
qsizetype labelWordLength(QStringView text, qsizetype position) {
    static constexpr QStringView words[] = {
        u"noun",        u"verb",        u"adjective",    u"adverb", u"pronoun",
        u"preposition", u"conjunction", u"interjection", u"idiom",
    };
    static constexpr QStringView firstHalves[] = {u"transitive", u"intransitive", u"phrasal"};
    const QStringView rest = text.sliced(position);
    for (const QStringView word : words) {
        if (rest.startsWith(word, Qt::CaseInsensitive) && isBoundary(charAt(rest, word.size())))
            return word.size();
    }
    for (const QStringView half : firstHalves) {
        if (rest.size() == half.size() && rest.startsWith(half, Qt::CaseInsensitive))
            return half.size();
    }
    return 0;
}

/// Letters that some reader takes for the first letter of a label word, whatever their case.
bool mayBeginLabelWord(QChar c) {
    return QStringView(u"nvapcit").contains(c.toCaseFolded());
}

QString withLabelWordsBroken(const QString &text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size();) {
        qsizetype length = 0;
        if (mayBeginLabelWord(text[i]) && isBoundary(charAt(text, i - 1)))
            length = labelWordLength(text, i);
        if (length == 0) {
            result += text[i++];
            continue;
        }
        result += QStringView(text).sliced(i, length - 1);
        result += QChar(wordJoiner);
        result += text[i + length - 1];
        i += length;
    }
    return result;
}

/// Characters of the decimal digit at `position`, 0 when there is none.
qsizetype digitLength(QStringView text, qsizetype position) {
    const QChar c = charAt(text, position);
    if (c.isHighSurrogate() && charAt(text, position + 1).isLowSurrogate())
        return QChar::isDigit(QChar::surrogateToUcs4(c, charAt(text, position + 1))) ? 2 : 0;
    return c.isDigit() ? 1 : 0;
}

bool readsAsSenseMarker(QStringView text, qsizetype position) {
    if (text[position] >= u'①' && text[position] <= u'⑳')
        return true;
    qsizetype end = position;
    while (const qsizetype length = digitLength(text, end))
        end += length;
    const QChar next = charAt(text, end);
    return end > position && (next.isNull() || next == u'.' || next.isSpace());
}

QString withNumbersCovered(const QString &text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar previous = charAt(text, i - 1);
        if ((previous.isNull() || previous.isSpace()) && readsAsSenseMarker(text, i))
            result += QChar(wordJoiner);
        result += text[i];
    }
    return result;
}

} // namespace

QString shielded(const QString &text, QStringView label) {
    const QString spelled =
        withLoneCharactersWrittenOut(withoutFieldMarks(text.simplified()),
                                     [label](const LoneCharacter &lone) { return writtenOut(lone, label); });
    return withNumbersCovered(withLabelWordsBroken(spelled));
}

QString shieldedContext(const QString &context) {
    const QString spelled = withLoneCharactersWrittenOut(
        withoutFieldMarks(context.simplified()), [](const LoneCharacter &lone) { return lone.asContext; });
    return withNumbersCovered(withLabelWordsBroken(spelled));
}

} // namespace lexiquill::stardict
