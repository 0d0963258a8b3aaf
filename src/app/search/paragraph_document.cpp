#include "app/search/paragraph_document.h"

#include <QFontMetricsF>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace lexiquill {

namespace {

using Kind = TextParagraph::Kind;
using Style = TextSpan::Style;

/// Of the line's usual height.
constexpr double mainLinePercent = 135;
constexpr double exampleLinePercent = 125;
/// In points.
constexpr double exampleIndent = 10;
constexpr double numberGap = 6;

/// The space above a paragraph, in points.
double spaceAbove(Kind kind) {
    switch (kind) {
    case Kind::Example:
    case Kind::Translation:
        return 0;
    case Kind::Sentence:
        return 8;
    case Kind::Sense:
    case Kind::Senses:
    case Kind::Context:
        break;
    }
    return 4;
}

bool startsWithNumber(const TextParagraph &paragraph) {
    return paragraph.kind == Kind::Sense && !paragraph.spans.isEmpty() &&
           paragraph.spans.constFirst().style == Style::Number;
}

QTextBlockFormat blockFormat(const TextParagraph &paragraph, double indent) {
    const Kind kind = paragraph.kind;
    const bool isIndented = kind == Kind::Sense || kind == Kind::Context || kind == Kind::Example;
    const bool isMain = kind == Kind::Sense || kind == Kind::Senses || kind == Kind::Context;
    QTextBlockFormat format;
    format.setLeftMargin((isIndented ? indent : 0) + (kind == Kind::Example ? exampleIndent : 0));
    if (startsWithNumber(paragraph)) {
        format.setTextIndent(-indent);
        format.setTabPositions({QTextOption::Tab(indent, QTextOption::LeftTab)});
    }
    format.setLineHeight(isMain ? mainLinePercent : exampleLinePercent, QTextBlockFormat::ProportionalHeight);
    return format;
}

QTextCharFormat charFormat(Kind kind, Style style, int fontSize, const QColor &quietColor) {
    const bool isSmall = kind == Kind::Context || kind == Kind::Example || kind == Kind::Translation;
    QTextCharFormat format;
    if (isSmall)
        format.setProperty(QTextFormat::FontPixelSize, fontSize - 1);
    if (style == Style::Strong)
        format.setFontWeight(QFont::Bold);
    if (isSmall || style == Style::Number || style == Style::Quiet)
        format.setForeground(quietColor);
    return format;
}

/// The width of the widest number of a sense; 0 without numbers.
double numberWidth(const TextParagraphs &paragraphs, const QFont &font) {
    const QFontMetricsF metrics(font);
    double width = 0;
    for (const TextParagraph &paragraph : paragraphs) {
        if (startsWithNumber(paragraph))
            width = std::max(width, metrics.horizontalAdvance(paragraph.spans.constFirst().text) + numberGap);
    }
    return width;
}

} // namespace

void ParagraphDocument::setParagraphs(const QVariant &paragraphs) {
    m_paragraphs = paragraphs.value<TextParagraphs>();
    write();
}

void ParagraphDocument::setQuietColor(const QColor &color) {
    if (std::exchange(m_quietColor, color) != color)
        write();
}

void ParagraphDocument::setFontSize(int size) {
    if (std::exchange(m_fontSize, size) != size)
        write();
}

void ParagraphDocument::setDocument(QQuickTextDocument *document) {
    m_document = document;
    write();
}

void ParagraphDocument::write() {
    if (m_document == nullptr)
        return;
    QTextDocument &document = *m_document->textDocument();
    document.setUndoRedoEnabled(false);
    QFont font = document.defaultFont();
    font.setPixelSize(m_fontSize);
    const double indent = numberWidth(m_paragraphs, font);

    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.removeSelectedText();
    bool isFirst = true;
    for (const TextParagraph &paragraph : std::as_const(m_paragraphs)) {
        QTextBlockFormat format = blockFormat(paragraph, indent);
        if (!isFirst)
            format.setTopMargin(spaceAbove(paragraph.kind));
        isFirst ? cursor.setBlockFormat(format) : cursor.insertBlock(format);
        isFirst = false;
        for (const TextSpan &span : paragraph.spans) {
            // A line break inside a meaning belongs to its paragraph.
            QString text = span.text;
            text.replace(u'\n', QChar::LineSeparator);
            if (span.style == Style::Number && startsWithNumber(paragraph))
                text += u'\t';
            cursor.insertText(text, charFormat(paragraph.kind, span.style, m_fontSize, m_quietColor));
        }
    }
    cursor.endEditBlock();
}

} // namespace lexiquill
