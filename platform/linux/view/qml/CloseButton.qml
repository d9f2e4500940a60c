import QtQuick
import Kelpa

/// A small round button with a cross that takes its window away.
Pressable {
    id: button

    property string name

    implicitWidth: 18
    implicitHeight: 18
    ring.inset: -2
    Accessible.role: Accessible.Button
    Accessible.name: name

    RoundedBox {
        anchors.fill: parent
        color: Theme.surfaceOf(button, "transparent")
    }
    Repeater {
        model: [45, -45]
        Rectangle {
            required property real modelData
            anchors.centerIn: parent
            width: 11
            height: 1.6
            radius: 0.8
            rotation: modelData
            antialiasing: true
            color: Theme.secondary
        }
    }
}
