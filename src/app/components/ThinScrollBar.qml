import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A thin scroll bar; attach it with T.ScrollBar.vertical.
T.ScrollBar {
    id: control

    implicitWidth: 10
    implicitHeight: 10
    padding: 2
    visible: policy === T.ScrollBar.AlwaysOn || (policy === T.ScrollBar.AsNeeded && size < 1.0)
    minimumSize: 0.06
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: Theme.text
        opacity: control.pressed ? 0.7 : control.hovered ? 0.6 : 0.5
    }
}
