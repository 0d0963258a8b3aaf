pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// What a card shows, on both sides.
ScrollArea {
    id: area

    required property ReviewSession session
    required property WordCard record
    required property SpellingAttempt attempt
    required property bool asksSpelling
    required property Pronunciation pronunciation
    required property string pronunciationKey
    readonly property bool isRevealed: session.state === ReviewSession.State.Revealed
    readonly property bool hidesWord: asksSpelling && !isRevealed
    /// The beginning of the shown meaning; empty while only the word is shown.
    readonly property string summary: {
        if (questions.count > 0)
            return (questions.itemAt(0) as SpellingQuestion)?.summary ?? "";
        return backs.count > 0 ? (backs.itemAt(0) as CardBack)?.summary ?? "" : "";
    }

    signal pronounced

    contentHeight: Math.max(height, content.height)

    Column {
        id: content

        readonly property bool isTop: area.isRevealed || area.asksSpelling
        readonly property real availableWidth: width - 2 * padding

        y: isTop ? 0 : Math.max(0, (area.height - height) * 0.42)
        width: area.contentWidth
        padding: area.height < 240 ? Theme.unit : 2 * Theme.unit
        spacing: Theme.unit

        ThemedText {
            width: content.availableWidth
            visible: !area.hidesWord
            role: ThemedText.Headword
            font.pixelSize: area.isRevealed ? Theme.headwordSize : text.length > 24 ? Theme.px(30) : Theme.px(38)
            text: area.session.word
            wrapMode: Text.Wrap
            maximumLineCount: 6
            elide: Text.ElideRight
            horizontalAlignment: area.isRevealed ? Text.AlignLeft : Text.AlignHCenter
            Accessible.role: Accessible.Heading
        }
        Row {
            x: content.isTop ? content.padding : (content.width - width) / 2
            spacing: Theme.unit

            ThemedText {
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, content.availableWidth - speaker.width - parent.spacing)
                visible: text !== ""
                color: Theme.secondaryText
                text: area.hidesWord ? "写出这个单词" : area.record.phonetic
                font.pixelSize: area.hidesWord ? Theme.bodySize : Theme.px(16)
                elide: Text.ElideRight
            }
            IconButton {
                id: speaker

                symbol: "speaker.wave.2"
                text: area.pronunciation.isFetching ? "正在获取发音" : "朗读"
                help: text + " (" + area.pronunciationKey + ")"
                tint: Theme.accent
                opacity: area.pronunciation.isFetching ? 0.5 : 1
                onClicked: area.pronounced()
            }
        }
        // The sides are created when they are shown.
        Repeater {
            id: questions

            model: area.hidesWord && area.session.wordId !== "" ? 1 : 0

            SpellingQuestion {
                width: content.availableWidth
                wordId: area.session.wordId
            }
        }
        Repeater {
            id: backs

            model: area.isRevealed ? 1 : 0

            CardBack {
                width: content.availableWidth
                record: area.record
                attempt: area.attempt
            }
        }
    }
}
