import QtQuick
import QtQuick.Templates as T
import Kelpa

/// One of several entries of which one is chosen. Among them the arrow keys go, and Tab goes past them all.
T.RadioButton {
    id: button

    required property ControlState told
    /// All of them.
    required property Repeater among
    required property int index
    required property var model
    property int columns: 1
    property alias words: words
    property alias ring: ring

    readonly property bool chosen: told.value === model.value
    /// The one that Tab goes to.
    readonly property bool entrance: chosen || activeFocus || (index === 0 && told.entries.indexOf(told.value) < 0)

    function choose() {
        told.enter(model.value);
    }
    function move(places: int) {
        const next = among.itemAt(index + places);
        if (!next)
            return;
        next.forceActiveFocus(Qt.TabFocusReason);
        next.choose();
    }

    text: model.text
    hoverEnabled: true
    focusPolicy: entrance ? Qt.StrongFocus : Qt.ClickFocus
    // Again whenever the program says what is chosen, because a click alone does not choose.
    checked: told.value === model.value
    autoExclusive: false
    Accessible.onToggleAction: choose()
    Accessible.onPressAction: choose()
    onClicked: choose()
    Keys.onReturnPressed: choose()
    Keys.onEnterPressed: choose()
    Keys.onLeftPressed: move(-1)
    Keys.onRightPressed: move(1)
    Keys.onUpPressed: move(-columns)
    Keys.onDownPressed: move(columns)

    FocusRing {
        id: ring
        shown: button.visualFocus
    }
    Words {
        id: words
        anchors.centerIn: parent
        text: button.text
    }
    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
