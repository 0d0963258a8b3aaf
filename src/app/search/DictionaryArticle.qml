import QtQuick
import Lexiquill

/// The formatted article of a dictionary. It has no links and loads nothing but the dictionary's pictures.
ThemedText {
    textFormat: Text.RichText
    wrapMode: Text.Wrap
    clip: true
    Accessible.name: text.replace(/<[^>]*>/g, " ")
}
