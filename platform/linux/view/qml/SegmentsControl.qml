import QtQuick
import Kelpa

/// One of a few entries that is a setting.
Segments {
    required property PreferencesRow row
    readonly property ControlState told: row.told

    model: told.entries
    chosen: told.entries.indexOf(told.value)
    Accessible.name: row.label
    onPicked: place => told.enter(told.entries.valueAt(place))
}
