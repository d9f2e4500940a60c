import QtQuick
import Kelpa

/// Coloured words on a capsule of the background's kind.
Pressable {
    id: button

    property alias text: label.text
    property alias color: label.color

    implicitWidth: label.implicitWidth + 2 * Theme.padding
    implicitHeight: label.implicitHeight + 2 * Measures.slimCapsulePadding
    Accessible.role: Accessible.Button
    Accessible.name: text

    SoftShadow {
        anchors.fill: parent
        strength: Measures.answerShadow
    }
    RoundedBox {
        anchors.fill: parent
        radius: height / 2
        color: button.pressed ? Theme.surfacePressed : button.hovered ? Theme.surfaceHovered : Theme.surfaceRaised
        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }
    }
    Text {
        id: label
        anchors.centerIn: parent
        font.pixelSize: Theme.bodySize
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
}
