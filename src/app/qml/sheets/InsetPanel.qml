import QtQuick
import Lexiquill

/// A faintly tinted area inside a sheet.
Rectangle {
    radius: Theme.radius
    color: Theme.isDark ? Qt.rgba(1, 1, 1, 0.055) : Qt.rgba(0, 0, 0, 0.035)
}
