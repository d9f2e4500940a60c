import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Two halves at the right end of a field that go up and down, for the mouse; the keyboard has the arrow keys there.
Column {
    id: stepper

    /// What the buttons are called.
    required property var buttons
    /// What goes up and down.
    required property string label
    signal stepped(int direction)

    anchors.right: parent.right
    anchors.rightMargin: 3
    y: 3
    width: 20
    height: parent.height - 6

    component Half: T.AbstractButton {
        id: half
        required property string symbol
        required property int direction
        width: stepper.width
        height: stepper.height / 2
        hoverEnabled: true
        autoRepeat: true
        focusPolicy: Qt.NoFocus
        Accessible.name: text
        Accessible.description: stepper.label
        Accessible.onPressAction: clicked()
        onClicked: stepper.stepped(direction)

        background: RoundedBox {
            radius: 4
            color: Theme.controlOf(half, "transparent")
        }
        Symbol {
            anchors.centerIn: parent
            width: 11
            height: 11
            name: half.symbol
            color: Theme.secondary
        }
    }
    Half {
        symbol: "chevron.up"
        text: stepper.buttons.increase.name
        direction: 1
    }
    Half {
        symbol: "chevron.down"
        text: stepper.buttons.decrease.name
        direction: -1
    }
}
