import QtQuick
import Kelpa

/// A list of prompts: a field that adds one on top, the prompts, and a way back to those that came with the program.
Item {
    id: control

    required property PreferencesRow row
    readonly property ControlState told: row.told
    readonly property var buttons: row.buttons

    function add() {
        told.add(adder.text);
        adder.clear();
        list.positionViewAtBeginning();
    }
    function remove(index: int) {
        told.remove(told.entries.textAt(index));
    }

    implicitWidth: row.space
    implicitHeight: Math.max(260, row.room)
    enabled: told.enabled
    opacity: enabled ? 1 : Theme.disabledOpacity

    TextEntry {
        id: adder
        anchors.left: parent.left
        anchors.right: addButton.left
        anchors.rightMargin: Theme.tightSpace
        label: control.buttons.addPrompt.name
        placeholderText: control.buttons.addPrompt.name
        Keys.onReturnPressed: control.add()
        Keys.onEnterPressed: control.add()
        Keys.onEscapePressed: clear()
    }
    IconButton {
        id: addButton
        anchors.right: parent.right
        raised: true
        symbol: control.buttons.addPrompt.symbol
        symbolSize: 15
        text: control.buttons.addPrompt.name
        onClicked: control.add()
    }
    RoundedBox {
        anchors.fill: list
        anchors.margins: -list.edge
        radius: Theme.controlRadius + 2
        color: Theme.field
        borderColor: Theme.hairline
        borderWidth: 1
    }
    ListView {
        id: list

        readonly property real edge: 5
        /// Whoever came by clicking needs no ring.
        property bool clicked: false

        anchors.top: adder.bottom
        anchors.topMargin: 10 + edge
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: resetButton.top
        anchors.bottomMargin: 10 + edge
        anchors.leftMargin: edge
        anchors.rightMargin: edge
        clip: true
        spacing: 2
        model: control.told.entries
        currentIndex: 0
        keyNavigationEnabled: true
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: Theme.quick
        reuseItems: false
        Accessible.role: Accessible.List
        Accessible.name: control.row.label
        onActiveFocusChanged: {
            if (!activeFocus)
                clicked = false;
        }
        onCurrentIndexChanged: clicked = false
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Home)
                currentIndex = 0;
            else if (event.key === Qt.Key_End)
                currentIndex = count - 1;
            else
                return;
            event.accepted = true;
        }

        delegate: PromptLine {
            width: ListView.view.width - 8
            buttons: control.buttons
            current: ListView.isCurrentItem
            ringed: !list.clicked
            onApproached: {
                list.currentIndex = index;
                list.clicked = true;
            }
            onEdited: changed => control.told.edit(text, changed)
            onRemoved: control.remove(index)
        }
        ScrollIndicator {
            flickable: list
        }
    }
    PushButton {
        id: resetButton
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        mostWidth: parent.width
        symbol: control.buttons.resetPrompts.symbol
        text: control.buttons.resetPrompts.name
        onClicked: control.told.reset()
    }
}
