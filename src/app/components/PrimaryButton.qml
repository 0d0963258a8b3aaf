import QtQuick
import Lexiquill

/// The one action that a place suggests.
PlainButton {
    property color accent: Theme.accent

    tint: "#FFFFFF"
    ground: accent
    hoveredGround: Qt.lighter(accent, 1.08)
    pressedGround: Qt.darker(accent, 1.18)
    font.weight: Font.Medium
}
