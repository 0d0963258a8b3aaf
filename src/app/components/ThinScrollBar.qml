import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A thin scroll bar; attach it with T.ScrollBar.vertical.
T.ScrollBar {
    id: control

    implicitWidth: Theme.px(10)
    implicitHeight: Theme.px(10)
    padding: Theme.px(2)
    visible: policy === T.ScrollBar.AlwaysOn || (policy === T.ScrollBar.AsNeeded && size < 1.0)
    minimumSize: 0.06
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: Theme.px(6)
        implicitHeight: Theme.px(6)
        radius: Theme.px(3)
        color: Theme.text
        opacity: control.pressed ? 0.7 : control.hovered ? 0.6 : 0.5
    }
}
