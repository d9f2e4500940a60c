import QtQuick
import QtQuick.Templates as T
import Kelpa

/// A switch and its label, both of which can be clicked.
T.Switch {
    id: control

    required property PreferencesRow row

    function change() {
        toggle();
        toggled();
    }

    implicitWidth: leftPadding + label.implicitWidth
    implicitHeight: Math.max(Theme.controlHeight, label.implicitHeight)
    leftPadding: track.width + 10
    text: row.label
    hoverEnabled: true
    // Again whenever the program says so: what a person did is not always taken.
    checked: row.told.value === true
    Accessible.description: row.explanation
    Accessible.onToggleAction: change()
    Accessible.onPressAction: change()
    onToggled: row.told.enter(checked)
    Keys.onReturnPressed: change()

    indicator: RoundedBox {
        id: track
        y: (Theme.controlHeight - height) / 2
        width: 42
        height: 24
        color: control.checked ? (control.hovered ? Theme.accentHovered : Theme.accent)
            : (control.hovered ? Theme.outlineHovered : Theme.outline)
        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }

        RoundedBox {
            id: knob
            readonly property real rest: 3
            x: control.checked ? track.width - width - rest : rest
            y: rest
            width: track.height - 2 * rest
            height: width
            color: Theme.accentText
            Behavior on x {
                NumberAnimation { duration: Theme.quick; easing.type: Easing.OutCubic }
            }
        }
        FocusRing {
            shown: control.visualFocus
            inset: -5
            corner: track.radius
        }
    }
    contentItem: Words {
        id: label
        text: control.text
        wrapMode: Text.Wrap
        verticalAlignment: Text.AlignVCenter
    }
    ControlButton.Hand {}
}
