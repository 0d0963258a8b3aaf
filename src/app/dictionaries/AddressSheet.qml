import QtQuick
import Lexiquill

/// Asks for the address of a dictionary.
Sheet {
    id: sheet

    readonly property string addressProblem: DictionaryImports.addressProblem(address.text)
    readonly property string checksumProblem: DictionaryImports.checksumProblem(checksum.text)
    readonly property bool isReady: address.text.trim() !== "" && addressProblem === "" && checksumProblem === "" && DictionaryImports.state === DictionaryImports.State.Idle

    function add(): void {
        if (!sheet.isReady)
            return;
        DictionaryImports.openAddress(address.text, checksum.text);
        address.clear();
        checksum.clear();
        sheet.dismissed();
    }

    title: "从网址添加词典"
    width: Math.min(Theme.px(480), parent ? parent.width - 4 * Theme.unit : Theme.px(480))

    Column {
        width: parent?.width ?? 0
        spacing: Theme.unit

        ThemedText {
            text: "网址"
        }
        TextInputField {
            id: address

            width: parent.width
            focus: true
            placeholderText: "https://"
            Accessible.name: "词典的网址"
            inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
            onAccepted: sheet.add()
        }
        MessageLine {
            width: parent.width
            kind: MessageLine.Failure
            text: sheet.addressProblem
        }
        ThemedText {
            topPadding: Theme.unit
            text: "SHA-256 校验和（可不填）"
        }
        TextInputField {
            id: checksum

            width: parent.width
            placeholderText: "64 位十六进制数字"
            Accessible.name: "SHA-256 校验和"
            inputMethodHints: Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
            onAccepted: sheet.add()
        }
        MessageLine {
            width: parent.width
            kind: MessageLine.Failure
            text: sheet.checksumProblem
        }
        Row {
            anchors.right: parent.right
            topPadding: Theme.unit
            spacing: Theme.unit

            PlainButton {
                text: "取消"
                onClicked: sheet.dismissed()
            }
            PrimaryButton {
                text: "下载并添加"
                enabled: sheet.isReady
                onClicked: sheet.add()
            }
        }
    }
}
