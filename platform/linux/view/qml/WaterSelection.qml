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

    function move(step) {
        const next = current < 0 ? 0 : current + step;
        if (next >= 0 && next < entries.length)
            chosen(entries[next].millilitres);
    }

    implicitHeight: Math.ceil(entries.length / columns) * Measures.tileHeight
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: current < 0 ? "" : entries[current].text
    Accessible.focusable: true
    Keys.onLeftPressed: move(-1)
    Keys.onRightPressed: move(1)
    Keys.onUpPressed: move(-columns)
    Keys.onDownPressed: move(columns)

    component Cell: Item {
        required property int place

        x: place % selection.columns * width
        y: Math.floor(place / selection.columns) * height
        width: selection.width / selection.columns
        height: Measures.tileHeight
    }
    component Capsule: RoundedBox {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.hairSpace
        height: parent.height - 2 * Measures.tileInset
        radius: height / 2
    }
    component Slide: NumberAnimation {
        duration: Measures.slideTime
        easing.type: Easing.OutCubic
    }
    Cell {
        place: selection.current
        visible: selection.current >= 0
        Behavior on x {
            Slide {}
        }
        Behavior on y {
            Slide {}
        }

        Capsule {
            id: capsule
            color: Theme.accent

            SoftShadow {}
            FocusRing {
                shown: selection.activeFocus
                corner: capsule.radius
            }
        }
    }
    Repeater {
        model: selection.entries

        Cell {
            id: cell
            required property int index
            required property var modelData
            readonly property bool chosen: index === selection.current

            place: index
            Accessible.role: Accessible.RadioButton
            Accessible.name: modelData.text
            Accessible.checkable: true
            Accessible.checked: chosen
            Accessible.onPressAction: selection.chosen(modelData.millilitres)

            Capsule {
                visible: !cell.chosen
                z: -2
                color: Theme.surfaceOf(area, Theme.surface)
            }
            Words {
                anchors.centerIn: parent
                text: cell.modelData.text
                color: cell.chosen ? Theme.accentText : Theme.primary
            }
            MouseArea {
                id: area
                readonly property bool hovered: containsMouse
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
                onClicked: selection.chosen(cell.modelData.millilitres)
            }
        }
    }
}
