#pragma once

#include <QString>

namespace lexiquill::article {

/// An article without its markup.
struct PlainArticle {
    /// Lines of text; those that begin with "▸" are examples. Without a repetition of the headword and
    /// without the transcription, where the markup points these out.
    QString text;
    /// All of the text, as a reader of the article would see it.
    QString rawText;
    /// The transcription that the markup points out; often empty.
    QString phonetic;
};

enum class MarkupKind { Xdxf, Html, Pango };

/// Takes the markup out of an article. Anything that is no well-formed tag stays as text. Needs time in
/// proportion to the length, however faulty the text is.
PlainArticle readMarkup(const QString &text, MarkupKind kind, const QString &headword);

} // namespace lexiquill::article
