pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A disclosure with what each of the offline dictionaries says about a word.
Column {
    id: view

    required property WordCard card

    visible: dictionaries.isOffered
    spacing: Theme.px(4)

    component Disclosure: T.AbstractButton {
        id: control

        property bool isOpen: false
        property string detail: ""

        implicitHeight: Theme.controlHeight
        focusPolicy: Qt.StrongFocus
        hoverEnabled: true
        Accessible.name: text
        Accessible.description: detail
        Accessible.checkable: true
        Accessible.checked: isOpen
        Accessible.onPressAction: control.clicked()
        Accessible.onToggleAction: control.clicked()
        Keys.onReturnPressed: clicked()
        Keys.onEnterPressed: clicked()

        contentItem: Item {
            SymbolIcon {
                id: arrow

                anchors.verticalCenter: parent.verticalCenter
                x: Theme.px(4)
                width: Theme.px(12)
                height: Theme.px(12)
                symbol: "chevron.left"
                color: Theme.secondaryText
                rotation: control.isOpen ? 270 : 180
            }
            ThemedText {
                id: label

                anchors.left: arrow.right
                anchors.leftMargin: Theme.unit
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, control.detail === "" || control.isOpen ? parent.width - x : parent.width / 2.5)
                role: control.detail === "" ? ThemedText.Caption : ThemedText.Body
                text: control.text
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            ThemedText {
                anchors.left: label.right
                anchors.leftMargin: 1.5 * Theme.unit
                anchors.right: parent.right
                anchors.rightMargin: Theme.unit
                anchors.verticalCenter: parent.verticalCenter
                visible: control.detail !== "" && !control.isOpen
                role: ThemedText.Caption
                text: control.detail
                elide: Text.ElideRight
                Accessible.ignored: true
            }
        }
        background: Rectangle {
            radius: Theme.controlRadius
            color: control.down ? Theme.pressed : control.hovered ? Theme.hover : "transparent"

            FocusRing {
                shown: control.visualFocus
            }
        }
    }

    Disclosure {
        width: parent.width
        text: "其他词典"
        isOpen: dictionaries.isOpen
        onClicked: dictionaries.isOpen = !dictionaries.isOpen
    }
    Column {
        width: parent.width
        visible: dictionaries.isOpen

        ThemedText {
            visible: text !== ""
            leftPadding: 3 * Theme.unit
            role: ThemedText.Caption
            text: answers.count > 0 ? "" : dictionaries.isLoading ? "正在查找…" : "其他词典中没有这个词"
        }
        Repeater {
            id: answers

            model: OtherDictionaries {
                id: dictionaries

                card: view.card
                word: view.card.headword
            }

            Column {
                id: answer

                required property int index
                required property string name
                required property string summary
                required property string article
                required property bool isOpen

                width: parent?.width ?? 0

                Disclosure {
                    width: parent.width
                    text: answer.name
                    detail: answer.summary
                    isOpen: answer.isOpen
                    onClicked: dictionaries.toggle(answer.index)
                }
                DictionaryArticle {
                    x: 3 * Theme.unit
                    width: parent.width - x
                    visible: answer.isOpen && answer.article !== ""
                    bottomPadding: 1.5 * Theme.unit
                    text: answer.isOpen ? answer.article : ""
                }
            }
        }
    }
}
