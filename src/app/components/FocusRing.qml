import QtQuick
import Lexiquill

/// The focus ring of its parent, drawn slightly outside it.
Rectangle {
    /// Whether the control has keyboard focus.
    required property bool shown

    anchors.fill: parent
    anchors.margins: -2
    color: "transparent"
    radius: Theme.controlRadius + 2
    border.width: 2
    border.color: Theme.accent
    opacity: 0.75
    visible: shown
}
