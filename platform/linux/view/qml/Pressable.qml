import QtQuick
import Kelpa

/// Something that can be clicked, reached with Tab and set off with Enter or Space. Only the keyboard gives it
/// the focus, so its ring shows only to those who use the keyboard.
Item {
    id: pressable

    readonly property alias hovered: area.containsMouse
    readonly property alias pressed: area.pressed
    property real ringRadius: height / 2
    property real ringMargin: Theme.hairSpace + 1
    signal activated()

    activeFocusOnTab: true
    Accessible.focusable: true
    Accessible.onPressAction: pressable.activated()
    Keys.onReturnPressed: pressable.activated()
    Keys.onEnterPressed: pressable.activated()
    Keys.onSpacePressed: pressable.activated()

    RoundedBox {
        visible: pressable.activeFocus
        anchors.fill: parent
        anchors.margins: -pressable.ringMargin
        radius: pressable.ringRadius + pressable.ringMargin
        borderColor: Theme.focusRing
        borderWidth: 3
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: pressable.activated()
    }
}
