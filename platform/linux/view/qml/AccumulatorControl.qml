import QtQuick
import Kelpa

/// Minus, a field of digits, plus.
Row {
    id: control

    required property PreferencesRow row

    spacing: Theme.tightSpace

    component Step: IconButton {
        required property int direction
        readonly property var look: direction < 0 ? control.row.buttons.decrease : control.row.buttons.increase

        raised: true
        symbol: look.symbol
        symbolSize: 15
        text: look.name
        autoRepeat: true
        Accessible.description: control.row.label
        onClicked: field.step(direction)
    }
    Step {
        direction: -1
    }
    NumberControl {
        id: field
        row: control.row
        stepping: false
        implicitWidth: 84
        horizontalAlignment: TextInput.AlignHCenter
    }
    Step {
        direction: 1
    }
}
