pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// A record of the wordbook in full, with the history of its reviews.
FocusScope {
    id: detail

    property string wordId: ""
    property Toast toast: null

    signal deleteRequested

    onWordIdChanged: area.contentY = 0
    Keys.onPressed: event => event.accepted = area.scrollByKey(event.key)

    ReviewHistory {
        id: reviews

        wordId: detail.wordId
    }
    ScrollArea {
        id: area

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: memory.visible ? memory.top : parent.bottom

        Column {
            width: area.contentWidth - Theme.px(12) // leaves room for the scroll bar
            topPadding: Theme.px(2)
            bottomPadding: 2 * Theme.unit
            spacing: 2 * Theme.unit

            DefinitionCard {
                id: definition

                width: parent.width
                wordId: detail.wordId
                toast: detail.toast
                showsDelete: false
            }
            Card {
                width: parent.width
                implicitHeight: column.implicitHeight + 2 * padding
                visible: definition.exists
                Accessible.role: Accessible.Grouping
                Accessible.name: "复习历史"

                Column {
                    id: column

                    width: parent.width
                    spacing: Theme.unit

                    ThemedText {
                        role: ThemedText.Heading
                        text: "复习历史"
                        Accessible.role: Accessible.Heading
                    }
                    ThemedText {
                        width: parent.width
                        role: ThemedText.Caption
                        text: reviews.summary
                        wrapMode: Text.Wrap
                    }
                    ReviewChart {
                        id: chart

                        width: parent.width
                        height: Theme.px(150)
                        visible: reviews.count > 0
                        history: reviews
                        textColor: Theme.secondaryText
                        gridColor: Theme.separator
                        intervalColor: Theme.accent
                        easeColor: Theme.purple
                        rememberedColor: Theme.green
                        forgottenColor: Theme.red
                        Accessible.role: Accessible.Chart
                        Accessible.name: "复习曲线"
                        Accessible.description: markedText === "" ? reviews.summary : markedText
                        Accessible.focusable: true

                        FocusRing {
                            anchors.margins: -Theme.px(4)
                            shown: chart.activeFocus
                        }
                    }
                    ThemedText {
                        width: parent.width
                        visible: chart.visible
                        role: ThemedText.Small
                        text: chart.markedText === "" ? "指针移到圆点上，或用左右方向键，可以看到每一次复习。" : chart.markedText
                        elide: Text.ElideRight
                    }
                    Flow {
                        width: parent.width
                        visible: reviews.count > 0
                        spacing: 2 * Theme.unit

                        LegendEntry {
                            text: "间隔"
                            tint: Theme.accent
                        }
                        LegendEntry {
                            text: "难度系数"
                            tint: Theme.purple
                        }
                        LegendEntry {
                            text: "记住了"
                            tint: Theme.green
                            isDot: true
                        }
                        LegendEntry {
                            text: "没记住"
                            tint: Theme.red
                            isDot: true
                        }
                    }
                    Repeater {
                        model: reviews.latest

                        Item {
                            id: entry

                            required property var modelData

                            width: column.width
                            height: Theme.px(24)
                            Accessible.role: Accessible.StaticText
                            Accessible.name: modelData.date + " " + modelData.answer + " " + modelData.result

                            ThemedText {
                                id: dateText

                                anchors.verticalCenter: parent.verticalCenter
                                width: Theme.px(86)
                                role: ThemedText.Caption
                                text: entry.modelData.date
                                Accessible.ignored: true
                            }
                            ThemedText {
                                anchors.left: dateText.right
                                anchors.verticalCenter: parent.verticalCenter
                                role: ThemedText.Caption
                                text: entry.modelData.answer
                                color: Theme.onTint(entry.modelData.remembered ? Theme.green : Theme.red)
                                Accessible.ignored: true
                            }
                            ThemedText {
                                anchors.right: parent.right
                                anchors.verticalCenter: parent.verticalCenter
                                role: ThemedText.Caption
                                text: entry.modelData.result
                                Accessible.ignored: true
                            }
                        }
                    }
                    Separator {
                        width: parent.width
                    }
                    Item {
                        width: parent.width
                        height: Theme.controlHeight

                        ThemedText {
                            anchors.left: parent.left
                            anchors.right: remove.left
                            anchors.rightMargin: Theme.unit
                            anchors.verticalCenter: parent.verticalCenter
                            role: ThemedText.Caption
                            text: reviews.searches
                            elide: Text.ElideRight
                        }
                        PlainButton {
                            id: remove

                            anchors.right: parent.right
                            symbol: "trash"
                            tint: Theme.onTint(Theme.red)
                            text: "删除"
                            onClicked: detail.deleteRequested()
                        }
                    }
                }
            }
        }
    }
    MemoryBar {
        id: memory

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        record: definition.record
    }
}
