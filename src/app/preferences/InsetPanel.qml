import QtQuick
import Lexiquill

/// A faintly tinted area inside a sheet.
Rectangle {
    radius: Theme.radius
    color: Theme.isDark ? Qt.rgba(0, 0, 0, 0.22) : Qt.rgba(0, 0, 0, 0.035)
}
