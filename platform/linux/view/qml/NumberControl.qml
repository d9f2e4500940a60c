import QtQuick
import Kelpa

/// A field of digits with a stepper.
TextControl {
    id: control

    /// Somebody else goes up and down otherwise.
    property bool stepping: true

    function step(direction: int) {
        finish();
        told.step(direction);
    }

    implicitWidth: 96
    rightPadding: stepping ? 26 : leftPadding
    horizontalAlignment: TextInput.AlignRight
    inputMethodHints: Qt.ImhFormattedNumbersOnly
    validator: RegularExpressionValidator {
        // No letters; what else is no number, the program says.
        regularExpression: /[^\p{L}]{0,24}/
    }
    Keys.onUpPressed: step(1)
    Keys.onDownPressed: step(-1)

    Stepper {
        visible: control.stepping
        row: control.row
        label: control.label
        onStepped: direction => control.step(direction)
    }
}
