#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace lexiquill {

/// A note has at most this many tags, and a tag at most this many UTF-16 units; others do not count.
inline constexpr qsizetype mostNoteTags = 50;
inline constexpr qsizetype longestNoteTag = 50;

/// The tags in a note, without the "#", in the order of their first use and as they were first written. A tag
/// is a "#" with the letters, digits, "_" and "-" after it, at least one of them a letter or a digit. The "#"
/// stands at the start, or after white space, punctuation or a symbol, but not in a web address. Takes linear
/// time.
QStringList noteTags(const QString &note);

/// The form in which tags are compared; it ignores the case.
QString tagKey(const QString &tag);

/// What the user types to find words: tags, and the text after them.
struct TagQuery {
    QStringList keys; ///< see tagKey(); the words must have all of them
    QString text;     ///< trimmed

    /// Takes the tags from the start of the text. A text that does not start with a tag has none.
    static TagQuery of(QStringView text);
};

} // namespace lexiquill
