import QtQuick
import Kelpa

/// A time of day that is a setting.
TimeEntry {
    id: control

    required property ControlState told
    required property var buttons

    function follow() {
        hour = told.hour;
        minute = told.minute;
    }

    enabled: told.enabled
    decrease: buttons.decrease.name
    increase: buttons.increase.name
    Accessible.description: told.problem !== "" ? told.problem : told.hint
    Component.onCompleted: follow()
    onChanged: (hour, minute) => told.report("timeEntered", [String(hour), String(minute)])

    Connections {
        target: control.told
        function onTimeTold() {
            control.follow();
        }
    }
}
