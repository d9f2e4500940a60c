import QtQuick
import Kelpa

/// Minus, a field of digits, plus.
Row {
    id: control

    required property ControlState told
    required property var buttons
    property string label

    function step(direction: int) {
        field.finish();
        told.report("stepped", [String(direction)]);
    }

    spacing: Theme.tightSpace
    enabled: told.enabled

    IconButton {
        raised: true
        symbol: control.buttons.decrease.symbol
        symbolSize: 15
        text: control.buttons.decrease.name
        Accessible.description: control.label
        autoRepeat: true
        onClicked: control.step(-1)
    }
    TextEntry {
        id: field
        told: control.told
        label: control.label
        implicitWidth: 84
        horizontalAlignment: TextInput.AlignHCenter
        inputMethodHints: Qt.ImhFormattedNumbersOnly
        validator: RegularExpressionValidator {
            // No letters; what else is no number, the program says.
            regularExpression: /[^\p{L}]{0,24}/
        }
        Keys.onUpPressed: control.step(1)
        Keys.onDownPressed: control.step(-1)
    }
    IconButton {
        raised: true
        symbol: control.buttons.increase.symbol
        symbolSize: 15
        text: control.buttons.increase.name
        Accessible.description: control.label
        autoRepeat: true
        onClicked: control.step(1)
    }
}
