pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The search field; below it the suggestions, the progress of the lookup, or the definition.
FocusScope {
    id: screen

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

    Component.onCompleted: {
        if (ContentView.externalSelectedWord !== "")
            screen.lookUp(ContentView.externalSelectedWord);
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
    SearchSession {
        id: session

        onTextChanged: {
            suggestionList.deselect();
            if (field.text !== text)
                field.text = text;
        }
        onStateChanged: {
            scroll.contentY = 0;
            if (state === SearchSession.State.Found && card.children.length === 0)
                definitionCard.createObject(card);
            if (state === SearchSession.State.LookingUp)
                patience.restart();
            else
                patience.stop();
        }
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
        height: 40
        font.pixelSize: Theme.headingSize
        placeholderText: "输入英文单词或短语，也可以输入中文"
        Accessible.name: "查词"
        onTextChanged: session.text = text
        Keys.onReturnPressed: screen.confirm()
        Keys.onEnterPressed: screen.confirm()
        Keys.onDownPressed: if (suggestionList.visible)
            suggestionList.move(1)
        else
            scroll.flick(0, -600)
        Keys.onUpPressed: if (suggestionList.visible)
            suggestionList.move(-1)
        else
            scroll.flick(0, 600)
        Keys.onEscapePressed: if (suggestionList.selected() !== "")
            suggestionList.deselect()
        else
            clear()
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

        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            y: Math.min(80, parent.height / 4)
            visible: session.state === SearchSession.State.LookingUp && !patience.running
            spacing: 12

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
            x: 2 * Theme.unit + 12
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

        ThemedText {
            id: heading

            x: 2 * Theme.unit + 12
            y: missing.visible ? missing.y + missing.height + 2 * Theme.unit : 0
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
            anchors.horizontalCenter: parent.horizontalCenter
            y: Math.min(80, parent.height / 4)
            visible: session.state === SearchSession.State.Suggesting && suggestionList.count === 0
            text: field.text.trim() === "" ? "查过的单词会出现在这里" : "按回车键查询“" + field.text.trim() + "”"
            width: Math.min(implicitWidth, parent.width - 4 * Theme.unit)
            elide: Text.ElideMiddle
            color: Theme.secondaryText
        }

        ScrollArea {
            id: scroll

            anchors.fill: parent
            visible: session.state === SearchSession.State.Found

            Item {
                width: scroll.contentWidth
                height: card.height + 3 * Theme.unit

                Item {
                    id: card

                    x: 2 * Theme.unit
                    width: parent.width - 4 * Theme.unit
                    height: childrenRect.height
                }
            }
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
            onDeleted: session.forget()
        }
    }
    Toast {
        id: messages
    }
}
