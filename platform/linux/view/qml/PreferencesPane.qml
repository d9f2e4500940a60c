import QtQuick
import QtQuick.Templates as T
import Kelpa

/// What stands under one tab: sections of settings, or what the program says of itself. It scrolls when the window is too
/// small for it.
Flickable {
    id: pane

    required property var layout
    required property var buttons
    required property var controls

    readonly property var captions: [].concat(...layout.sections.map(section => section.rows.map(row => row.caption)))
    readonly property real captionWidth: Theme.roomFor(Theme.widest(Theme.bodyMetrics, captions))

    /// Scrolls as little as is needed to show an item.
    function reveal(item: Item) {
        const top = item.mapToItem(contentItem, 0, -Measures.padding).y;
        const bottom = top + item.height + 2 * Measures.padding;
        if (top < contentY)
            contentY = Math.max(0, top);
        else if (bottom > contentY + height)
            contentY = Math.min(contentHeight, bottom) - height;
    }
    function holds(item: Item): bool {
        for (let each = item; each; each = each.parent)
            if (each === contentItem)
                return true;
        return false;
    }

    contentWidth: width
    contentHeight: Math.max(height, column.height + 2 * column.y, about.height + 2 * Measures.padding)
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: ScrollIndicator {}
    Accessible.role: Accessible.Pane
    Accessible.name: layout.label

    Ground {}
    Column {
        id: column
        x: Math.round((pane.width - width) / 2)
        y: Measures.padding + 4
        width: Math.min(Theme.formWidth, pane.width - 2 * 20)
        spacing: 20

        readonly property real inner: width - 2 * Measures.padding
        /// Where no row has a caption, there is no column of them.
        readonly property real guide: pane.captions.every(caption => caption === "") ? 0
            : Math.min(0.45 * inner, Math.max(pane.captionWidth, Math.round(0.24 * inner)))

        Repeater {
            model: pane.layout.sections
            Section {}
        }
    }
    Loader {
        id: about
        anchors.centerIn: parent
        active: pane.layout.about !== undefined
        sourceComponent: About.Page {
            content: pane.layout.about
            copyright: pane.controls.copyright.value ?? ""
            availableWidth: pane.width - 2 * Measures.padding
        }
    }
    Connections {
        target: pane.Window.window
        function onActiveFocusItemChanged() {
            const item = pane.Window.window.activeFocusItem;
            if (pane.visible && item && item.activeFocusOnTab && pane.holds(item))
                pane.reveal(item);
        }
    }

    // What lies behind everything: a click there ends what is being typed.
    component Ground: MouseArea {
        anchors.fill: parent
        onPressed: parent.forceActiveFocus(Qt.MouseFocusReason)
    }
    // A title and, on a card, the rows that belong together.
    component Section: Column {
        id: section

        required property var modelData

        width: column.width
        // Hidden with the last of its rows.
        visible: modelData.rows.some(row => pane.controls[row.id].visible)
        spacing: Theme.tightSpace

        SpokenWords {
            id: title
            visible: text !== ""
            leftPadding: Theme.cardRadius
            width: parent.width
            wrapMode: Text.Wrap
            text: section.modelData.title
            color: Theme.secondary
            font.pixelSize: Measures.sectionTitleSize
            font.bold: true
            Accessible.role: Accessible.Heading
        }
        Card {
            width: parent.width
            height: rows.height + 2 * Measures.padding

            Column {
                id: rows
                x: Measures.padding
                y: Measures.padding
                width: parent.width - 2 * Measures.padding
                spacing: 10

                Repeater {
                    model: section.modelData.rows

                    PreferencesRow {
                        required property var modelData
                        width: rows.width
                        layout: modelData
                        buttons: pane.buttons
                        told: pane.controls[modelData.id]
                        guide: column.guide
                        room: pane.height - 2 * column.y - section.y - (title.visible ? title.height + section.spacing : 0)
                            - y - 2 * Measures.padding
                    }
                }
            }
        }
    }
}
