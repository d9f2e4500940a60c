import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Words on a button, with a symbol before them where it has one.
T.AbstractButton {
    id: button

    property string symbol
    property real mostWidth: Infinity
    /// The one that leads on.
    property bool prominent: false
    readonly property color ink: prominent ? Theme.accentText : Theme.primary

    implicitWidth: content.implicitWidth + 2 * Theme.stackSpace
    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.name: text
    // The template makes an action known that it does not carry out.
    Accessible.onPressAction: button.clicked()
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    background: RoundedBox {
        radius: Theme.controlRadius
        color: button.prominent
            ? (button.pressed ? Theme.accentPressed : button.hovered ? Theme.accentHovered : Theme.accent)
            : (button.pressed ? Theme.controlPressed : button.hovered ? Theme.controlHovered : Theme.control)
    }
    FocusRing {
        shown: button.visualFocus
    }
    Row {
        id: content
        anchors.centerIn: parent
        spacing: Theme.tightSpace

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: button.symbol !== ""
            width: 16
            height: 16
            name: button.symbol
            color: button.ink
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, button.mostWidth - 2 * Theme.stackSpace - x)
            elide: Text.ElideRight
            text: button.text
            textFormat: Text.PlainText
            color: button.ink
            font.pixelSize: Theme.bodySize
            Accessible.ignored: true
        }
    }
    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
