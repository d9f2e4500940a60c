import QtQuick
import Kelpa

/// A button that does what it says.
PushButton {
    required property PreferencesRow row

    text: row.label
    Accessible.description: row.explanation
    onClicked: row.told.press()
}
