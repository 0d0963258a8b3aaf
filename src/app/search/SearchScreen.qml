pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The search field; below it the suggestions, the progress of the lookup, or the definition.
FocusScope {
    id: screen

    readonly property DefinitionCard card: cardPlace.children.length > 0 ? cardPlace.children[0] as DefinitionCard : null
    readonly property bool isFound: session.state === SearchSession.State.Found
    /// The last deletion on the card can be undone by a key until the user goes on.
    property bool canUndoDeletion: false

    focus: true

    function lookUp(word: string): void {
        session.lookUp(word);
        screen.takeKeyboard();
    }

    function takeKeyboard(): void {
        if (ContentView.hasSheet())
            field.focus = true;
        else
            field.forceActiveFocus();
        field.selectAll();
    }

    function go(forward: bool): void {
        if (forward ? session.goForward() : session.goBack())
            screen.takeKeyboard();
    }

    function undoDeletion(): void {
        screen.canUndoDeletion = false;
        messages.hide();
        screen.card?.undoRemoval();
        session.goBack();
        screen.takeKeyboard();
    }

    Component.onCompleted: {
        if (ContentView.externalSelectedWord !== "")
            screen.lookUp(ContentView.externalSelectedWord);
    }
    // Keys that no item has used, for example while a part of the definition is selected.
    Keys.onPressed: event => {
        const isPlain = (event.modifiers & ~(Qt.ShiftModifier | Qt.KeypadModifier)) === 0;
        if (event.matches(StandardKey.Undo) && screen.canUndoDeletion)
            screen.undoDeletion();
        else if (event.key === Qt.Key_Escape && !field.activeFocus)
            screen.takeKeyboard();
        else if (screen.isFound && scroll.scrollByKey(event.key)) {
            // The key has been used.
        } else if (!field.activeFocus && isPlain && event.text.trim() !== "" && event.text >= " ") {
            // Typing goes on in the search field, wherever the pointer has been.
            field.forceActiveFocus();
            field.text = event.text;
        } else {
            return;
        }
        event.accepted = true;
    }

    Connections {
        target: ContentView

        function onFocusSearchInput(): void {
            screen.takeKeyboard();
        }
        function onPerformExternalLookup(word: string): void {
            screen.lookUp(word);
        }
    }
    Shortcut {
        enabled: screen.visible
        sequence: "Alt+Left"
        onActivated: screen.go(false)
    }
    Shortcut {
        enabled: screen.visible
        sequence: "Alt+Right"
        onActivated: screen.go(true)
    }
    SearchSession {
        id: session

        onTextChanged: {
            suggestionList.deselect();
            if (field.text !== text)
                field.text = text;
            if (text !== "")
                screen.canUndoDeletion = false;
        }
        onStateChanged: {
            scroll.contentY = 0;
            if (state === SearchSession.State.Found) {
                Greeting.dismiss();
                if (!screen.card) {
                    definitionCard.createObject(cardPlace);
                    memoryBar.createObject(memoryPlace);
                }
            }
            if (state === SearchSession.State.LookingUp)
                patience.restart();
            else
                patience.stop();
        }
        onFound: if (Preferences.pronouncesCards)
            screen.card.pronounceIfShown()
    }
    Binding {
        target: ContentView
        property: "isSearching"
        value: field.text !== "" || field.inputMethodComposing || session.state !== SearchSession.State.Suggesting
    }
    // A quick lookup shows no progress message.
    Timer {
        id: patience

        interval: 150
    }

    SearchField {
        id: field

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 2 * Theme.unit
        focus: true
        height: Theme.px(40)
        font.pixelSize: Theme.headingSize
        placeholderText: "输入英文单词或短语，也可以输入中文"
        Accessible.name: "查词"
        onTextChanged: session.text = text
        Keys.onReturnPressed: screen.confirm()
        Keys.onEnterPressed: screen.confirm()
        Keys.onPressed: event => {
            // The field would undo its own text, which is the deleted word.
            if (event.matches(StandardKey.Undo) && screen.canUndoDeletion)
                screen.undoDeletion();
            else if (suggestionList.visible && event.key === Qt.Key_Down)
                suggestionList.move(1);
            else if (suggestionList.visible && event.key === Qt.Key_Up)
                suggestionList.move(-1);
            else if (suggestionList.visible && event.key === Qt.Key_PageDown)
                suggestionList.move(suggestionList.rowsPerPage);
            else if (suggestionList.visible && event.key === Qt.Key_PageUp)
                suggestionList.move(-suggestionList.rowsPerPage);
            else if (screen.isFound && event.modifiers === Qt.ControlModifier && (event.key === Qt.Key_Home || event.key === Qt.Key_End))
                scroll.scrollByKey(event.key);
            else
                return;
            event.accepted = true;
        }
        Keys.onEscapePressed: event => {
            if (suggestionList.selected() !== "")
                suggestionList.deselect();
            else if (text !== "")
                clear();
            else
                event.accepted = false;
        }
    }

    function confirm(): void {
        const chosen = suggestionList.visible ? suggestionList.selected() : "";
        screen.lookUp(chosen !== "" ? chosen : field.text);
    }

    Item {
        id: detail

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: field.bottom
        anchors.bottom: parent.bottom
        anchors.topMargin: Theme.unit
        // A message covers nothing.
        anchors.bottomMargin: messages.reservedHeight

        TapHandler {
            acceptedButtons: Qt.BackButton | Qt.ForwardButton
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: (point, button) => screen.go(button === Qt.ForwardButton)
        }

        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            y: Math.min(Theme.px(80), parent.height / 4)
            visible: session.state === SearchSession.State.LookingUp && !patience.running
            spacing: Theme.px(12)

            ThemedText {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Math.min(implicitWidth, detail.width - 4 * Theme.unit)
                text: "正在查询“" + session.word + "”…"
                color: Theme.secondaryText
                elide: Text.ElideMiddle
                Accessible.role: Accessible.AlertMessage
            }
            ProgressBar {
                anchors.horizontalCenter: parent.horizontalCenter
                indeterminate: true
                Accessible.ignored: true
            }
            ThemedText {
                anchors.horizontalCenter: parent.horizontalCenter
                role: ThemedText.Small
                text: "继续输入即可放弃"
            }
        }

        Column {
            id: missing

            // Aligned with the symbols of the suggestions.
            x: 2 * Theme.unit + Theme.px(12)
            y: Theme.unit
            width: parent.width - x - 2 * Theme.unit
            visible: session.state === SearchSession.State.NotFound
            spacing: Theme.unit

            ThemedText {
                width: parent.width
                role: ThemedText.Heading
                // Hidden texts load their fonts, too, and a bold Chinese font takes megabytes of memory.
                font.weight: missing.visible ? Font.DemiBold : Font.Normal
                text: "没有找到“" + session.word + "”"
                wrapMode: Text.Wrap
                maximumLineCount: 3
                elide: Text.ElideRight
                Accessible.role: Accessible.AlertMessage
            }
            ThemedText {
                width: parent.width
                text: session.missingText
                color: Theme.secondaryText
                wrapMode: Text.Wrap
                lineHeight: Theme.lineHeight
            }
        }
        Loader {
            id: greeting

            x: 2 * Theme.unit
            width: parent.width - 4 * Theme.unit
            active: Greeting.isShown
            visible: active && session.state === SearchSession.State.Suggesting && field.text === ""
            source: active ? "GreetingCard.qml" : ""
        }

        ThemedText {
            id: heading

            x: 2 * Theme.unit + Theme.px(12)
            y: missing.visible ? missing.y + missing.height + 2 * Theme.unit : greeting.visible ? greeting.height + 2 * Theme.unit : 0
            visible: suggestionList.visible && suggestionList.count > 0 && text !== ""
            role: ThemedText.Caption
            text: missing.visible ? "你要找的是不是" : field.text.trim() === "" ? "最近查询" : ""
        }
        SuggestionList {
            id: suggestionList

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: heading.visible ? heading.bottom : missing.visible ? missing.bottom : parent.top
            anchors.topMargin: heading.visible ? 4 : 0
            anchors.bottom: parent.bottom
            anchors.leftMargin: 2 * Theme.unit
            anchors.rightMargin: 2 * Theme.unit
            visible: session.state === SearchSession.State.Suggesting || session.state === SearchSession.State.NotFound
            suggestions: session.suggestions
            onChosen: word => screen.lookUp(word)
        }
        ThemedText {
            // A text that was pasted may have line breaks.
            readonly property string typed: field.text.replace(/\s+/g, " ").trim()

            anchors.horizontalCenter: parent.horizontalCenter
            y: Math.min(Theme.px(80), parent.height / 4)
            visible: session.state === SearchSession.State.Suggesting && suggestionList.count === 0 && !greeting.visible
            text: typed === "" ? "查过的单词会出现在这里" : "按回车键查询“" + typed + "”"
            width: Math.min(implicitWidth, parent.width - 4 * Theme.unit)
            elide: Text.ElideMiddle
            maximumLineCount: 1
            color: Theme.secondaryText
        }

        ScrollArea {
            id: scroll

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.bottom: memoryPlace.top
            visible: screen.isFound

            Item {
                width: scroll.contentWidth
                height: cardPlace.height + 2 * Theme.unit

                Item {
                    id: cardPlace

                    x: 2 * Theme.unit
                    width: parent.width - 4 * Theme.unit
                    height: childrenRect.height
                }
            }
        }
        Item {
            id: memoryPlace

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            height: screen.isFound && children.length > 0 ? children[0].height : 0
            visible: screen.isFound
        }
    }

    // Created for the first definition, then reused.
    Component {
        id: definitionCard

        DefinitionCard {
            width: parent?.width ?? 0
            height: implicitHeight
            wordId: session.wordId
            sourceText: session.sourceText
            askedForm: session.askedForm
            toast: messages
            onDeleted: {
                session.forget();
                screen.canUndoDeletion = true;
                field.forceActiveFocus();
            }
            onUndone: screen.undoDeletion()
        }
    }
    Component {
        id: memoryBar

        MemoryBar {
            width: parent?.width ?? 0
            height: implicitHeight
            record: screen.card.record
        }
    }
    Toast {
        id: messages
    }
}
