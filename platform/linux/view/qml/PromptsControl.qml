import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A list of prompts: a field that adds one on top, the prompts, and a way back to those that came with the program.
Item {
    id: control

    required property PreferencesRow row
    readonly property ControlState told: row.told
    readonly property var buttons: row.buttons.prompts

    function add() {
        told.add(adder.text);
        adder.clear();
        list.positionViewAtBeginning();
    }

    implicitWidth: row.space
    implicitHeight: Math.max(260, row.room)

    TextEntry {
        id: adder
        width: addButton.x - Theme.tightSpace
        label: addButton.text
        placeholderText: label
        Keys.onReturnPressed: control.add()
        Keys.onEscapePressed: clear()
    }
    IconButton {
        id: addButton
        anchors.right: parent.right
        raised: true
        symbol: control.buttons.add.symbol
        symbolSize: 15
        text: control.buttons.add.name
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

        anchors.fill: parent
        anchors.topMargin: adder.height + 10 + edge
        anchors.bottomMargin: resetButton.height + 10 + edge
        anchors.leftMargin: edge
        anchors.rightMargin: edge
        clip: true
        spacing: 2
        model: control.told.entries
        currentIndex: 0
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: Theme.quick
        T.ScrollBar.vertical: ScrollIndicator {}
        Accessible.role: Accessible.List
        Accessible.name: control.row.label
        onActiveFocusChanged: {
            if (!activeFocus)
                clicked = false;
        }
        onCurrentIndexChanged: clicked = false
        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
            if (event.accepted)
                currentIndex = event.key === Qt.Key_Home ? 0 : count - 1;
        }

        delegate: Line {}
    }
    PushButton {
        id: resetButton
        anchors.bottom: parent.bottom
        mostWidth: parent.width
        symbol: control.buttons.reset.symbol
        text: control.buttons.reset.name
        onClicked: control.told.reset()
    }

    // One prompt: read, edited where it stands, or deleted.
    component Line: T.ItemDelegate {
        id: line

        required property int index
        required property var model
        readonly property bool current: ListView.isCurrentItem
        property bool editing: false

        function approach() {
            list.currentIndex = index;
            list.clicked = true;
        }
        function edit() {
            approach();
            editing = true;
            editor.text = text;
            editor.forceActiveFocus(Qt.MouseFocusReason);
            editor.cursorPosition = editor.length;
        }
        function leave() {
            editing = false;
            line.forceActiveFocus(Qt.TabFocusReason);
        }
        function save() {
            leave();
            take();
        }
        /// Whoever turns to something else wants to keep what was typed.
        function take() {
            editing = false;
            if (editor.text !== text)
                control.told.edit(text, editor.text);
        }

        width: list.width - 8
        implicitHeight: Math.max(40, (editing ? editor.implicitHeight : words.implicitHeight) + 16)
        text: model.text
        hoverEnabled: true
        // Tab goes to the chosen one, then to its buttons, and past the others.
        focusPolicy: current ? Qt.StrongFocus : Qt.ClickFocus
        Accessible.name: words.text
        Accessible.focusable: true
        Accessible.onPressAction: edit()
        Accessible.selectable: true
        Accessible.selected: current
        onPressed: approach()
        onDoubleClicked: edit()
        Keys.onReturnPressed: edit()
        Keys.onDeletePressed: control.told.remove(text)
        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_F2;
            if (event.accepted)
                edit();
        }

        background: RoundedBox {
            radius: Theme.controlRadius
            color: line.current ? Theme.control : line.hovered ? Theme.controlFaint : "transparent"
            FocusRing {
                shown: !list.clicked && line.activeFocus && !line.editing
                inset: 0
            }
        }
        Words {
            id: words
            anchors.left: parent.left
            anchors.leftMargin: 10
            anchors.right: tools.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            visible: !line.editing
            text: line.text.split("\\n").join("\n")
            wrapMode: Text.Wrap
            lineHeight: 1.1
        }
        TextEntry {
            id: editor
            anchors.left: parent.left
            anchors.leftMargin: 4
            anchors.right: tools.left
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            visible: line.editing
            label: control.buttons.edit.name
            Keys.onReturnPressed: line.save()
            Keys.onEscapePressed: line.leave()
            onActiveFocusChanged: {
                if (!activeFocus && line.editing)
                    line.take();
            }
        }
        Row {
            id: tools
            anchors.right: parent.right
            anchors.rightMargin: 6
            anchors.verticalCenter: parent.verticalCenter
            opacity: line.hovered || line.current ? 1 : 0.8

            // While the prompt is edited the keyboard has what these do already.
            IconButton {
                visible: line.editing
                focusPolicy: Qt.NoFocus
                symbol: "checkmark"
                symbolSize: 16
                text: control.buttons.edit.name
                onClicked: line.save()
            }
            PushButton {
                visible: line.editing
                focusPolicy: Qt.NoFocus
                text: control.buttons.cancel
                onClicked: line.leave()
            }
            Tool {
                look: control.buttons.edit
                onClicked: line.edit()
            }
            Tool {
                look: control.buttons.remove
                tint: hovered ? Theme.warning : Theme.secondary
                onClicked: control.told.remove(line.text)
            }
        }
    }
    // What can be done to a prompt that is read.
    component Tool: IconButton {
        required property var look

        visible: !line.editing
        focusPolicy: line.current ? Qt.StrongFocus : Qt.NoFocus
        symbol: look.symbol
        symbolSize: 17
        tint: Theme.secondary
        text: look.name
        Accessible.description: line.text
    }
}
