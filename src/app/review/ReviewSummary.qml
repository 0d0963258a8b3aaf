import QtQuick
import Lexiquill

/// The result of the round, or a message that there is nothing to review.
FocusScope {
    id: summary

    /// As many words as fit.
    function listed(words: var): string {
        return words.slice(0, 40).join("、");
    }

    required property ReviewSession session
    readonly property bool isFinished: session.state === ReviewSession.State.Finished
    readonly property int answered: session.rememberedCount + session.forgottenCount

    /// A new round has begun.
    signal started

    ScrollArea {
        id: area

        anchors.fill: parent
        contentHeight: Math.max(height, content.height + 3 * Theme.unit)

        Column {
            id: content

            y: Math.max(0, (area.height - height) * 0.4)
            x: (area.contentWidth - width) / 2
            width: Math.min(440, area.contentWidth - 6 * Theme.unit)
            spacing: 1.5 * Theme.unit

            SymbolIcon {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 52
                height: 52
                symbol: summary.isFinished || summary.session.hasAnsweredToday ? "checkmark.seal.fill" : "tray"
                color: summary.isFinished || summary.session.hasAnsweredToday ? Theme.green : Theme.gray
            }
            ThemedText {
                width: parent.width
                role: ThemedText.Title
                text: summary.isFinished ? "本轮复习完成" : summary.session.hasAnsweredToday ? "今天的卡片都复习过了" : "本周没有需要复习的单词"
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
            }
            ThemedText {
                width: parent.width
                color: Theme.secondaryText
                text: {
                    if (!summary.isFinished)
                        return summary.session.hasAnsweredToday ? "明天再来，间隔会让记忆更牢固。" : "查词后，新单词会出现在这里。";
                    const rate = Math.round(100 * summary.session.rememberedCount / Math.max(1, summary.answered));
                    return "复习 " + summary.answered + " 词 · 记住 " + summary.session.rememberedCount + " · 没记住 " + summary.session.forgottenCount + " · 正确率 " + rate + "%";
                }
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                lineHeight: Theme.lineHeight
            }
            ThemedText {
                width: parent.width
                visible: summary.isFinished && summary.session.forgottenCount > 0
                role: ThemedText.Caption
                text: "没记住：" + summary.listed(summary.session.forgottenWords) + (summary.session.forgottenCount > 40 ? "…" : "")
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                lineHeight: Theme.lineHeight
            }
            Flow {
                id: actions

                readonly property real wanted: again.implicitWidth + (all.visible ? all.implicitWidth + spacing : 0)

                width: Math.min(parent.width, wanted)
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: Theme.unit

                PrimaryButton {
                    id: again

                    readonly property bool isOfForgotten: summary.isFinished && summary.session.forgottenCount > 0

                    focus: true
                    visible: summary.isFinished
                    width: implicitWidth
                    text: isOfForgotten ? "再练没记住的 " + summary.session.forgottenCount + " 词" : "继续复习"
                    onClicked: {
                        if (isOfForgotten)
                            summary.session.startWithForgotten();
                        else
                            summary.session.start();
                        summary.started();
                    }
                }
                PlainButton {
                    id: all

                    visible: summary.isFinished || summary.session.hasAnsweredToday
                    width: implicitWidth
                    text: "全部再来一遍"
                    onClicked: {
                        summary.session.start(true);
                        summary.started();
                    }
                }
            }
        }
    }
}
