import QtQuick
import Kelpa

/// White words on a coloured capsule.
Pressable {
    id: button

    property alias text: label.text
    /// For places with little room.
    property bool slim: false
    /// Strength of the shadow around it; it has none by itself.
    property real shadow: 0

    implicitWidth: label.implicitWidth + 2 * Theme.padding
    implicitHeight: label.implicitHeight + 2 * (slim ? Measures.slimCapsulePadding : Measures.capsulePadding)
    Accessible.role: Accessible.Button
    Accessible.name: text

    SoftShadow {
        anchors.fill: parent
        visible: button.shadow > 0
        strength: button.shadow
    }
    RoundedBox {
        anchors.fill: parent
        radius: height / 2
        color: button.pressed ? Theme.accentPressed : button.hovered ? Theme.accentHovered : Theme.accent
        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }
    }

    Text {
        id: label
        anchors.centerIn: parent
        color: Theme.accentText
        font.pixelSize: Theme.headlineSize
        font.bold: true
        Accessible.ignored: true
    }
}
