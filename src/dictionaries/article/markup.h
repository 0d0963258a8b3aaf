#pragma once

#include <QString>

namespace lexiquill::article {

/// An article without its markup.
struct PlainArticle {
    /// Lines of text; those that begin with "▸" are examples. A repeated headword and the transcription are
    /// left out if the markup identifies them.
    QString text;
    /// The whole text, as a reader of the article would see it.
    QString rawText;
    /// The transcription, if the markup identifies it; often empty.
    QString phonetic;
};

enum class MarkupKind { Xdxf, Html, Pango };

/// Removes the markup from an article. Anything that is not a well-formed tag stays as text. Takes linear
/// time, even for malformed text.
PlainArticle readMarkup(const QString &text, MarkupKind kind, const QString &headword);

} // namespace lexiquill::article
