import QtQuick
import Kelpa

/// A caption, its control, what comes after it, and the lines below that explain it.
Item {
    id: row

    required property var layout
    required property var buttons
    required property ControlState told
    /// Where the captions end.
    property real guide: 0
    /// What can be seen of the pane from this row on.
    property real room: 0

    readonly property string caption: layout.caption
    readonly property string kind: layout.kind
    readonly property bool whole: caption === "" && (kind === "prompts" || kind === "tiles" || kind === "timePoints")
    readonly property real start: whole || guide === 0 ? 0 : guide + Theme.padding
    readonly property real space: width - start
    readonly property real firstLine: kind === "tiles" || kind === "timePoints" ? Theme.tileHeight : Theme.controlHeight
    readonly property real unitWidth: unit.visible ? unit.implicitWidth + Theme.stackSpace : 0

    visible: told.visible
    implicitHeight: lines.y + lines.implicitHeight

    Text {
        id: captionText
        width: row.guide
        visible: row.caption !== ""
        readonly property bool oneLine: lineCount <= 1
        // Centred like the words of the controls, so that both stand on one line at every scale.
        height: oneLine ? row.firstLine : implicitHeight
        topPadding: oneLine ? 0 : Math.max(0, (row.firstLine - metrics.height) / 2)
        verticalAlignment: oneLine ? Text.AlignVCenter : Text.AlignTop
        horizontalAlignment: Text.AlignRight
        wrapMode: Text.Wrap
        text: row.caption
        textFormat: Text.PlainText
        color: Theme.secondary
        font.pixelSize: Theme.bodySize
        Accessible.ignored: true
    }
    FontMetrics {
        id: metrics
        font: captionText.font
    }
    Loader {
        id: loader
        x: row.start
        width: row.stretches ? Math.min(row.space - row.unitWidth, implicitWidth) : implicitWidth
        sourceComponent: row.parts[row.kind]
    }
    readonly property bool stretches: kind === "switch" || kind === "text" || kind === "picker"
    readonly property var parts: ({
        "switch": switchPart, "number": numberPart, "accumulator": accumulatorPart, "text": textPart,
        "picker": pickerPart, "segments": segmentsPart, "timeOfDay": timeOfDayPart, "tiles": tilesPart,
        "timePoints": timePointsPart, "prompts": promptsPart
    })
    Text {
        id: unit
        x: loader.x + loader.width + 8
        height: Theme.controlHeight
        visible: text !== ""
        verticalAlignment: Text.AlignVCenter
        text: row.layout.unit
        textFormat: Text.PlainText
        color: Theme.secondary
        font.pixelSize: Theme.bodySize
        opacity: row.told.enabled ? 1 : Theme.disabledOpacity
        Accessible.ignored: true
    }
    Column {
        id: lines
        x: row.start
        y: Math.max(loader.height, captionText.visible ? captionText.implicitHeight : 0)
        width: row.space

        component Explanation: Text {
            width: parent.width
            topPadding: Theme.hairSpace
            visible: text !== ""
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            font.pixelSize: Theme.footnoteSize
        }
        Explanation {
            text: row.told.problem
            color: Theme.warning
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        Explanation {
            text: row.told.hint
            color: Theme.secondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    Component {
        id: switchPart
        SwitchControl {
            told: row.told
            text: row.layout.label
        }
    }
    Component {
        id: numberPart
        NumberControl {
            told: row.told
            buttons: row.buttons
            label: row.layout.label
        }
    }
    Component {
        id: accumulatorPart
        AccumulatorControl {
            told: row.told
            buttons: row.buttons
            label: row.layout.label
        }
    }
    Component {
        id: textPart
        TextControl {
            told: row.told
            label: row.layout.label
        }
    }
    Component {
        id: pickerPart
        PickerControl {
            told: row.told
            label: row.layout.label
        }
    }
    Component {
        id: segmentsPart
        SegmentsControl {
            told: row.told
            label: row.layout.label
        }
    }
    Component {
        id: timeOfDayPart
        TimeOfDayControl {
            told: row.told
            buttons: row.buttons
            label: row.layout.label
        }
    }
    Component {
        id: tilesPart
        TilesControl {
            told: row.told
            label: row.layout.label
            availableWidth: row.space
        }
    }
    Component {
        id: timePointsPart
        TimePointsControl {
            told: row.told
            buttons: row.buttons
            label: row.layout.label
            availableWidth: row.space
        }
    }
    Component {
        id: promptsPart
        PromptsControl {
            told: row.told
            buttons: row.buttons
            label: row.layout.label
            implicitWidth: row.space
            implicitHeight: Math.max(260, row.room)
        }
    }
}
