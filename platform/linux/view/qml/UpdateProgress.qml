import QtQuick
import Kelpa

/// A bar that fills, or one in which something moves while nobody knows how long it takes.
Item {
    id: bar

    /// A fraction as text; below 0 for nobody knows.
    property string value
    readonly property real fraction: Number(value)
    readonly property bool busy: fraction < 0
    readonly property string percent: busy ? "" : Math.round(fraction * 100) + "%"

    implicitHeight: 18
    Accessible.role: Accessible.ProgressBar
    Accessible.name: percent

    RoundedBox {
        id: track
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        height: 6
        radius: height / 2
        color: Theme.track
    }
    RoundedBox {
        id: filling
        anchors.verticalCenter: parent.verticalCenter
        height: track.height
        radius: height / 2
        color: Theme.accent
        x: 0
        width: bar.busy ? bar.width / 4 : Math.max(height, bar.width * bar.fraction)

        SequentialAnimation on x {
            running: bar.busy && bar.visible
            loops: Animation.Infinite
            onStopped: filling.x = 0
            NumberAnimation {
                from: 0
                to: bar.width * 3 / 4
                duration: 900
                easing.type: Easing.InOutQuad
            }
            NumberAnimation {
                from: bar.width * 3 / 4
                to: 0
                duration: 900
                easing.type: Easing.InOutQuad
            }
        }
    }
}
