import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// The user's note on a word. Typed text stays until the editor loses focus, even if the stored note changes
/// meanwhile.
FocusScope {
    id: editor

    /// The note as it is stored.
    property string stored: ""
    property bool isEdited: false

    signal edited(notes: string)

    /// Emits `edited` if something has been typed.
    function finish(): void {
        if (area.preeditText !== "")
            (Qt.inputMethod as InputMethod).commit();
        if (!editor.isEdited)
            return;
        editor.isEdited = false;
        editor.edited(area.text);
        // If the word has been deleted, the text was not stored. The next word must not get it.
        editor.showStored();
    }

    function showStored(): void {
        if (area.text !== editor.stored)
            area.text = editor.stored;
        editor.isEdited = false;
    }

    implicitHeight: Math.max(Theme.px(60), area.implicitHeight)
    onStoredChanged: if (!isEdited)
        showStored()
    onVisibleChanged: if (!visible)
        finish()
    Component.onCompleted: showStored()
    Component.onDestruction: finish()

    // Save after a pause in typing, in case the process ends before the editor loses focus.
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
        padding: Theme.px(10)
        wrapMode: TextEdit.Wrap
        color: Theme.text
        selectionColor: Theme.selected
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
            border.color: Theme.focus
        }

        FieldMenu {}
        ThemedText {
            x: Theme.px(10)
            y: Theme.px(10)
            visible: area.length === 0 && area.preeditText === ""
            text: "写下联想、例句或易错点…"
            color: Theme.tertiaryText
            Accessible.ignored: true
        }
    }
}
