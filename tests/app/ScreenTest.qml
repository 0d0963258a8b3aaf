import QtQuick
import QtTest

/// A test that looks for items as a user sees them.
TestCase {
    /// A fault in a binding or a component is only warned of.
    function init() {
        failOnWarning(/.?/);
    }

    /// The first that is wanted of an item and all below it; null without one.
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

    /// The visible item of this accessible name.
    function named(item, name) {
        return find(item, each => each.visible && each.Accessible.name === name);
    }
}
