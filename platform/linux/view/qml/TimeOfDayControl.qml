import QtQuick
import Kelpa

/// A time of day that is a setting.
TimeEntry {
    readonly property ControlState told: row.told

    /// What was reported and not answered yet.
    property var reported: []

    /// A time that answers an earlier key, with others on their way, is not shown: the next key would change the wrong
    /// one. Any other time is the one that holds.
    function follow() {
        const at = reported.indexOf(told.value);
        reported = at >= 0 ? reported.slice(at + 1) : [];
        if (reported.length === 0 && told.value !== undefined)
            minutes = told.value;
    }

    Accessible.description: row.explanation
    onChanged: {
        reported = [...reported, minutes];
        told.enter(minutes);
    }
}
