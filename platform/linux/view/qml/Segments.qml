import QtQuick
import Kelpa

/// One of a few entries, side by side in one box.
RoundedBox {
    id: box

    /// Texts, or entries that have one.
    property alias model: choices.model
    /// The place of the one that is chosen; below 0 when none is.
    required property int chosen
    signal picked(int place)

    implicitWidth: segments.implicitWidth + 2 * segments.x
    implicitHeight: Theme.controlHeight + 2
    radius: Theme.controlRadius + 1
    color: Theme.track
    Accessible.role: Accessible.Grouping

    Row {
        id: segments
        x: 2
        y: 2

        Repeater {
            id: choices

            ChoiceButton {
                id: segment
                among: choices
                chosenPlace: box.chosen
                text: model.text ?? model.modelData
                width: words.implicitWidth + 2 * Measures.padding
                height: box.height - 4
                words.font.bold: chosen
                onPicked: box.picked(index)

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
