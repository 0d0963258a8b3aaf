import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// The user's note on a word. What is typed is kept until it is left, whatever changes meanwhile.
FocusScope {
    id: editor

    /// The note as it is stored.
    property string stored: ""
    property bool isEdited: false

    signal edited(notes: string)

    /// Hands over what has been typed.
    function finish(): void {
        if (area.preeditText !== "")
            (Qt.inputMethod as InputMethod).commit();
        if (!editor.isEdited)
            return;
        editor.isEdited = false;
        editor.edited(area.text);
        // A word that is gone has not taken it, and the next word must not get it.
        editor.showStored();
    }

    function showStored(): void {
        if (area.text !== editor.stored)
            area.text = editor.stored;
        editor.isEdited = false;
    }

    implicitHeight: Math.max(60, area.implicitHeight)
    onStoredChanged: if (!isEdited)
        showStored()
    onVisibleChanged: if (!visible)
        finish()
    Component.onCompleted: showStored()
    Component.onDestruction: finish()

    // A pause keeps what has been typed, should the process not live to see the note left.
    Timer {
        id: pause

        interval: 1500
        onTriggered: if (editor.isEdited && area.preeditText === "")
            editor.edited(area.text)
    }
    T.TextArea {
        id: area

        anchors.fill: parent
        implicitHeight: contentHeight + topPadding + bottomPadding
        focus: true
        padding: 10
        wrapMode: TextEdit.Wrap
        color: Theme.text
        selectionColor: Theme.accent
        selectedTextColor: "#FFFFFF"
        font.pixelSize: Theme.bodySize
        selectByMouse: true
        activeFocusOnTab: true
        textFormat: TextEdit.PlainText
        Accessible.role: Accessible.EditableText
        Accessible.name: "我的笔记"
        Keys.priority: Keys.BeforeItem
        Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
        Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        onTextChanged: if (activeFocus) {
            editor.isEdited = true;
            pause.restart();
        }
        onActiveFocusChanged: if (!activeFocus)
            editor.finish()

        background: Rectangle {
            radius: Theme.controlRadius
            color: Theme.isDark ? Theme.field : Theme.ground
            border.width: area.activeFocus ? 2 : 0
            border.color: Theme.accent
        }

        ThemedText {
            x: 10
            y: 10
            visible: area.length === 0 && area.preeditText === ""
            text: "写下联想、例句或易错点…"
            color: Theme.tertiaryText
            Accessible.ignored: true
        }
    }
}
