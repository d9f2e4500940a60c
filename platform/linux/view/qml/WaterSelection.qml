import QtQuick
import Kelpa

/// The amounts on offer. A capsule lies behind the chosen one and slides to the next; the arrow keys move it too.
Item {
    id: selection

    /// Each with its millilitres, as text, for a value.
    property var amounts: []
    property string selected
    signal chosen(string millilitres)

    readonly property int columns: Measures.tileColumns
    readonly property int current: amounts.findIndex(amount => amount.value === selected)

    function move(step) {
        const next = current < 0 ? 0 : current + step;
        if (next >= 0 && next < amounts.length)
            chosen(amounts[next].value);
    }

    implicitHeight: Math.ceil(amounts.length / columns) * Measures.tileHeight
    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: current < 0 ? "" : amounts[current].text
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
        model: selection.amounts

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
            Accessible.onPressAction: selection.chosen(modelData.value)

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
                onClicked: selection.chosen(cell.modelData.value)
            }
        }
    }
}
