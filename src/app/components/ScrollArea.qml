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

    /// Scrolls down by a distance, or up if it is negative, as far as there is content.
    function scrollBy(distance: real): void {
        area.contentY = Math.max(0, Math.min(Math.max(0, area.contentHeight - area.height), area.contentY + distance));
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
