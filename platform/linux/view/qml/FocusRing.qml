import QtQuick
import Kelpa

/// A ring around its parent, for those who use the keyboard.
RoundedBox {
    property bool shown: false
    property real inset: -3
    /// Stands off from what may have the ring's own colour.
    property bool apart: false
    /// Of what it goes around.
    property real corner: Theme.controlRadius

    readonly property real edge: apart ? inset - 2 : inset

    visible: shown
    anchors.fill: parent
    anchors.margins: edge
    radius: corner - edge
    borderColor: Theme.focusRing
    borderWidth: 3
}
