import QtQuick
import QtQuick.Templates as T
import Kelpa

/// One of several entries of which one is chosen. Among them the arrow keys go, and Tab goes past them all.
T.RadioButton {
    id: button

    /// All of them.
    required property Repeater among
    /// The place among them of the one that is chosen; below 0 when none is.
    required property int chosenPlace
    required property int index
    required property var model
    property int columns: 1
    property alias words: words
    property alias ring: ring
    /// A person wants this one.
    signal picked()

    readonly property bool chosen: index === chosenPlace
    /// The one that Tab goes to.
    readonly property bool entrance: chosen || activeFocus || (index === 0 && chosenPlace < 0)

    function move(places: int) {
        const next = among.itemAt(index + places);
        if (!next)
            return;
        next.forceActiveFocus(Qt.TabFocusReason);
        next.picked();
    }

    hoverEnabled: true
    focusPolicy: entrance ? Qt.StrongFocus : Qt.ClickFocus
    checked: chosen
    // A click alone does not choose.
    onToggled: checked = Qt.binding(() => chosen)
    autoExclusive: false
    Accessible.onToggleAction: picked()
    Accessible.onPressAction: picked()
    onClicked: picked()
    Keys.onReturnPressed: picked()
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
    ControlButton.Hand {}
}
