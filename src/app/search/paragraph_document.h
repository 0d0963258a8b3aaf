#pragma once

#include "app/search/text_paragraph.h"

#include <QColor>
#include <QObject>
#include <QQmlEngine>
#include <QQuickTextDocument>
#include <QVariant>

namespace lexiquill {

/// Writes the paragraphs of a definition into the document of a text item.
class ParagraphDocument : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// To be set when the text item is complete, because until then the item replaces its document's text.
    Q_PROPERTY(QQuickTextDocument *document READ document WRITE setDocument)
    /// A TextParagraphs value.
    Q_PROPERTY(QVariant paragraphs READ paragraphs WRITE setParagraphs REQUIRED)
    Q_PROPERTY(QColor quietColor READ quietColor WRITE setQuietColor REQUIRED)
    /// Of the main text, in pixels.
    Q_PROPERTY(int fontSize READ fontSize WRITE setFontSize REQUIRED)

public:
    explicit ParagraphDocument(QObject *parent = nullptr) : QObject(parent) {}

    QQuickTextDocument *document() const { return m_document; }
    void setDocument(QQuickTextDocument *document);
    QVariant paragraphs() const { return QVariant::fromValue(m_paragraphs); }
    void setParagraphs(const QVariant &paragraphs);
    const QColor &quietColor() const { return m_quietColor; }
    void setQuietColor(const QColor &color);
    int fontSize() const { return m_fontSize; }
    void setFontSize(int size);

private:
    void write();

    QQuickTextDocument *m_document = nullptr;
    TextParagraphs m_paragraphs;
    QColor m_quietColor;
    int m_fontSize = 0;
};

} // namespace lexiquill
