import QtQuick
import Kelpa

/// Something that can be clicked, reached with Tab and set off with Enter or Space. Only the keyboard gives it
/// the focus, so its ring shows only to those who use the keyboard. Windows with nothing but such buttons do not load
/// the toolkit's controls, as those with a `ControlButton` do.
Item {
    id: pressable

    readonly property alias hovered: area.containsMouse
    readonly property alias pressed: area.pressed
    property alias ring: ring
    signal activated()

    activeFocusOnTab: true
    Accessible.focusable: true
    Accessible.onPressAction: activated()
    Keys.onReturnPressed: activated()
    Keys.onSpacePressed: activated()

    FocusRing {
        id: ring
        shown: pressable.activeFocus
        inset: -5
        corner: Infinity
    }
    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: pressable.activated()
    }
}
