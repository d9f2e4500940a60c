import QtQuick
import Kelpa

/// A caption, its control, what comes after it, and the lines below that explain it. A control is the file of its kind's
/// name, and finds everything else in its `row`.
Item {
    id: row

    required property var layout
    required property var buttons
    required property ControlState told
    /// Where the captions end.
    property real guide: 0
    /// What can be seen of the pane from this row on.
    property real room: 0

    readonly property string label: layout.label
    readonly property string explanation: told.problem !== "" ? told.problem : told.hint
    readonly property string kind: layout.kind
    readonly property bool tiled: kind === "tiles" || kind === "timePoints"
    readonly property bool whole: layout.caption === "" && (tiled || kind === "prompts")
    readonly property bool stretches: kind === "switch" || kind === "text" || kind === "picker"
    readonly property real start: whole || guide === 0 ? 0 : guide + Measures.padding
    readonly property real space: width - start
    readonly property real firstLine: tiled ? Theme.capsuleHeight : Theme.controlHeight
    readonly property real unitWidth: unit.visible ? unit.implicitWidth + Theme.stackSpace : 0

    visible: told.visible
    implicitHeight: lines.y + lines.implicitHeight
    Component.onCompleted: loader.setSource(kind[0].toUpperCase() + kind.slice(1) + "Control.qml", { row: row })

    Words {
        id: caption
        width: row.guide
        visible: text !== ""
        // How many lines there are would be known only when the height is.
        readonly property bool oneLine: Theme.roomFor(Theme.widthOf(Theme.bodyMetrics, text)) <= width
        // Centred like the words of the controls, so that both stand on one line at every scale.
        height: oneLine ? row.firstLine : implicitHeight
        topPadding: oneLine ? 0 : Math.max(0, (row.firstLine - Theme.bodyMetrics.height) / 2)
        verticalAlignment: oneLine ? Text.AlignVCenter : Text.AlignTop
        horizontalAlignment: Text.AlignRight
        wrapMode: Text.Wrap
        text: row.layout.caption
        color: Theme.secondary
    }
    Loader {
        id: loader
        x: row.start
        width: row.stretches ? Math.min(row.space - row.unitWidth, implicitWidth) : implicitWidth
        enabled: row.told.enabled
        opacity: enabled ? 1 : Theme.disabledOpacity
    }
    Words {
        id: unit
        visible: text !== ""
        x: loader.x + loader.width + 8
        height: Theme.controlHeight
        verticalAlignment: Text.AlignVCenter
        text: row.layout.unit
        color: Theme.secondary
        opacity: loader.opacity
    }
    Column {
        id: lines
        x: row.start
        y: Math.max(loader.height, caption.visible ? caption.implicitHeight : 0)
        width: row.space

        component Explanation: SpokenWords {
            width: parent.width
            topPadding: Theme.hairSpace
            visible: text !== ""
            wrapMode: Text.Wrap
            color: Theme.secondary
            font.pixelSize: Theme.footnoteSize
        }
        Explanation {
            text: row.told.problem
            color: Theme.warning
            Accessible.role: Accessible.AlertMessage
        }
        Explanation {
            text: row.told.hint
        }
    }
}
