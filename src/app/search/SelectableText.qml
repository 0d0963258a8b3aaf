import QtQuick
import Lexiquill

/// A text that can be selected and copied. A double click or Ctrl+click on a word looks the word up.
TextEdit {
    id: text

    readOnly: true
    selectByMouse: true
    selectByKeyboard: false
    activeFocusOnTab: false
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: "#FFFFFF"
    font.pixelSize: Theme.bodySize
    wrapMode: TextEdit.Wrap
    renderType: TextEdit.NativeRendering
    Accessible.role: Accessible.StaticText
    Accessible.name: getText(0, length)
    Keys.onPressed: event => {
        if (event.matches(StandardKey.Copy))
            text.copy();
        else if (event.matches(StandardKey.SelectAll))
            text.selectAll();
        else if (event.key === Qt.Key_Escape && text.selectedText !== "")
            text.deselect();
        else
            return;
        event.accepted = true;
    }

    WordPicker {
        id: words

        target: text
        onPicked: word => ContentView.handleExternalWordLookup(word)
    }
    DefinitionMenu {
        picker: words
    }
}
