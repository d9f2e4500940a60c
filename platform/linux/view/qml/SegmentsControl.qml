import QtQuick
import Kelpa

/// One of a few entries, side by side in one box.
RoundedBox {
    id: control

    required property ControlState told
    property string label

    function choose(index: int) {
        const next = segments.itemAt(index);
        if (!next)
            return;
        next.forceActiveFocus(Qt.TabFocusReason);
        next.choose();
    }

    implicitWidth: row.implicitWidth + 2 * row.x
    implicitHeight: Theme.controlHeight + 2
    radius: Theme.controlRadius + 1
    color: Theme.track
    enabled: told.enabled
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.Grouping
    Accessible.name: label

    Row {
        id: row
        x: 2
        y: 2

        Repeater {
            id: segments
            model: control.told.entries

            ChoiceButton {
                id: segment
                required property var model
                told: control.told
                value: model.value
                text: model.text
                width: words.implicitWidth + 2 * Theme.padding
                height: control.height - 4
                onWanted: index => control.choose(index)

                background: RoundedBox {
                    radius: Theme.controlRadius - 1
                    color: segment.chosen ? Theme.raised : segment.hovered ? Theme.controlHovered : "transparent"
                    borderWidth: segment.chosen ? 1 : 0
                    borderColor: Theme.hairline
                    FocusRing {
                        shown: segment.visualFocus
                    }
                }
                Text {
                    id: words
                    anchors.centerIn: parent
                    text: segment.text
                    textFormat: Text.PlainText
                    color: Theme.primary
                    font.pixelSize: Theme.bodySize
                    font.bold: segment.chosen
                    Accessible.ignored: true
                }
            }
        }
    }
}
