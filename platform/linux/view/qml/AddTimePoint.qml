import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Asks for a time of day. However it is left, that time counts.
T.Popup {
    id: popup

    required property var texts
    signal entered(int hour, int minute)

    function begin(hour: int, minute: int) {
        time.hour = hour;
        time.minute = minute;
        open();
        time.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitWidth: time.implicitWidth + 2 * padding
    implicitHeight: time.implicitHeight + 2 * padding
    padding: Theme.stackSpace
    margins: 8
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    onClosed: entered(time.hour, time.minute)

    contentItem: TimeEntry {
        id: time
        focus: true
        label: popup.texts.addTimePoint
        decrease: popup.texts.decrease
        increase: popup.texts.increase
        Keys.onReturnPressed: popup.close()
        Keys.onEnterPressed: popup.close()
    }
    background: Card {
        SoftShadow {
            anchors.fill: parent
            z: -1
            radius: Theme.cardRadius
        }
    }
}
