import QtQuick
import Kelpa

/// A title and, on a card, the rows that belong together.
Column {
    id: section

    required property var layout
    required property var buttons
    required property var controls
    property real guide: 0
    property real room: 0

    readonly property var rows: layout.rows
    /// Hidden with the last of its rows.
    readonly property bool shown: {
        for (const row of rows)
            if (controls[row.id].visible)
                return true;
        return false;
    }

    visible: shown
    spacing: Theme.tightSpace

    Text {
        id: title
        visible: text !== ""
        leftPadding: Theme.cardRadius
        width: parent.width
        wrapMode: Text.Wrap
        text: section.layout.title
        textFormat: Text.PlainText
        color: Theme.secondary
        font.pixelSize: Measures.sectionTitleSize
        font.bold: true
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Item {
        width: parent.width
        height: column.height + 2 * Theme.padding

        Card {
            anchors.fill: parent
        }
        Column {
            id: column
            x: Theme.padding
            y: Theme.padding
            width: parent.width - 2 * Theme.padding
            spacing: 10

            Repeater {
                model: section.rows

                PreferencesRow {
                    required property var modelData
                    width: column.width
                    layout: modelData
                    buttons: section.buttons
                    told: section.controls[modelData.id]
                    guide: section.guide
                    room: section.room - section.y - (title.visible ? title.height + section.spacing : 0) - y
                        - 2 * Theme.padding
                }
            }
        }
    }
}
