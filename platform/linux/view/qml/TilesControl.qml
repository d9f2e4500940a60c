import QtQuick
import Kelpa

/// One of a grid of entries.
Grid {
    id: control

    required property ControlState told
    property string label
    property real availableWidth: 400

    readonly property real tileWidth: {
        let widest = 88;
        for (let i = 0; i < told.entries.count; ++i)
            widest = Math.max(widest, Math.ceil(metrics.widthOf(told.entries.textAt(i))) + 2 * Theme.padding);
        return widest;
    }

    function choose(index: int) {
        const next = tiles.itemAt(index);
        if (!next)
            return;
        next.forceActiveFocus(Qt.TabFocusReason);
        next.choose();
    }

    columns: Math.max(1, Math.min(Measures.tileColumns, Math.floor((availableWidth + spacing) / (tileWidth + spacing))))
    spacing: 10
    enabled: told.enabled
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.Grouping
    Accessible.name: label

    TextMeasure {
        id: metrics
        font.pixelSize: Theme.bodySize
        font.bold: true
    }
    Repeater {
        id: tiles
        model: control.told.entries

        ChoiceButton {
            id: tile
            required property var model
            told: control.told
            value: model.value
            text: model.text
            columns: control.columns
            width: control.tileWidth
            height: Theme.tileHeight
            onWanted: index => control.choose(index)

            background: RoundedBox {
                radius: height / 2
                color: tile.chosen ? (tile.pressed ? Theme.accentPressed : tile.hovered ? Theme.accentHovered : Theme.accent)
                    : tile.pressed ? Theme.controlPressed : tile.hovered ? Theme.controlHovered : Theme.control
                Behavior on color {
                    ColorAnimation { duration: Theme.quick }
                }
                FocusRing {
                    shown: tile.visualFocus
                    apart: true
                    corner: tile.height / 2
                }
            }
            Text {
                anchors.centerIn: parent
                text: tile.text
                textFormat: Text.PlainText
                color: tile.chosen ? Theme.accentText : Theme.primary
                font.pixelSize: Theme.bodySize
                Accessible.ignored: true
            }
        }
    }
}
