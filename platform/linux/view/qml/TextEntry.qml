import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A line to type into.
T.TextField {
    id: field

    property string label
    property bool wrong: false

    implicitHeight: Theme.controlHeight
    leftPadding: 9
    rightPadding: 9
    color: Theme.primary
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    font.pixelSize: Theme.bodySize
    verticalAlignment: TextInput.AlignVCenter
    hoverEnabled: true
    // Screen readers are not told what is disabled.
    readOnly: !enabled
    Accessible.name: label
    // Whoever comes with the keyboard most often wants something else there.
    onActiveFocusChanged: {
        if (activeFocus && focusReason !== Qt.MouseFocusReason)
            selectAll();
    }

    background: Box {
        focused: field.activeFocus
        hovered: field.hovered
        wrong: field.wrong
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

    // What can be typed into looks so.
    component Box: RoundedBox {
        required property bool focused
        required property bool hovered
        property bool wrong: false

        color: Theme.field
        radius: Theme.controlRadius
        borderWidth: focused ? 2 : 1
        borderColor: wrong ? Theme.warning : focused ? Theme.accent : hovered ? Theme.outlineHovered : Theme.outline
    }
}
