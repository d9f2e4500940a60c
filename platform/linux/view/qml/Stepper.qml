import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Two halves that go up and down, for the mouse; the keyboard has the arrow keys of what it stands in.
Column {
    id: stepper

    property string decrease
    property string increase
    /// What goes up and down.
    property string label
    signal stepped(int direction)

    width: 20

    component Half: T.AbstractButton {
        id: half
        property string symbol
        width: stepper.width
        height: stepper.height / 2
        hoverEnabled: true
        autoRepeat: true
        focusPolicy: Qt.NoFocus
        Accessible.name: text
        Accessible.description: stepper.label
        Accessible.onPressAction: half.clicked()

        background: RoundedBox {
            radius: 4
            color: half.pressed ? Theme.controlPressed : half.hovered ? Theme.controlHovered : "transparent"
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
        text: stepper.increase
        onClicked: stepper.stepped(1)
    }
    Half {
        symbol: "chevron.down"
        text: stepper.decrease
        onClicked: stepper.stepped(-1)
    }
}
