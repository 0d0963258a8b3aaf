import QtQuick
import Lexiquill

/// A thin line.
Rectangle {
    implicitHeight: 1
    implicitWidth: 1
    color: Theme.separator
}
