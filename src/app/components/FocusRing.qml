import QtQuick
import Lexiquill

/// The focus ring of its parent. It lies inside the edge, where no scroll area cuts it off, and has two lines, one of
/// which stands out on any ground.
Rectangle {
    id: ring

    /// Whether the control has keyboard focus.
    required property bool shown

    anchors.fill: parent
    color: "transparent"
    radius: Theme.controlRadius
    border.width: 2
    border.color: Theme.focus
    visible: shown

    Rectangle {
        anchors.fill: parent
        anchors.margins: Theme.px(2)
        color: "transparent"
        radius: Math.max(0, ring.radius - 2)
        border.width: 1
        border.color: Theme.focusGap
    }
}
