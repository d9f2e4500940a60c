import QtQuick
import Kelpa

/// An underlined text that leads elsewhere. A symbol may stand behind it.
Pressable {
    id: link

    property alias text: label.text
    property alias symbol: mark.name
    readonly property color tint: pressed ? Theme.linkPressed : hovered ? Theme.linkHovered : Theme.link

    implicitWidth: symbol === "" ? label.implicitWidth : mark.x + mark.width - mark.margin
    implicitHeight: label.implicitHeight
    ring.corner: Theme.hairSpace
    ring.inset: -Theme.hairSpace
    Accessible.role: Accessible.Link
    Accessible.name: text

    Words {
        id: label
        color: link.tint
        font.bold: true
        font.underline: true
    }
    Symbol {
        id: mark

        /// Drawings have room around them, which is none here.
        readonly property real margin: width / 4

        anchors.left: label.right
        anchors.leftMargin: Theme.tightSpace - margin
        anchors.verticalCenter: label.verticalCenter
        side: Theme.bodySize + Theme.tightSpace
        color: link.tint
    }
}
