import QtQuick
import Kelpa

/// A field of digits with a stepper.
TextEntry {
    id: control

    required property var buttons

    function step(direction: int) {
        finish();
        told.report("stepped", [String(direction)]);
    }

    implicitWidth: 96
    rightPadding: 26
    horizontalAlignment: TextInput.AlignRight
    inputMethodHints: Qt.ImhFormattedNumbersOnly
    enabled: told.enabled
    validator: RegularExpressionValidator {
        // No letters; what else is no number, the program says.
        regularExpression: /[^\p{L}]{0,24}/
    }
    Keys.onUpPressed: step(1)
    Keys.onDownPressed: step(-1)

    Stepper {
        anchors.right: parent.right
        anchors.rightMargin: 3
        y: 3
        height: parent.height - 6
        label: control.label
        decrease: control.buttons.decrease.name
        increase: control.buttons.increase.name
        onStepped: direction => control.step(direction)
    }
}
