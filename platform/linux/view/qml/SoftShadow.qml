import QtQuick
import Kelpa

/// A soft shadow behind the box that it stands in, made of a few thin rings: the software renderer has no blur.
Item {
    id: shadow

    property real strength: Measures.selectionShadow

    z: -1
    anchors.fill: parent

    Repeater {
        // What is not seen needs none.
        model: shadow.visible ? Measures.shadowRadius : 0
        RoundedBox {
            required property int index
            anchors.fill: parent
            anchors.margins: -(index + 1)
            anchors.topMargin: -index
            anchors.bottomMargin: -(index + 2)
            radius: shadow.parent.radius + index + 1
            color: Theme.shadow
            opacity: shadow.strength * (0.3 - index * 0.09)
        }
    }
}
