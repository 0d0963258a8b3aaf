pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// Words to choose from. Keyboard focus stays in the search field, which moves the selection.
ListView {
    id: list

    required property SuggestionModel suggestions
    /// The word that the user selected; rows around it may be inserted and removed.
    property string wanted: ""
    readonly property int rowsPerPage: Math.max(1, Math.floor(height / Theme.px(36)) - 1)

    signal chosen(word: string)

    /// The selected word, if it is still among the rows.
    function selected(): string {
        const word = list.suggestions.wordAt(list.currentIndex);
        return word === list.wanted ? word : "";
    }

    /// Moves the selection by `rows`; moving up from the first row deselects.
    function move(rows: int): void {
        const from = list.selected() === "" ? -1 : list.currentIndex;
        list.currentIndex = Math.max(-1, Math.min(from + rows, list.count - 1));
        list.wanted = list.suggestions.wordAt(list.currentIndex);
    }

    function deselect(): void {
        list.currentIndex = -1;
        list.wanted = "";
    }

    clip: true
    model: suggestions
    currentIndex: -1
    reuseItems: true
    keyNavigationEnabled: false
    highlightMoveDuration: 0
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: false
    implicitHeight: contentHeight
    Accessible.role: Accessible.List
    Accessible.name: "建议"
    T.ScrollBar.vertical: ThinScrollBar {}

    delegate: T.ItemDelegate {
        id: row

        required property int index
        required property string word
        required property string summary
        required property string symbol

        width: list.width
        height: Theme.px(36)
        focusPolicy: Qt.NoFocus
        hoverEnabled: true
        highlighted: ListView.isCurrentItem && word === list.wanted
        // Hide pooled rows from assistive tools.
        ListView.onPooled: visible = false
        ListView.onReused: visible = true
        text: word
        Accessible.role: Accessible.ListItem
        Accessible.name: summary === "" ? word : word + "，" + summary
        Accessible.selected: highlighted
        Accessible.onPressAction: list.chosen(word)
        onClicked: list.chosen(word)

        background: Rectangle {
            radius: Theme.controlRadius
            color: row.highlighted ? Theme.selection : row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"
        }
        contentItem: Item {
            SymbolIcon {
                id: icon

                x: Theme.px(12)
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.px(15)
                height: Theme.px(15)
                symbol: row.symbol
                color: Theme.tertiaryText
            }
            ThemedText {
                id: wordText

                anchors.left: icon.right
                anchors.leftMargin: Theme.px(10)
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, parent.width * (summaryText.visible ? 0.5 : 0.85))
                text: row.word.replace(/\s+/g, " ")
                elide: Text.ElideRight
                maximumLineCount: 1
                Accessible.ignored: true
            }
            ThemedText {
                id: summaryText

                anchors.left: wordText.right
                anchors.leftMargin: Theme.px(12)
                anchors.right: parent.right
                anchors.rightMargin: Theme.px(12)
                anchors.verticalCenter: parent.verticalCenter
                visible: text !== ""
                role: ThemedText.Caption
                text: row.summary
                elide: Text.ElideRight
                maximumLineCount: 1
                Accessible.ignored: true
            }
        }
    }
}
