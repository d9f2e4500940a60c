import QtQuick
import Kelpa

/// A time of day that is a setting.
TimeEntry {
    id: control

    readonly property ControlState told: row.told

    function follow() {
        if (told.value !== undefined)
            minutes = told.value;
    }

    Accessible.description: row.explanation
    onChanged: told.enter(minutes)
    Component.onCompleted: follow()

    Connections {
        target: control.told
        function onValueTold() {
            control.follow();
        }
    }
}
