pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// One word: its spelling and phonetic, and its meaning once revealed.
Rectangle {
    id: card

    required property ReviewSession session
    readonly property bool isRevealed: session.state === ReviewSession.State.Revealed

    /// Scrolls a long meaning.
    function scrollBy(distance: real): void {
        area.contentY = Math.max(0, Math.min(Math.max(0, area.contentHeight - area.height), area.contentY + distance));
    }

    color: Theme.card
    radius: Theme.radius
    Accessible.role: Accessible.Grouping
    Accessible.name: session.word

    Connections {
        target: card.session

        function onChanged(): void {
            if (card.session.state === ReviewSession.State.Asking)
                area.contentY = 0;
        }
    }
    TapHandler {
        onTapped: card.session.reveal()
    }
    ScrollArea {
        id: area

        anchors.fill: parent
        anchors.margins: Theme.unit
        contentHeight: Math.max(height, content.height)

        Column {
            id: content

            y: Math.max(0, (area.height - height) * (card.isRevealed ? 0 : 0.42))
            width: area.contentWidth
            padding: 2 * Theme.unit
            spacing: Theme.unit

            readonly property real availableWidth: width - 2 * padding

            ThemedText {
                width: content.availableWidth
                role: ThemedText.Headword
                font.pixelSize: card.isRevealed ? Theme.headwordSize : text.length > 24 ? 30 : 38
                text: card.session.word
                wrapMode: Text.Wrap
                maximumLineCount: 6
                elide: Text.ElideRight
                horizontalAlignment: card.isRevealed ? Text.AlignLeft : Text.AlignHCenter
                Accessible.role: Accessible.Heading
            }
            ThemedText {
                width: content.availableWidth
                visible: text !== ""
                color: Theme.secondaryText
                text: card.session.phonetic
                font.pixelSize: 16
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
                horizontalAlignment: card.isRevealed ? Text.AlignLeft : Text.AlignHCenter
            }
            Row {
                spacing: Theme.unit
                visible: card.isRevealed

                Tag {
                    text: card.session.status
                    tint: Theme.badgeColor(card.session.badge)
                }
                ThemedText {
                    anchors.verticalCenter: parent.verticalCenter
                    role: ThemedText.Caption
                    text: card.session.memory
                }
            }
            CardMeaning {
                width: content.availableWidth
                visible: card.isRevealed
                isShown: card.isRevealed
                session: card.session
            }
        }
    }
}
