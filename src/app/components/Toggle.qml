import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// An on/off switch with a label.
T.Switch {
    id: control

    function change(): void {
        control.toggle();
        control.toggled();
    }

    implicitWidth: text === "" ? Theme.px(38) : label.implicitWidth
    implicitHeight: Math.max(Theme.px(24), label.implicitHeight)
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.45
    Accessible.name: text
    Accessible.onPressAction: control.change()
    Accessible.onToggleAction: control.change()

    indicator: Rectangle {
        id: track

        anchors.verticalCenter: parent.verticalCenter
        width: Theme.px(38)
        height: Theme.px(22)
        radius: Theme.px(11)
        color: control.checked ? Theme.green : Theme.isDark ? "#5A5A5F" : "#D1D1D6"
        border.width: 1
        // The fills alone have too little contrast.
        border.color: control.checked ? Theme.sign(Theme.green) : Theme.controlBorder

        Rectangle {
            x: control.checked ? Theme.px(18) : 2
            y: Theme.px(2)
            width: Theme.px(18)
            height: Theme.px(18)
            radius: Theme.px(9)
            color: "#FFFFFF"
            border.width: 1
            border.color: Contrast.readable(track.color, "#FFFFFF", 3)

            Behavior on x {
                NumberAnimation {
                    duration: 120
                }
            }
        }
        FocusRing {
            anchors.margins: -Theme.px(4)
            radius: Theme.px(15)
            shown: control.visualFocus
        }
    }
    contentItem: Text {
        id: label

        leftPadding: Theme.px(38) + Theme.unit
        text: control.text
        color: Theme.text
        font.pixelSize: Theme.bodySize
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
    }
}
