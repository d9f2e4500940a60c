import QtQuick
import Kelpa

/// A round button that shows a symbol.
ControlButton {
    id: button

    property string symbol
    property real symbolSize: 18
    property color tint: Theme.primary
    /// Seen also when the pointer is elsewhere.
    property bool raised: false

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight
    radius: Infinity
    ground: Theme.controlOf(button, raised ? Theme.control : "transparent")
    ring.inset: -2

    Symbol {
        anchors.centerIn: parent
        side: button.symbolSize
        name: button.symbol
        color: button.tint
    }
}
