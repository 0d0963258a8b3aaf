import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A line between groups of commands in a menu.
T.MenuSeparator {
    verticalPadding: Theme.px(4)
    implicitHeight: Theme.px(9)
    contentItem: Separator {}
}
