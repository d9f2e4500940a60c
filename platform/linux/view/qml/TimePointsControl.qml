import QtQuick
import Kelpa

/// Times of day on tiles, each with a button that removes it, and a last tile that adds one.
Flow {
    id: control

    required property ControlState told
    required property var buttons
    property string label
    property real availableWidth: 400

    readonly property real tileWidth: Math.ceil(metrics.widthOf("00:00")) + 3 * Theme.padding

    function report(action: string, value: string) {
        told.report(action, value.split(":"));
    }
    /// The keyboard stays where it was: at the tile that moved up, or at the last one.
    function keepFocusNear(index: int) {
        const next = points.itemAt(Math.min(index, points.count - 1));
        if (next)
            next.remover.forceActiveFocus(Qt.TabFocusReason);
    }

    width: availableWidth
    spacing: Theme.stackSpace
    enabled: told.enabled
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.List
    Accessible.name: label

    TextMeasure {
        id: metrics
        font.pixelSize: Theme.bodySize
    }
    Repeater {
        id: points
        model: control.told.entries
        onItemRemoved: index => {
            if (control.focusDue)
                Qt.callLater(control.keepFocusNear, index);
            control.focusDue = false;
        }

        Item {
            id: tile
            required property string value
            required property string text
            required property string removal
            readonly property alias remover: removeButton

            width: control.tileWidth
            height: Theme.tileHeight
            Accessible.role: Accessible.ListItem
            Accessible.name: text

            RoundedBox {
                anchors.fill: parent
                radius: height / 2
                color: Theme.control
            }
            Text {
                anchors.centerIn: parent
                text: tile.text
                textFormat: Text.PlainText
                color: Theme.primary
                font.pixelSize: Theme.bodySize
                Accessible.ignored: true
            }
            IconButton {
                id: removeButton
                x: tile.width - width + 5
                y: -6
                width: 22
                height: 22
                symbol: control.buttons.removalSymbol
                symbolSize: 16
                tint: hovered || visualFocus ? Theme.warning : Theme.secondary
                text: tile.removal
                onClicked: {
                    control.focusDue = visualFocus;
                    control.report("timePointRemoved", tile.value);
                }
                Keys.onDeletePressed: clicked()
            }
        }
    }
    property bool focusDue: false

    IconButton {
        id: plus
        width: control.tileWidth
        height: Theme.tileHeight
        raised: true
        symbol: control.buttons.addTimePoint.symbol
        symbolSize: 16
        text: control.buttons.addTimePoint.name
        onClicked: popover.begin(control.told.hour, control.told.minute)

        AddTimePoint {
            id: popover
            x: Math.round((plus.width - width) / 2)
            y: plus.height + 6
            buttons: control.buttons
            onEntered: (hour, minute) => control.report("timePointAdded", hour + ":" + minute)
        }
    }
}
