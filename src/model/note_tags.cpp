#include "model/note_tags.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace lexiquill {

namespace {

/// A character of a text, and the position after it.
struct Step {
    char32_t character = 0;
    qsizetype end = 0;
};

Step characterAt(QStringView text, qsizetype position) {
    const QChar unit = text.at(position);
    if (unit.isHighSurrogate() && position + 1 < text.size() && text.at(position + 1).isLowSurrogate())
        return {.character = QChar::surrogateToUcs4(unit, text.at(position + 1)), .end = position + 2};
    return {.character = unit.unicode(), .end = position + 1};
}

bool isAlphanumeric(char32_t character) {
    return QChar::isLetterOrNumber(character);
}

bool isTagCharacter(char32_t character) {
    return isAlphanumeric(character) || QChar::isMark(character) || character == U'_' || character == U'-';
}

/// Whether a "#" after this character begins a tag.
bool mayPrecedeTag(char32_t character) {
    return QChar::isSpace(character) || QChar::isPunct(character) || QChar::isSymbol(character);
}

/// The end of the tag whose first character is at `from`; `from` if there is no tag.
qsizetype endOfTag(QStringView text, qsizetype from) {
    bool hasAlphanumeric = false;
    qsizetype end = from;
    while (end < text.size()) {
        const Step step = characterAt(text, end);
        if (!isTagCharacter(step.character))
            break;
        hasAlphanumeric = hasAlphanumeric || isAlphanumeric(step.character);
        end = step.end;
    }
    return hasAlphanumeric ? end : from;
}

bool isAsciiAlphanumeric(QChar character) {
    return character.unicode() < 128 && character.isLetterOrNumber();
}

/// Whether a web address ends before this character. It may contain letters of all scripts, but of
/// punctuation only what is in ASCII.
bool endsAddress(QChar character) {
    return character.isSpace() || character == u'<' || character == u'>' || character == u'"' ||
           (character.unicode() >= 128 && character.isPunct());
}

/// Whether `text` ends with the name of a host, such as "www.example.com" or "example.com:80".
bool endsWithHost(QStringView text) {
    qsizetype start = text.size();
    while (start > 0 &&
           (isAsciiAlphanumeric(text.at(start - 1)) || QStringView(u".-:").contains(text.at(start - 1))))
        --start;
    QStringView host = text.sliced(start);
    if (const qsizetype port = host.indexOf(u':'); port >= 0)
        host = host.first(port);
    const qsizetype dot = host.lastIndexOf(u'.');
    const QStringView top = host.sliced(dot + 1);
    return dot > 0 && top.size() > 1 &&
           std::ranges::all_of(top, [](QChar each) { return each.unicode() < 128 && each.isLetter(); });
}

/// Where a web address begins to be one in a run of characters without spaces: after its scheme or its host.
/// The end of the run if there is none.
qsizetype startOfAddress(QStringView run) {
    static constexpr std::array<QStringView, 3> marks{u"://", u"www.", u"mailto:"};
    qsizetype start = run.size();
    for (const QStringView mark : marks) {
        if (const qsizetype found = run.indexOf(mark, 0, Qt::CaseInsensitive); found >= 0)
            start = std::min(start, found);
    }
    // A host is followed by a path or a query. Hosts do not overlap, so all of them together are read once.
    for (qsizetype i = 0; i < start; ++i) {
        if ((run.at(i) == u'/' || run.at(i) == u'?') && endsWithHost(run.first(i)))
            return i;
    }
    return start;
}

} // namespace

QStringList noteTags(const QString &note) {
    QStringList tags;
    if (!note.contains(u'#'))
        return tags;
    QSet<QString> keys;
    const QStringView text(note);
    qsizetype runEnd = 0;       // of the current run without spaces
    qsizetype addressStart = 0; // in that run
    char32_t previous = U' ';
    for (qsizetype at = 0; at < text.size() && tags.size() < mostNoteTags;) {
        if (at >= runEnd) {
            runEnd = at;
            while (runEnd < text.size() && !endsAddress(text.at(runEnd)))
                ++runEnd;
            addressStart = at + startOfAddress(text.sliced(at, runEnd - at));
            runEnd = std::max(runEnd, at + 1);
        }
        const Step step = characterAt(text, at);
        const bool isMark = step.character == U'#' && mayPrecedeTag(previous) && at < addressStart;
        previous = step.character;
        at = step.end;
        if (!isMark)
            continue;
        const qsizetype end = endOfTag(text, at);
        if (end == at || end - at > longestNoteTag)
            continue;
        const QString tag = text.sliced(at, end - at).toString();
        const qsizetype before = keys.size();
        keys += tagKey(tag);
        if (keys.size() > before)
            tags += tag;
    }
    return tags;
}

QString tagKey(const QString &tag) {
    return tag.normalized(QString::NormalizationForm_C).toCaseFolded();
}

TagQuery TagQuery::of(QStringView text) {
    TagQuery query;
    text = text.trimmed();
    while (text.startsWith(u'#')) {
        const qsizetype end = endOfTag(text, 1);
        if (end == 1 || end - 1 > longestNoteTag)
            break;
        query.keys += tagKey(text.sliced(1, end - 1).toString());
        text = text.sliced(end).trimmed();
    }
    query.text = text.toString();
    return query;
}

} // namespace lexiquill
