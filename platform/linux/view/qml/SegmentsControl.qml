import QtQuick
import Kelpa

/// One of a few entries, side by side in one box.
RoundedBox {
    id: control

    required property PreferencesRow row

    implicitWidth: segments.implicitWidth + 2 * segments.x
    implicitHeight: Theme.controlHeight + 2
    radius: Theme.controlRadius + 1
    color: Theme.track
    Accessible.role: Accessible.Grouping
    Accessible.name: row.label

    Row {
        id: segments
        x: 2
        y: 2

        Repeater {
            id: choices
            model: control.row.told.entries

            ChoiceButton {
                id: segment
                told: control.row.told
                among: choices
                width: words.implicitWidth + 2 * Measures.padding
                height: control.height - 4
                words.font.bold: chosen

                background: RoundedBox {
                    radius: Theme.controlRadius - 1
                    color: segment.chosen ? Theme.raised : segment.hovered ? Theme.controlHovered : "transparent"
                    borderWidth: segment.chosen ? 1 : 0
                    borderColor: Theme.hairline
                }
            }
        }
    }
}
