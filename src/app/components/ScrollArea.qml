import QtQuick
import QtQuick.Templates as T
import Lexiquill

/// A vertical scroll area. Put one item into it and bind the item's width to `contentWidth`.
Flickable {
    id: area

    readonly property Item focusItem: Window.activeFocusItem

    clip: true
    contentWidth: width
    contentHeight: contentItem.childrenRect.height
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: ThinScrollBar {}
    // Keyboard focus may move to an item outside the visible part.
    onFocusItemChanged: {
        let ancestor = focusItem;
        while (ancestor && ancestor !== contentItem)
            ancestor = ancestor.parent;
        if (ancestor)
            reveal(focusItem);
    }

    /// Scrolls by a line, a page, or to an end. False for a key that does not scroll.
    function scrollByKey(key: int): bool {
        const page = Math.max(0, area.height - 4 * Theme.unit);
        switch (key) {
        case Qt.Key_Up:
            return scrollTo(area.contentY - 6 * Theme.unit);
        case Qt.Key_Down:
            return scrollTo(area.contentY + 6 * Theme.unit);
        case Qt.Key_PageUp:
            return scrollTo(area.contentY - page);
        case Qt.Key_PageDown:
            return scrollTo(area.contentY + page);
        case Qt.Key_Home:
            return scrollTo(0);
        case Qt.Key_End:
            return scrollTo(area.contentHeight);
        default:
            return false;
        }
    }

    /// Scrolls to a height of the content, as far as there is content.
    function scrollTo(y: real): bool {
        area.contentY = Math.max(0, Math.min(Math.max(0, area.contentHeight - area.height), y));
        return true;
    }

    /// Scrolls as little as needed to show the item.
    function reveal(item: Item): void {
        const top = item.mapToItem(area.contentItem, 0, 0).y;
        if (top < area.contentY)
            area.contentY = Math.max(0, top - Theme.unit);
        else if (top + item.height > area.contentY + area.height)
            area.contentY = Math.min(Math.max(0, area.contentHeight - area.height), top + item.height - area.height + Theme.unit);
    }
}
