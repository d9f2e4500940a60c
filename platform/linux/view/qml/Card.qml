import QtQuick
import Kelpa

/// The surface that a group of settings stands on, or that opens above everything.
RoundedBox {
    id: card

    property bool floating: false

    color: Theme.card
    radius: Theme.cardRadius
    borderColor: Theme.hairline
    borderWidth: 1

    Loader {
        z: -1
        anchors.fill: parent
        active: card.floating
        sourceComponent: SoftShadow {
            radius: card.radius
        }
    }
}
