import QtQuick

/// An underlined text that leads elsewhere.
Pressable {
    id: link

    property alias text: label.text
    property alias arrow: chevron.visible
    readonly property color tint: pressed ? Theme.linkPressed : hovered ? Theme.linkHovered : Theme.link

    implicitWidth: arrow ? chevron.x + chevron.width : label.implicitWidth
    implicitHeight: label.implicitHeight
    ringRadius: Theme.hairSpace
    ringMargin: Theme.hairSpace
    Accessible.role: Accessible.Link
    Accessible.name: text

    Text {
        id: label
        color: link.tint
        font.pixelSize: Theme.bodySize
        font.bold: true
        font.underline: true
        Accessible.ignored: true
    }
    Chevron {
        id: chevron
        anchors.left: label.right
        anchors.leftMargin: Theme.tightSpace
        anchors.verticalCenter: label.verticalCenter
        size: Theme.bodySize * 0.8
        color: link.tint
    }
}
