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

    implicitWidth: label.implicitWidth + 2 * Measures.padding
    implicitHeight: label.implicitHeight + 2 * (slim ? Measures.slimCapsulePadding : Measures.capsulePadding)
    Accessible.role: Accessible.Button
    Accessible.name: text

    RoundedBox {
        anchors.fill: parent
        color: button.plain ? Theme.surfaceOf(button, Theme.surfaceRaised) : Theme.accentOf(button)
        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }

        SoftShadow {
            visible: button.slim
            strength: Measures.answerShadow
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
