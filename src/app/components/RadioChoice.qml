import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A radio button in a group: its parent, which has the group's role and name. A group is one stop of the Tab key; the
/// arrow keys move within it, around its ends, and choose. The owner sets `checked` when a button is clicked.
T.RadioButton {
    id: control

    /// The group is a row: only the keys for left and right move in it.
    property bool isHorizontal: false
    /// Whether the Tab key leads to this button of the group.
    readonly property bool isStop: {
        if (control.activeFocus)
            return true;
        const all = control.peers();
        return (all.find(peer => peer.activeFocus) ?? all.find(peer => peer.checked) ?? all[0]) === control;
    }

    /// The buttons of the group that can be chosen.
    function peers(): list<RadioChoice> {
        const found = [];
        const items = control.parent?.children ?? [];
        for (let i = 0; i < items.length; ++i) {
            const peer = items[i] as RadioChoice;
            if (peer?.visible && peer.enabled)
                found.push(peer);
        }
        return found;
    }

    function choose(index: int): void {
        const all = control.peers();
        const peer = all[(index + all.length) % all.length];
        peer.forceActiveFocus(Qt.TabFocusReason);
        peer.clicked();
    }

    checkable: false
    focusPolicy: isStop ? Qt.StrongFocus : Qt.ClickFocus
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: control.clicked()
    Accessible.onToggleAction: control.clicked()
    Keys.onPressed: event => {
        const index = control.peers().indexOf(control);
        if (isHorizontal && (event.key === Qt.Key_Up || event.key === Qt.Key_Down))
            return;
        switch (event.key) {
        case Qt.Key_Up:
        case Qt.Key_Left:
            control.choose(index - 1);
            break;
        case Qt.Key_Down:
        case Qt.Key_Right:
            control.choose(index + 1);
            break;
        case Qt.Key_Home:
            control.choose(0);
            break;
        case Qt.Key_End:
            control.choose(-1);
            break;
        case Qt.Key_Return:
        case Qt.Key_Enter:
            control.clicked();
            break;
        default:
            return;
        }
        event.accepted = true;
    }
}
