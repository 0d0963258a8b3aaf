import QtQuick
import Lexiquill

/// Shows that a control has the keyboard: fills its parent, a little outside of it.
Rectangle {
    /// Whether the control has the keyboard.
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
