import QtQuick
import Kelpa

/// Words on a capsule: white ones on the accent colour or, on a plain one, of any colour on the window's kind.
Pressable {
    id: button

    property alias text: label.text
    property alias ink: label.color
    property bool plain: false
    /// For places with little room, where it stands off by its shadow.
    property bool slim: false

    implicitWidth: label.implicitWidth + 2 * Theme.padding
    implicitHeight: label.implicitHeight + 2 * (slim ? Measures.slimCapsulePadding : Measures.capsulePadding)
    Accessible.role: Accessible.Button
    Accessible.name: text

    SoftShadow {
        anchors.fill: parent
        visible: button.slim
        strength: Measures.answerShadow
    }
    RoundedBox {
        anchors.fill: parent
        radius: height / 2
        color: button.plain ? Theme.surfaceOf(button, Theme.surfaceRaised) : Theme.accentOf(button)
        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }
    }
    Words {
        id: label
        anchors.centerIn: parent
        color: Theme.accentText
        font.pixelSize: button.plain ? Theme.bodySize : Theme.headlineSize
        font.bold: !button.plain
    }
}
