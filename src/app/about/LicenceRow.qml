import QtQuick
import Lexiquill

/// The name of a library and its licence.
Item {
    id: row

    required property string name
    required property string purpose
    required property string licence

    implicitHeight: Math.max(nameText.implicitHeight, licenceText.implicitHeight) + 6
    Accessible.role: Accessible.StaticText
    Accessible.name: name + "，" + purpose + "，许可证 " + licence

    ThemedText {
        id: nameText

        width: 0.5 * parent.width
        text: row.name + "  " + row.purpose
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    ThemedText {
        id: licenceText

        anchors.right: parent.right
        width: 0.5 * parent.width - Theme.unit
        role: ThemedText.Caption
        horizontalAlignment: Text.AlignRight
        text: row.licence
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
}
