import QtQuick
import Lexiquill

/// A hairline.
Rectangle {
    implicitHeight: 1
    implicitWidth: 1
    color: Theme.separator
}
