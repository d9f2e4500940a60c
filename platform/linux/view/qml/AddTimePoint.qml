import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Asks for a time of day. However it is left, that time counts.
T.Popup {
    id: popup

    required property var buttons
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
        label: popup.buttons.addTimePoint.name
        decrease: popup.buttons.decrease.name
        increase: popup.buttons.increase.name
        Keys.onReturnPressed: popup.close()
        Keys.onEnterPressed: popup.close()

        // An open popup keeps the window's own shortcuts from being heard; beside them, this one would be ambiguous.
        Shortcut {
            enabled: popup.visible
            sequences: ["Ctrl+W"]
            onActivated: time.Window.window.close()
        }
        Connections {
            target: time.Window.window
            function onClosing() {
                popup.close();
            }
        }
    }
    background: Card {
        SoftShadow {
            anchors.fill: parent
            z: -1
            radius: Theme.cardRadius
        }
    }
}
