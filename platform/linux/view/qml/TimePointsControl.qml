import QtQuick
import QtQuick.Templates as T
import Kelpa

/// Times of day on tiles, each with a button that removes it, and a last tile that adds one.
Flow {
    id: control

    required property PreferencesRow row
    readonly property ControlState told: row.told
    readonly property real tileWidth: Math.ceil(Theme.widthOf(Theme.bodyMetrics, "00:00")) + 3 * Measures.padding
    property bool focusDue: false

    /// The keyboard stays where it was: at the tile that moved up, or at the last one.
    function keepFocusNear(index: int) {
        const next = points.itemAt(Math.min(index, points.count - 1));
        if (next)
            next.remover.forceActiveFocus(Qt.TabFocusReason);
    }

    width: row.space
    spacing: Theme.stackSpace
    Accessible.role: Accessible.List
    Accessible.name: row.label

    Repeater {
        id: points
        model: control.told.entries
        onItemRemoved: index => {
            if (control.focusDue)
                Qt.callLater(control.keepFocusNear, index);
            control.focusDue = false;
        }

        RoundedBox {
            id: tile
            required property var value
            required property string text
            required property string removal
            readonly property alias remover: removeButton

            width: control.tileWidth
            height: Theme.capsuleHeight
            color: Theme.control
            Accessible.role: Accessible.ListItem
            Accessible.name: text

            Words {
                anchors.centerIn: parent
                text: tile.text
            }
            IconButton {
                id: removeButton
                x: tile.width - width + 5
                y: -6
                width: 22
                height: 22
                symbol: control.row.buttons.removalSymbol
                symbolSize: 16
                tint: hovered || visualFocus ? Theme.warning : Theme.secondary
                text: tile.removal
                onClicked: {
                    control.focusDue = visualFocus;
                    control.told.remove(tile.value);
                }
                Keys.onDeletePressed: clicked()
            }
        }
    }
    IconButton {
        id: plus
        width: control.tileWidth
        height: Theme.capsuleHeight
        raised: true
        symbol: control.row.buttons.addTimePoint.symbol
        symbolSize: 16
        text: control.row.buttons.addTimePoint.name
        onClicked: popover.begin(control.told.value)

        // Asks for a time of day. However it is left, that time counts.
        T.Popup {
            id: popover

            function begin(minutes: int) {
                time.minutes = minutes;
                open();
                time.forceActiveFocus(Qt.TabFocusReason);
            }

            x: Math.round((plus.width - width) / 2)
            y: plus.height + 6
            implicitWidth: time.implicitWidth + 2 * padding
            implicitHeight: time.implicitHeight + 2 * padding
            padding: Theme.stackSpace
            margins: 8
            focus: true
            closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
            onClosed: control.told.add(time.minutes)

            contentItem: TimeEntry {
                id: time
                focus: true
                label: plus.text
                row: control.row
                Keys.onReturnPressed: popover.close()

                Connections {
                    target: time.Window.window
                    function onClosing() {
                        popover.close();
                    }
                }
            }
            background: Card {
                floating: true
            }
        }
    }
}
