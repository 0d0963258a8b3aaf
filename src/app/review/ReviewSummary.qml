pragma ComponentBehavior: Bound

import QtQuick
import Lexiquill

/// The result of the round and what is left to review, or a message that nothing is due.
FocusScope {
    id: summary

    required property ReviewSession session
    readonly property bool isFinished: session.state === ReviewSession.State.Finished
    readonly property int answered: session.rememberedCount + session.forgottenCount
    readonly property bool isGood: isFinished || session.reviewedToday > 0
    readonly property string title: {
        if (isFinished)
            return session.isPractice ? "本轮练习完成" : "本轮复习完成";
        if (session.dueLeft > 0)
            return "还有单词到期";
        if (session.reviewedToday > 0)
            return "今天的卡片都复习过了";
        return session.restLeft > 0 ? "现在没有到期的单词" : "本周没有需要复习的单词";
    }
    readonly property string result: {
        if (isFinished) {
            const rate = Math.round(100 * session.rememberedCount / Math.max(1, answered));
            const counts = " " + answered + " 词 · 记住 " + session.rememberedCount + " · 没记住 " + session.forgottenCount + " · 正确率 " + rate + "%";
            return (session.isPractice ? "练习" : "复习") + counts;
        }
        if (session.dueLeft > 0 || session.restLeft > 0)
            return "";
        return session.reviewedToday > 0 ? "明天再来，间隔会让记忆更牢固。" : "查词后，新单词会出现在这里。";
    }
    readonly property string remaining: {
        if (session.dueLeft > 0)
            return "还有 " + session.dueLeft + " 词到期";
        return session.restLeft > 0 ? "到期的单词都复习完了，本周计划中还有 " + session.restLeft + " 词" : "";
    }
    /// The button for the most likely next step; without any button the text gets the keyboard.
    readonly property Item mainItem: actions.buttons.find(button => button.isOffered) ?? texts

    /// As many words as fit.
    function listed(words: var): string {
        return words.slice(0, 40).join("、") + (words.length > 40 ? "…" : "");
    }

    onMainItemChanged: mainItem.focus = true
    onVisibleChanged: if (visible)
        mainItem.focus = true

    ScrollArea {
        id: area

        anchors.fill: parent
        contentHeight: Math.max(height, content.height + 3 * Theme.unit)

        Column {
            id: content

            y: Math.max(0, (area.height - height) * 0.4)
            x: (area.contentWidth - width) / 2
            width: Math.min(Theme.px(440), area.contentWidth - 6 * Theme.unit)
            spacing: 1.5 * Theme.unit

            SymbolIcon {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Theme.px(52)
                height: Theme.px(52)
                symbol: summary.isGood ? "checkmark.seal.fill" : "tray"
                color: summary.isGood ? Theme.green : Theme.gray
            }
            Column {
                id: texts

                readonly property var parts: [summary.title, summary.result, summary.remaining]

                width: parent.width
                spacing: 1.5 * Theme.unit
                activeFocusOnTab: summary.mainItem === this
                Accessible.role: Accessible.StaticText
                Accessible.focusable: activeFocusOnTab
                Accessible.name: parts.filter(text => text !== "").join("。")

                ThemedText {
                    width: parent.width
                    role: ThemedText.Title
                    text: summary.title
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    Accessible.role: Accessible.Heading
                }
                ThemedText {
                    width: parent.width
                    visible: text !== ""
                    color: Theme.secondaryText
                    text: summary.result
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    lineHeight: Theme.lineHeight
                }
                ThemedText {
                    width: parent.width
                    visible: text !== ""
                    color: Theme.secondaryText
                    text: summary.remaining
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    lineHeight: Theme.lineHeight
                }
                ThemedText {
                    width: parent.width
                    visible: summary.isFinished && summary.session.forgottenCount > 0
                    role: ThemedText.Caption
                    text: "没记住：" + summary.listed(summary.session.forgottenWords)
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    lineHeight: Theme.lineHeight
                }
            }
            Flow {
                id: actions

                readonly property var buttons: [forgotten, due, rest, again]
                readonly property real wanted: buttons.reduce((sum, button) => button.isOffered ? sum + button.implicitWidth + spacing : sum, 0)

                width: Math.max(0, Math.min(parent.width, wanted))
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: Theme.unit

                StepButton {
                    id: forgotten

                    isMain: summary.mainItem === forgotten
                    isOffered: summary.isFinished && summary.session.forgottenCount > 0
                    text: "再练没记住的 " + summary.session.forgottenCount + " 词"
                    onClicked: summary.session.practiseForgotten()
                }
                StepButton {
                    id: due

                    isMain: summary.mainItem === due
                    isOffered: summary.session.dueLeft > 0
                    text: "继续复习 " + Math.min(summary.session.dueLeft, summary.session.roundSize) + " 词"
                    onClicked: summary.session.start()
                }
                StepButton {
                    id: rest

                    isMain: summary.mainItem === rest
                    isOffered: summary.session.dueLeft === 0 && summary.session.restLeft > 0
                    text: "复习其余 " + Math.min(summary.session.restLeft, summary.session.roundSize) + " 词"
                    onClicked: summary.session.startWithRest()
                }
                StepButton {
                    id: again

                    isMain: summary.mainItem === again
                    isOffered: summary.isFinished || summary.session.reviewedToday > 0
                    text: "全部再来一遍"
                    Accessible.description: "练习，不影响复习安排"
                    onClicked: summary.session.practiseAgain()
                }
            }
            ThemedText {
                width: parent.width
                visible: forgotten.isOffered || again.isOffered
                role: ThemedText.Caption
                text: "再练一遍只是练习，不影响复习安排"
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
            }
        }
    }
}
