import QtQuick
import Kelpa

/// A line of text that is a setting, as wide as there is room for one. It shows what the program says, and reports what
/// is typed and, when that is done, what was entered.
TextEntry {
    required property PreferencesRow row
    readonly property ControlState told: row.told
    property bool edited: false

    function follow() {
        edited = false;
        const shown = String(told.value ?? "");
        if (text !== shown)
            text = shown;
    }
    function finish() {
        if (edited)
            told.enter(text);
        edited = false;
    }

    implicitWidth: 480
    label: row.label
    wrong: told.problem !== ""
    Accessible.description: row.explanation
    onTextEdited: {
        edited = true;
        told.type(text);
    }
    onEditingFinished: finish()
    Component.onCompleted: {
        told.valueTold.connect(follow);
        follow();
    }
}
