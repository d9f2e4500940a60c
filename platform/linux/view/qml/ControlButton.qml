import QtQuick
import QtQuick.Templates as T
import Kelpa

/// What all buttons share that stand among other controls: their ground, their ring, and that Enter sets them off as well.
T.AbstractButton {
    id: button

    property real radius: Theme.controlRadius
    property color ground: Theme.controlOf(button, Theme.control)
    property alias ring: ring

    hoverEnabled: true
    // The template makes an action known that it does not carry out.
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()

    background: RoundedBox {
        radius: button.radius
        color: button.ground
    }
    FocusRing {
        id: ring
        shown: button.visualFocus
        corner: button.radius
    }
    Hand {}

    /// What can be clicked shows it.
    component Hand: HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
