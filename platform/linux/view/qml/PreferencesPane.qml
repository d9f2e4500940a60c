import QtQuick
import Kelpa

/// What stands under one tab: sections of settings that scroll when the window is too small for them.
Flickable {
    id: pane

    required property var layout
    required property var buttons
    required property var controls

    readonly property var captions: {
        let all = [];
        for (const section of layout.sections)
            for (const row of section.rows)
                all.push(row.caption);
        return all;
    }
    readonly property real captionWidth: {
        let widest = 0;
        for (const caption of captions)
            widest = Math.max(widest, metrics.widthOf(caption));
        // Hinted letters can be a little wider than their measure.
        return Math.ceil(widest * 1.03) + 2;
    }

    /// Scrolls as little as is needed to show an item.
    function reveal(item: Item) {
        const top = item.mapToItem(contentItem, 0, 0).y;
        const margin = Theme.padding;
        if (top - margin < contentY)
            contentY = Math.max(0, top - margin);
        else if (top + item.height + margin > contentY + height)
            contentY = Math.min(contentHeight - height, top + item.height + margin - height);
    }
    function holds(item: Item): bool {
        for (let each = item; each; each = each.parent)
            if (each === contentItem)
                return true;
        return false;
    }

    contentWidth: width
    contentHeight: Math.max(height, column.height + 2 * column.y)
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    Accessible.role: Accessible.Pane
    Accessible.name: layout.label

    TextMeasure {
        id: metrics
        font.pixelSize: Theme.bodySize
    }
    ClickableGround {}
    Column {
        id: column
        x: Math.round((pane.width - width) / 2)
        y: Theme.padding + 4
        width: Math.min(Theme.formWidth, pane.width - 2 * 20)
        spacing: 20

        readonly property real inner: width - 2 * Theme.padding
        /// Where no row has a caption, there is no column of them.
        readonly property real guide: pane.captions.every(caption => caption === "") ? 0 : Math.min(0.45 * inner, Math.max(pane.captionWidth, Math.round(0.24 * inner)))

        Repeater {
            model: pane.layout.sections

            PreferencesSection {
                required property var modelData
                width: column.width
                layout: modelData
                buttons: pane.buttons
                controls: pane.controls
                guide: column.guide
                room: pane.height - 2 * column.y
            }
        }
    }
    ScrollIndicator {
        flickable: pane
    }
    Connections {
        target: pane.Window.window
        function onActiveFocusItemChanged() {
            const item = pane.Window.window.activeFocusItem;
            if (pane.visible && item && item.activeFocusOnTab && pane.holds(item))
                pane.reveal(item);
        }
    }
}
