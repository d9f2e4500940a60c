import QtQuick
import Kelpa

/// Words on a button, with a symbol before them where it has one.
ControlButton {
    id: button

    property string symbol
    property real mostWidth: Infinity
    /// The one that leads on.
    property bool prominent: false
    readonly property color ink: prominent ? Theme.accentText : Theme.primary

    implicitWidth: content.implicitWidth + 2 * Theme.stackSpace
    implicitHeight: Theme.controlHeight
    ground: prominent ? Theme.accentOf(button) : Theme.controlOf(button, Theme.control)

    Row {
        id: content
        anchors.centerIn: parent
        spacing: Theme.tightSpace

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: button.symbol !== ""
            side: 16
            name: button.symbol
            color: button.ink
        }
        Words {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, button.mostWidth - 2 * Theme.stackSpace - x)
            elide: Text.ElideRight
            text: button.text
            color: button.ink
        }
    }
}
