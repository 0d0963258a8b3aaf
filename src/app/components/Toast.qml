import QtQuick
import Lexiquill

/// A short message at the bottom of its parent, with an optional action such as undo.
Rectangle {
    id: toast

    property string message: ""
    property string actionText: ""
    property int duration: 6000
    property var action: null
    /// The height that the content should leave free at the bottom, so that the message covers nothing.
    readonly property real reservedHeight: visible ? height + 4 * Theme.unit : 0

    /// Shows a message; `whenActed` is called if the user clicks the action while the message is shown.
    function show(text: string, actionName: string, whenActed: var): void {
        const isShown = toast.visible;
        toast.message = text;
        toast.actionText = actionName;
        toast.action = whenActed;
        toast.visible = true;
        timer.restart();
        if (isShown)
            Announcer.announce(toast);
    }

    function hide(): void {
        timer.stop();
        toast.visible = false;
        toast.action = null;
    }

    anchors.horizontalCenter: parent ? parent.horizontalCenter : undefined
    anchors.bottom: parent ? parent.bottom : undefined
    anchors.bottomMargin: 3 * Theme.unit
    z: 10
    visible: false
    width: Math.min(row.implicitWidth + 4 * Theme.unit, (parent ? parent.width : Theme.px(400)) - 4 * Theme.unit)
    height: Theme.px(44)
    radius: Theme.radius
    color: Theme.isDark ? "#3A3A3E" : "#2C2C2E"
    Accessible.role: Accessible.AlertMessage
    Accessible.name: message

    Timer {
        id: timer

        interval: toast.duration
        onTriggered: toast.hide()
    }
    Row {
        id: row

        anchors.left: parent.left
        anchors.leftMargin: 2 * Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2 * Theme.unit

        Text {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, (toast.parent ? toast.parent.width : Theme.px(400)) - (button.visible ? button.width + Theme.px(10) * Theme.unit : 8 * Theme.unit))
            text: toast.message
            color: "#FFFFFF"
            font.pixelSize: Theme.bodySize
            elide: Text.ElideRight
            textFormat: Text.PlainText
        }
        PlainButton {
            id: button

            anchors.verticalCenter: parent.verticalCenter
            visible: toast.actionText !== ""
            text: toast.actionText
            surface: toast.color
            tint: "#6CB6FF"
            ground: "#1FFFFFFF"
            hoveredGround: "#29FFFFFF"
            pressedGround: "#33FFFFFF"
            onClicked: {
                const act = toast.action;
                toast.hide();
                if (act)
                    act();
            }
        }
    }
}
