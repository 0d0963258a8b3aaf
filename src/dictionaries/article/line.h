#pragma once

#include <QList>
#include <QString>

namespace lexiquill::article {

/// What the markup of an article says about a line.
enum class LineRole {
    Plain,       ///< nothing; the text itself must tell
    Bullet,      ///< an item of a list without numbers
    Item,        ///< begins a sense, for example an item of a numbered list
    Example,     ///< an example, perhaps with its translation
    Translation, ///< the translation of the example before it
    Definition,  ///< a definition in the language of the headword
    Phrase,      ///< a phrase; its meaning follows
    Heading,     ///< the title of a section
    Aside,       ///< belongs to the raw text only
};

/// A line of an article without its markup.
struct Line {
    QString text;
    LineRole role = LineRole::Plain;
};

/// An article without its markup.
struct PlainArticle {
    /// The lines with what the markup says about them. Headwords and the transcription are left out if the
    /// markup identifies them.
    QList<Line> lines;
    /// The whole text, as a reader of the article would see it.
    QString rawText;
    /// The transcription, if the markup identifies it; often empty.
    QString phonetic;
};

} // namespace lexiquill::article
