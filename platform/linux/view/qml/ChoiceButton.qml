import QtQuick
import QtQuick.Templates as T
import Kelpa

/// One of several entries of which one is chosen. Among them the arrow keys go, and Tab goes past them all.
T.RadioButton {
    id: button

    required property ControlState told
    required property int index
    required property string value
    property int columns: 1
    /// Asks for the neighbour that is so many places away.
    signal wanted(int index)

    readonly property bool chosen: told.chosen === value
    /// The one that Tab goes to.
    readonly property bool entrance: chosen || activeFocus || (index === 0 && told.entries.indexOf(told.chosen) < 0)

    function choose() {
        told.report("chosen", [value]);
    }

    hoverEnabled: true
    focusPolicy: entrance ? Qt.StrongFocus : Qt.ClickFocus
    // Again whenever the program says what is chosen, because a click alone does not choose.
    checked: told.chosen === value
    autoExclusive: false
    Accessible.name: text
    Accessible.onToggleAction: choose()
    Accessible.onPressAction: choose()
    onClicked: choose()
    Keys.onReturnPressed: choose()
    Keys.onEnterPressed: choose()
    Keys.onLeftPressed: wanted(index - 1)
    Keys.onRightPressed: wanted(index + 1)
    Keys.onUpPressed: wanted(index - columns)
    Keys.onDownPressed: wanted(index + columns)

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
