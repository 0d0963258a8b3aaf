#pragma once

#include <QList>
#include <QMetaType>
#include <QString>

namespace lexiquill {

/// A piece of a paragraph in one style.
struct TextSpan {
    enum class Style {
        Plain,
        Quiet,  ///< secondary colour
        Strong, ///< bold, for the word itself in an example
        Number, ///< the number of a sense
    };

    QString text;
    Style style = Style::Plain;

    friend bool operator==(const TextSpan &, const TextSpan &) = default;
};

/// A paragraph of a definition.
struct TextParagraph {
    enum class Kind {
        Sense,       ///< begins with a number if there is one; further lines are indented below the text
        Senses,      ///< several short senses, one after the other
        Context,     ///< of the sense that follows
        Example,     ///< below a sense
        Sentence,    ///< an example of its own
        Translation, ///< of the sentence before
    };

    Kind kind = Kind::Sense;
    QList<TextSpan> spans;

    QString plainText() const {
        QString text;
        for (const TextSpan &span : spans)
            text += span.text;
        return text;
    }

    friend bool operator==(const TextParagraph &, const TextParagraph &) = default;
};

using TextParagraphs = QList<TextParagraph>;

} // namespace lexiquill

Q_DECLARE_METATYPE(lexiquill::TextParagraphs)
