import QtQuick
import Kelpa

/// The surface that a group of settings stands on.
RoundedBox {
    color: Theme.card
    radius: Theme.cardRadius
    borderColor: Theme.hairline
    borderWidth: 1
}
