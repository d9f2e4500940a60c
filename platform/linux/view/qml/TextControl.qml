import QtQuick
import Kelpa

/// A line of text that is a setting, as wide as there is room for one.
TextEntry {
    required property PreferencesRow row

    told: row.told
    label: row.label
    implicitWidth: 480
    enabled: told.enabled
}
