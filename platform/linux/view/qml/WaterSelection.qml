import QtQuick
import Kelpa

/// The amounts on offer. A capsule lies behind the chosen one and slides to the next; the arrow keys move it too.
Item {
    id: selection

    property string amounts
    property string selected
    signal chosen(string millilitres)

    readonly property var entries: {
        const lines = amounts === "" ? [] : amounts.split("\n");
        const all = [];
        for (let i = 0; i + 1 < lines.length; i += 2)
            all.push({ millilitres: lines[i], text: lines[i + 1] });
        return all;
    }
    readonly property int columns: Measures.tileColumns
    readonly property int current: entries.findIndex(entry => entry.millilitres === selected)
    readonly property real cellWidth: width / columns
    readonly property real cellHeight: Measures.tileHeight

    function move(step) {
        const next = current < 0 ? 0 : current + step;
        if (next >= 0 && next < entries.length)
            chosen(entries[next].millilitres);
    }

    implicitHeight: Math.ceil(entries.length / columns) * cellHeight
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: current < 0 ? "" : entries[current].text
    Accessible.focusable: true
    Keys.onLeftPressed: move(-1)
    Keys.onRightPressed: move(1)
    Keys.onUpPressed: move(-columns)
    Keys.onDownPressed: move(columns)

    RoundedBox {
        id: capsule
        visible: selection.current >= 0
        x: selection.current % selection.columns * selection.cellWidth + Theme.hairSpace
        y: Math.floor(selection.current / selection.columns) * selection.cellHeight + Measures.tileInset
        width: selection.cellWidth - 2 * Theme.hairSpace
        height: selection.cellHeight - 2 * Measures.tileInset
        radius: height / 2
        color: Theme.accent
        Behavior on x {
            NumberAnimation { duration: Theme.slide; easing.type: Easing.OutCubic }
        }
        Behavior on y {
            NumberAnimation { duration: Theme.slide; easing.type: Easing.OutCubic }
        }

        SoftShadow {
            anchors.fill: parent
            z: -1
        }
    }
    RoundedBox {
        visible: selection.activeFocus && selection.current >= 0
        anchors.fill: capsule
        anchors.margins: -3
        radius: capsule.radius + 3
        color: "transparent"
        borderColor: Theme.focusRing
        borderWidth: 3
    }
    Repeater {
        model: selection.entries

        Item {
            id: cell
            required property int index
            required property var modelData
            readonly property bool chosen: index === selection.current

            x: index % selection.columns * selection.cellWidth
            y: Math.floor(index / selection.columns) * selection.cellHeight
            width: selection.cellWidth
            height: selection.cellHeight
            Accessible.role: Accessible.RadioButton
            Accessible.name: modelData.text
            Accessible.checkable: true
            Accessible.checked: chosen
            Accessible.onPressAction: selection.chosen(cell.modelData.millilitres)

            RoundedBox {
                anchors.fill: parent
                anchors.leftMargin: Theme.hairSpace
                anchors.rightMargin: Theme.hairSpace
                anchors.topMargin: Measures.tileInset
                anchors.bottomMargin: Measures.tileInset
                radius: height / 2
                visible: !cell.chosen
                z: -2
                color: area.pressed ? Theme.surfacePressed : area.containsMouse ? Theme.surfaceHovered : Theme.surface
            }
            Text {
                anchors.centerIn: parent
                text: cell.modelData.text
                color: cell.chosen ? Theme.accentText : Theme.primary
                font.pixelSize: Theme.bodySize
                textFormat: Text.PlainText
                Accessible.ignored: true
            }
            MouseArea {
                id: area
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
                onClicked: selection.chosen(cell.modelData.millilitres)
            }
        }
    }
}
