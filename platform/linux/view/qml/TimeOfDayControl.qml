import QtQuick
import Kelpa

/// A time of day that is a setting.
TimeEntry {
    readonly property ControlState told: row.told

    function follow() {
        if (told.value !== undefined)
            minutes = told.value;
    }

    Accessible.description: row.explanation
    onChanged: told.enter(minutes)
    Component.onCompleted: {
        told.valueTold.connect(follow);
        follow();
    }
}
