import QtQuick
import Kelpa

/// What the days were like: charts one below the other, which share their columns, and the figures of one of these.
WindowPage {
    id: page

    property var texts: ({})
    /// Periods and charts, a bar of each chart for each period. Empty between two showings.
    property var picture: ({})

    readonly property var periods: picture?.periods ?? []
    readonly property int count: periods.length
    readonly property var charts: picture?.charts ?? []
    readonly property bool weeks: picture?.weeks ?? false
    /// The column whose figures are shown: that under the pointer, else the one that was chosen.
    readonly property int current: hovered >= 0 ? hovered : chosen
    property int hovered: -1
    property int chosen: -1
    property bool asking: false

    readonly property var inks: [[Theme.accent], [Theme.success, Theme.outline], [Theme.water]]

    function dateOf(text: string): date {
        const parts = text.split("-");
        return new Date(parts[0], parts[1] - 1, parts[2]);
    }
    function written(text: string, format: int): string {
        return dateOf(text).toLocaleDateString(Qt.locale(), format);
    }
    function nameOf(period: var): string {
        if (!period)
            return "";
        return period.first === period.last ? written(period.first, Locale.LongFormat)
            : written(period.first, Locale.ShortFormat) + " – " + written(period.last, Locale.ShortFormat);
    }
    /// Without those of a chart that has no such column yet.
    function figuresOf(column: int): string {
        return charts.filter(chart => chart.bars[column])
            .map(chart => chart.name + ": " + chart.bars[column].texts.join(", ")).join("; ");
    }

    // The button that had the keyboard is gone.
    onAskingChanged: (asking ? keep : forget).forceActiveFocus(Qt.TabFocusReason)
    // The columns are others then, and not only higher.
    onCountChanged: {
        chosen = count - 1;
        hovered = -1;
    }

    Shortcut {
        sequences: ["Escape"]
        onActivated: {
            if (page.asking)
                page.asking = false;
            else
                page.Window.window.close();
        }
    }
    FontMetrics {
        id: small
        font.pixelSize: Theme.smallestSize
    }

    Item {
        id: header
        x: Measures.padding
        y: Measures.padding
        width: page.width - 2 * x
        height: ranges.height

        SpokenWords {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - ranges.width - Measures.padding
            elide: Text.ElideRight
            text: page.nameOf(page.periods[page.current])
            font.pixelSize: Theme.headlineSize
            font.bold: true
            Accessible.role: Accessible.Heading
        }
        Segments {
            id: ranges
            anchors.right: parent.right
            model: [page.texts.days ?? "", page.texts.weeks ?? ""]
            chosen: page.weeks ? 1 : 0
            Accessible.name: page.texts.title ?? ""
            onPicked: place => {
                if (place !== chosen)
                    page.action("range", place === 1 ? "weeks" : "days");
            }
        }
    }
    Card {
        id: card
        x: Measures.padding
        y: header.y + header.height + Theme.stackSpace
        width: page.width - 2 * x
        height: footer.y - y - Theme.stackSpace

        readonly property real gutter: Theme.widest(small, page.charts.map(chart => chart.scale)) + Theme.stackSpace
        readonly property real columnWidth: page.count > 0 ? stage.width / page.count : 0

        Column {
            id: stack
            x: Measures.padding
            y: Theme.stackSpace
            width: parent.width - 2 * x

            Repeater {
                model: page.charts.length

                HistoryChart {
                    content: page.charts[index] ?? { name: "", scale: "", bars: [] }
                    inks: page.inks[index] ?? [Theme.accent]
                    current: page.current
                    gutter: card.gutter
                    columnWidth: card.columnWidth
                    width: stack.width
                    height: (card.height - stack.y - labels.height - Theme.stackSpace) / Math.max(1, page.charts.length)
                }
            }
        }
        // Where the columns stand, over all charts.
        Item {
            id: stage
            x: stack.x + card.gutter
            y: stack.y
            width: stack.width - card.gutter
            height: card.height - y - Theme.hairSpace
            Accessible.role: Accessible.List
            Accessible.name: page.texts.title ?? ""

            Repeater {
                id: columns
                model: page.count
                PeriodColumn {}
            }
            Item {
                id: labels
                anchors.bottom: parent.bottom
                width: parent.width
                height: 2 * (small.height + 1) + Theme.hairSpace
            }
        }
        HoverHandler {
            /// What is drawn anew is told again that the pointer is on it, also of one that rests.
            property point seen

            onPointChanged: {
                if (point.position === seen)
                    return;
                seen = point.position;
                const at = Math.floor((point.position.x - stage.x) / card.columnWidth);
                page.hovered = at >= 0 && at < page.count ? at : -1;
            }
            onHoveredChanged: {
                if (!hovered)
                    page.hovered = -1;
            }
        }
    }
    Item {
        id: footer
        x: Measures.padding
        y: page.height - height - Measures.padding
        width: page.width - 2 * x
        height: Math.max(Theme.controlHeight, said.implicitHeight)

        SpokenWords {
            id: said
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - buttons.width - Measures.padding
            wrapMode: Text.Wrap
            text: page.asking ? page.texts.question ?? "" : page.picture?.note ?? ""
            color: page.asking ? Theme.primary : Theme.secondary
            Accessible.ignored: text === ""
            Accessible.role: page.asking ? Accessible.AlertMessage : Accessible.StaticText
        }
        Row {
            id: buttons
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.stackSpace

            PushButton {
                id: forget
                visible: !page.asking
                text: page.texts.forget ?? ""
                onClicked: page.asking = true
            }
            PushButton {
                id: keep
                visible: page.asking
                text: page.texts.cancel ?? ""
                onClicked: page.asking = false
            }
            PushButton {
                visible: page.asking
                text: page.texts.confirm ?? ""
                onClicked: {
                    page.asking = false;
                    page.action("forget", "");
                }
            }
        }
    }

    // All of a period: its labels below, and what the keyboard and a screen reader meet.
    component PeriodColumn: Item {
        id: column

        required property int index
        readonly property var period: page.periods[index]
        readonly property date day: page.dateOf(period.first)
        readonly property bool newMonth: index === 0 || day.getMonth() !== page.dateOf(page.periods[index - 1].first).getMonth()
        readonly property bool shown: index === page.current

        function go(to: int) {
            const other = columns.itemAt(Math.max(0, Math.min(page.count - 1, to)));
            page.chosen = other.index;
            page.hovered = -1; // a pointer that rests is not pointing
            other.forceActiveFocus(Qt.TabFocusReason);
        }

        x: index * card.columnWidth
        width: card.columnWidth
        height: stage.height
        // What has the focus keeps its place among the stops until it is gone.
        activeFocusOnTab: index === page.chosen || activeFocus
        Accessible.role: Accessible.ListItem
        Accessible.focusable: true
        Accessible.name: page.nameOf(period)
        Accessible.description: page.figuresOf(index)
        Keys.onLeftPressed: go(index - 1)
        Keys.onRightPressed: go(index + 1)
        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
            if (event.accepted)
                go(event.key === Qt.Key_Home ? 0 : page.count - 1);
        }

        TapHandler {
            onTapped: page.chosen = column.index
        }
        Item {
            y: dates.y
            width: column.width
            height: dates.height

            FocusRing {
                shown: column.activeFocus
            }
        }
        Column {
            id: dates
            y: column.height - labels.height
            width: column.width

            Label {
                text: String(column.day.getDate())
                color: column.shown ? Theme.primary : Theme.secondary
                font.bold: column.shown
            }
            Label {
                text: page.weeks ? (column.newMonth ? Qt.locale().standaloneMonthName(column.day.getMonth(), Locale.ShortFormat) : "")
                    : Qt.locale().standaloneDayName(column.day.getDay(), Locale.ShortFormat)
            }
        }
    }
    component Label: Words {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        color: Theme.secondary
        font.pixelSize: Theme.smallestSize
    }
}
