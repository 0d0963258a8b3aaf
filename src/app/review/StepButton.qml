import QtQuick
import Lexiquill

/// A button for a step after a round; the main one stands out.
PrimaryButton {
    id: button

    /// Whether the step makes sense now.
    required property bool isOffered
    required property bool isMain

    visible: isOffered
    accent: isMain ? Theme.accent : Theme.fill
    tint: isMain ? "#FFFFFF" : Theme.text
}
