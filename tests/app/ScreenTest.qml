import QtQuick
import QtTest

/// A test that finds items by what a user sees.
TestCase {
    /// An error in a binding or a component causes only a warning, so a warning fails the test.
    function init() {
        failOnWarning(/.?/);
    }

    /// The first item for which `wanted` is true, among `item` and all items below it; null if there is none.
    function find(item, wanted) {
        if (wanted(item))
            return item;
        for (let i = 0; i < item.children.length; ++i) {
            const found = find(item.children[i], wanted);
            if (found)
                return found;
        }
        return null;
    }

    /// The visible item with this accessible name.
    function named(item, name) {
        return find(item, each => each.visible && each.Accessible.name === name);
    }
}
