import QtQuick
import Kelpa

/// A time of day that is a setting.
TimeEntry {
    id: control

    required property PreferencesRow row
    readonly property ControlState told: row.told

    /// What was reported and not told back yet, and what was told back last.
    property var reported: []
    property string answered

    /// A time that is told, maybe twice, while others are on their way answers an earlier key: to show it would have the
    /// next key change the wrong time. Any other time is the one that holds.
    function follow() {
        const time = told.hour + ":" + told.minute;
        const at = reported.indexOf(time);
        if (at >= 0)
            answered = time;
        if (at >= 0 || time !== answered)
            reported = at >= 0 ? reported.slice(at + 1) : [];
        if (reported.length > 0)
            return;
        hour = told.hour;
        minute = told.minute;
    }

    enabled: told.enabled
    buttons: row.buttons
    label: row.label
    Accessible.description: told.problem !== "" ? told.problem : told.hint
    Component.onCompleted: follow()
    onChanged: (hour, minute) => {
        reported = [...reported, hour + ":" + minute];
        told.report("timeEntered", [String(hour), String(minute)]);
    }

    Connections {
        target: control.told
        function onTimeTold() {
            control.follow();
        }
    }
}
