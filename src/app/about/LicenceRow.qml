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

        width: parent.width - licenceText.width - Theme.unit
        text: row.name + "  " + row.purpose
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    ThemedText {
        id: licenceText

        anchors.right: parent.right
        anchors.baseline: nameText.baseline
        width: Math.min(implicitWidth, 0.5 * parent.width)
        role: ThemedText.Caption
        horizontalAlignment: Text.AlignRight
        text: row.licence
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
}
