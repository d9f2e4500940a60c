import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A round button that shows a symbol.
T.AbstractButton {
    id: button

    property string symbol
    property real symbolSize: 18
    property color tint: Theme.primary
    /// Seen also when the pointer is elsewhere.
    property bool raised: false

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.name: text
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    background: RoundedBox {
        radius: height / 2
        color: button.pressed ? Theme.controlPressed : button.hovered ? Theme.controlHovered
            : button.raised ? Theme.control : "transparent"
    }
    FocusRing {
        shown: button.visualFocus
        corner: button.height / 2
        inset: -2
    }
    Symbol {
        anchors.centerIn: parent
        width: button.symbolSize
        height: button.symbolSize
        name: button.symbol
        color: button.tint
    }
    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
