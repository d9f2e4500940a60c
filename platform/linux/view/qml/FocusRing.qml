import QtQuick
import Kelpa

/// A ring around its parent, for those who use the keyboard.
RoundedBox {
    property bool shown: false
    property real inset: -3
    /// Of what it goes around.
    property real corner: Theme.controlRadius

    visible: shown
    anchors.fill: parent
    anchors.margins: inset
    radius: corner - inset
    borderColor: Theme.focusRing
    borderWidth: 3
}
