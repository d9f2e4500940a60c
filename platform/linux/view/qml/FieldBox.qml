import QtQuick
import Kelpa

/// The box of something that is typed into.
RoundedBox {
    property bool focused: false
    property bool hovered: false
    property bool wrong: false

    color: Theme.field
    radius: Theme.controlRadius
    borderWidth: focused ? 2 : 1
    borderColor: wrong ? Theme.warning : focused ? Theme.accent : hovered ? Theme.outlineHovered : Theme.outline
}
