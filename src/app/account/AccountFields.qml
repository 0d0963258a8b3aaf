import QtQuick
import Lexiquill

/// The input fields for login and registration.
FocusScope {
    id: scope

    required property AccountView account

    /// The user pressed Return in the last field.
    signal accepted

    implicitHeight: fields.implicitHeight

    Column {
        id: fields

        width: parent.width
        spacing: 1.5 * Theme.unit

        SegmentedControl {
            width: parent.width
            name: "登录或注册"
            choices: ["登录已有账号", "注册新账号"]
            currentIndex: scope.account.isRegisterMode ? 1 : 0
            onChosen: index => scope.account.isRegisterMode = index === 1
        }
        TextInputField {
            id: nameField

            width: parent.width
            focus: true
            symbol: "person.crop.circle"
            placeholderText: "用户名"
            text: scope.account.username
            onTextEdited: scope.account.username = text
            onAccepted: passwordField.forceActiveFocus(Qt.TabFocusReason)
        }
        TextInputField {
            id: passwordField

            width: parent.width
            symbol: "lock"
            placeholderText: "密码"
            echoMode: TextInput.Password
            Accessible.name: "密码"
            Accessible.passwordEdit: true
            inputMethodHints: Qt.ImhHiddenText | Qt.ImhSensitiveData | Qt.ImhNoPredictiveText
            text: scope.account.password
            onTextEdited: scope.account.password = text
            onAccepted: scope.accepted()
        }
    }
}
