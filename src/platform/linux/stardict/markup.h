#pragma once

#include <QString>

namespace lexiquill::stardict {

/// An article without its markup.
struct PlainArticle {
    /// Lines of text; those that begin with "▸" are examples.
    QString text;
    /// The transcription that the markup points out; often empty.
    QString phonetic;
};

enum class MarkupKind { Xdxf, Html, Pango };

/// Takes the markup out of an article. Anything that is no well-formed tag stays as text. A repetition of
/// the headword that the markup points out is left out. Needs time in proportion to the length, however
/// faulty the text is.
PlainArticle readMarkup(const QString &text, MarkupKind kind, const QString &headword);

} // namespace lexiquill::stardict
