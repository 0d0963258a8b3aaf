import QtQuick
import Lexiquill

/// A heading with a group of related settings below it.
Column {
    id: section

    required property string title
    property string note: ""
    default property alias content: rows.data
    property alias spacingOfRows: rows.spacing

    spacing: Theme.unit
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    ThemedText {
        leftPadding: Theme.px(4)
        text: section.title
        font.weight: Font.DemiBold
    }
    InsetPanel {
        width: parent.width
        height: rows.height + 2 * Theme.unit

        Column {
            id: rows

            x: 1.5 * Theme.unit
            y: Theme.unit
            width: parent.width - 3 * Theme.unit
            spacing: Theme.unit
        }
    }
    ThemedText {
        width: parent.width
        visible: section.note !== ""
        leftPadding: Theme.px(4)
        role: ThemedText.Caption
        text: section.note
        wrapMode: Text.Wrap
        lineHeight: Theme.lineHeight
    }
}
