import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A progress bar; moves back and forth while the progress is unknown.
T.ProgressBar {
    id: control

    property color tint: Theme.accent

    implicitWidth: Theme.px(160)
    implicitHeight: Theme.px(6)

    background: Rectangle {
        radius: height / 2
        color: Theme.track
    }
    contentItem: Item {
        clip: true

        Rectangle {
            id: bar

            property real phase

            x: control.indeterminate ? phase * (parent.width - width) : 0
            width: control.indeterminate ? parent.width * 0.3 : parent.width * control.position
            height: parent.height
            radius: height / 2
            color: Contrast.readable(control.tint, Theme.track, 3)

            SequentialAnimation on phase {
                running: control.indeterminate && control.visible
                loops: Animation.Infinite

                NumberAnimation {
                    to: 1
                    duration: 900
                    easing.type: Easing.InOutQuad
                }
                NumberAnimation {
                    to: 0
                    duration: 900
                    easing.type: Easing.InOutQuad
                }
            }
        }
    }
}
