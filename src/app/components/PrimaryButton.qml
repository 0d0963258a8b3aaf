import QtQuick
import Lexiquill

/// The button for the main action of a screen or sheet.
PlainButton {
    property color accent: Theme.accent

    tint: "#FFFFFF"
    ground: Theme.strong(accent)
    hoveredGround: Qt.darker(ground, 1.08)
    pressedGround: Qt.darker(ground, 1.18)
    font.weight: Font.Medium
}
