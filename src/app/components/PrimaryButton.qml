import QtQuick
import Lexiquill

/// The button for the main action of a screen or sheet.
PlainButton {
    property color accent: Theme.accent

    tint: "#FFFFFF"
    ground: accent
    hoveredGround: Qt.lighter(accent, 1.08)
    pressedGround: Qt.darker(accent, 1.18)
    font.weight: Font.Medium
}
