import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A thin bar at the right that shows how much there is to scroll, and drags it.
T.ScrollBar {
    id: bar

    width: 10
    hoverEnabled: true
    visible: size < 1
    minimumSize: 0.08
    Accessible.ignored: true

    contentItem: Item {
        RoundedBox {
            anchors.right: parent.right
            anchors.rightMargin: 1
            width: bar.hovered || bar.pressed ? 7 : 5
            height: parent.height
            color: bar.pressed ? Theme.outlineHovered : Theme.outline
            opacity: bar.hovered || bar.pressed ? 0.9 : 0.55
        }
    }
}
