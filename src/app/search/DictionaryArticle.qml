import QtQuick

/// The formatted article of a dictionary. It has no links and loads nothing but the dictionary's pictures.
SelectableText {
    textFormat: TextEdit.RichText
    clip: true
}
