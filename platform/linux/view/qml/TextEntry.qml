import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A line to type into. With `told` it shows what the program says, and reports what is typed and, when that is
/// done, what was entered.
T.TextField {
    id: field

    property ControlState told: null
    property string label
    property bool edited: false

    function toldText(): string {
        return told && told.value !== undefined ? told.value : "";
    }
    function finish() {
        if (edited && told)
            told.enter(text);
        edited = false;
    }

    implicitWidth: 200
    implicitHeight: Theme.controlHeight
    leftPadding: 9
    rightPadding: 9
    color: Theme.primary
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    font.pixelSize: Theme.bodySize
    verticalAlignment: TextInput.AlignVCenter
    hoverEnabled: true
    selectByMouse: true
    // Screen readers are not told what is disabled.
    readOnly: !enabled
    opacity: enabled ? 1 : Theme.disabledOpacity
    text: toldText()
    Accessible.name: label
    Accessible.description: !told ? "" : told.problem !== "" ? told.problem : told.hint
    onTextEdited: {
        edited = true;
        if (told)
            told.type(text);
    }
    onEditingFinished: finish()
    // Whoever comes with the keyboard most often wants something else there.
    onActiveFocusChanged: {
        if (activeFocus && focusReason !== Qt.MouseFocusReason)
            selectAll();
    }

    background: FieldBox {
        focused: field.activeFocus
        hovered: field.hovered
        wrong: field.told !== null && field.told.problem !== ""
    }

    Words {
        visible: field.text === "" && field.preeditText === ""
        x: field.leftPadding
        width: field.width - field.leftPadding - field.rightPadding
        height: field.height
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        text: field.placeholderText
        color: Theme.secondary
    }
    Connections {
        target: field.told
        function onValueTold() {
            field.edited = false;
            if (field.text !== field.toldText())
                field.text = field.toldText();
        }
    }
}
