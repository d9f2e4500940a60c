import QtQuick
import QtQuick.Templates as T
import Kelpa

/// One prompt of a list: read, edited where it stands, or deleted.
T.ItemDelegate {
    id: line

    required property int index
    required property var model
    required property var buttons
    property bool current: false
    property bool ringed: false
    property bool editing: false
    signal approached()
    signal edited(string text)
    signal removed()

    function edit() {
        approached();
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
            edited(editor.text);
    }

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
    onPressed: approached()
    onDoubleClicked: edit()
    Keys.onReturnPressed: edit()
    Keys.onEnterPressed: edit()
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F2)
            edit();
        else if (event.key === Qt.Key_Delete)
            removed();
        else
            return;
        event.accepted = true;
    }

    background: RoundedBox {
        radius: Theme.controlRadius
        color: line.current ? Theme.control : line.hovered ? Theme.controlFaint : "transparent"
        FocusRing {
            shown: line.ringed && line.activeFocus && !line.editing
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
        label: line.buttons.editPrompt.name
        Keys.onReturnPressed: line.save()
        Keys.onEnterPressed: line.save()
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

        IconButton {
            visible: line.editing
            focusPolicy: Qt.NoFocus
            symbol: "checkmark"
            symbolSize: 16
            text: line.buttons.editPrompt.name
            onClicked: line.save()
        }
        PushButton {
            visible: line.editing
            focusPolicy: Qt.NoFocus
            text: line.buttons.cancelPrompt
            onClicked: line.leave()
        }
        IconButton {
            visible: !line.editing
            focusPolicy: line.current ? Qt.StrongFocus : Qt.NoFocus
            symbol: line.buttons.editPrompt.symbol
            symbolSize: 17
            tint: Theme.secondary
            text: line.buttons.editPrompt.name
            Accessible.description: line.text
            onClicked: line.edit()
        }
        IconButton {
            visible: !line.editing
            focusPolicy: line.current ? Qt.StrongFocus : Qt.NoFocus
            symbol: line.buttons.removePrompt.symbol
            symbolSize: 17
            tint: hovered ? Theme.warning : Theme.secondary
            text: line.buttons.removePrompt.name
            Accessible.description: line.text
            onClicked: line.removed()
        }
    }
}
