import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A thin bar at the right that shows how much there is to scroll, and drags it.
T.ScrollBar {
    id: bar

    required property Flickable flickable

    parent: flickable
    anchors.right: parent.right
    width: 10
    height: parent.height
    hoverEnabled: true
    visible: size < 1
    size: flickable.visibleArea.heightRatio
    position: flickable.visibleArea.yPosition
    minimumSize: 0.08
    Accessible.ignored: true
    onPositionChanged: {
        if (pressed)
            flickable.contentY = position * flickable.contentHeight;
    }

    contentItem: Item {
        RoundedBox {
            anchors.right: parent.right
            anchors.rightMargin: 1
            width: bar.hovered || bar.pressed ? 7 : 5
            height: parent.height
            radius: width / 2
            color: bar.pressed ? Theme.outlineHovered : Theme.outline
            opacity: bar.hovered || bar.pressed ? 0.9 : 0.55
        }
    }
}
