import QtQuick
import Lexiquill

/// Paragraphs of a definition in one text, so that a selection may extend over several of them.
SelectableText {
    id: text

    /// A TextParagraphs value.
    property alias paragraphs: writer.paragraphs

    textFormat: TextEdit.RichText
    Component.onCompleted: writer.document = text.textDocument

    ParagraphDocument {
        id: writer

        quietColor: Theme.secondaryText
        fontSize: text.font.pixelSize
    }
}
