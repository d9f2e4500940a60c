import QtQuick
import Kelpa

/// A soft shadow behind a capsule, made of a few thin rings: the software renderer has no blur.
Item {
    id: shadow

    property real strength: Measures.selectionShadow
    /// Of what casts it.
    property real radius: height / 2

    Repeater {
        model: Measures.shadowRadius
        RoundedBox {
            required property int index
            anchors.fill: parent
            anchors.margins: -(index + 1)
            anchors.topMargin: -index
            anchors.bottomMargin: -(index + 2)
            radius: shadow.radius + index + 1
            color: Theme.shadow
            opacity: shadow.strength * (0.3 - index * 0.09)
        }
    }
}
