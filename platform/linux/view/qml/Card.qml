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

    SoftShadow {
        visible: card.floating
    }
}
