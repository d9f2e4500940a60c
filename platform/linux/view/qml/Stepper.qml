import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Two halves at the right end of a field that go up and down, for the mouse; the keyboard has the arrow keys there.
Column {
    id: stepper

    required property PreferencesRow row
    /// What goes up and down.
    required property string label
    signal stepped(int direction)

    anchors.right: parent.right
    anchors.rightMargin: 3
    y: 3
    width: 20
    height: parent.height - 6

    Repeater {
        model: [1, -1]

        T.AbstractButton {
            id: half
            required property int modelData
            readonly property bool up: modelData > 0

            width: stepper.width
            height: stepper.height / 2
            text: up ? stepper.row.buttons.increase.name : stepper.row.buttons.decrease.name
            hoverEnabled: true
            autoRepeat: true
            focusPolicy: Qt.NoFocus
            Accessible.description: stepper.label
            Accessible.onPressAction: clicked()
            onClicked: stepper.stepped(modelData)

            background: RoundedBox {
                radius: 4
                color: Theme.controlOf(half, "transparent")
            }
            Symbol {
                anchors.centerIn: parent
                side: 11
                name: half.up ? "chevron.up" : "chevron.down"
                color: Theme.secondary
            }
        }
    }
}
