import QtQuick

/// A vertical list of choices, of which one is selected.
Column {
    /// The name of the choice, for assistive tools.
    required property string name

    Accessible.role: Accessible.Grouping
    Accessible.name: name
}
