import QtQuick
import Kelpa

/// One of a grid of entries.
Grid {
    id: control

    required property PreferencesRow row
    readonly property EntryList entries: row.told.entries
    readonly property real tileWidth: Math.max(88, Math.ceil(Theme.widest(metrics, entries.texts)) + 2 * Measures.padding)

    columns: Math.max(1, Math.min(Measures.tileColumns, Math.floor((row.space + spacing) / (tileWidth + spacing))))
    spacing: 10
    Accessible.role: Accessible.Grouping
    Accessible.name: row.label

    FontMetrics {
        id: metrics
        font.pixelSize: Theme.bodySize
        font.bold: true
    }
    Repeater {
        id: choices
        model: control.entries

        ChoiceButton {
            id: tile
            among: choices
            chosenPlace: control.entries.indexOf(control.row.told.value)
            text: model.text
            columns: control.columns
            width: control.tileWidth
            height: Theme.capsuleHeight
            words.color: chosen ? Theme.accentText : Theme.primary
            ring.inset: -5
            ring.corner: Infinity
            onPicked: control.row.told.enter(model.value)

            background: RoundedBox {
                color: tile.chosen ? Theme.accentOf(tile) : Theme.controlOf(tile, Theme.control)
                Behavior on color {
                    ColorAnimation { duration: Theme.quick }
                }
            }
        }
    }
}
