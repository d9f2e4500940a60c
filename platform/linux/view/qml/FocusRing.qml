import QtQuick
import Kelpa

/// A ring around its parent, for those who use the keyboard.
RoundedBox {
    property bool shown: false
    /// Outside the parent when it is below 0; at -5 the ring stands off from what may have its own colour.
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
