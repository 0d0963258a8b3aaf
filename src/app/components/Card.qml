import QtQuick
import Lexiquill

/// A white or dark area with rounded corners; its content lies inside the padding.
Rectangle {
    id: card

    default property alias content: inner.data
    property int padding: 2 * Theme.unit

    implicitWidth: inner.childrenRect.width + 2 * padding
    implicitHeight: inner.childrenRect.height + 2 * padding
    color: Theme.card
    radius: Theme.radius

    Item {
        id: inner

        anchors.fill: parent
        anchors.margins: card.padding
    }
}
