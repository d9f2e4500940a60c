import QtQuick

/// chevron.forward: two strokes with round ends that meet at the right.
Item {
    id: chevron

    property color color
    property real size: 10

    implicitWidth: size * 0.6
    implicitHeight: size

    component Stroke: Rectangle {
        readonly property real thickness: chevron.size * 0.15
        width: chevron.size * 0.72
        height: thickness
        radius: thickness / 2
        color: chevron.color
        antialiasing: true
        x: chevron.width - width + thickness * 0.35
        y: chevron.height / 2 - thickness / 2
        transformOrigin: Item.Right
    }
    Stroke { rotation: 45 }
    Stroke { rotation: -45 }
}
