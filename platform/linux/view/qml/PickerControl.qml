import QtQuick
import QtQuick.Templates as T
import Kelpa

/// One of a few entries, out of a list that drops down.
T.ComboBox {
    id: control

    required property PreferencesRow row
    readonly property ControlState told: row.told
    property bool opening: false

    function follow() {
        currentIndex = told.entries.indexOf(told.value);
    }

    readonly property real textWidth: Math.ceil(Theme.widest(Theme.bodyMetrics, told.entries.texts)) + 1

    implicitWidth: Math.max(116, textWidth + leftPadding + rightPadding)
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.stackSpace
    rightPadding: 34
    hoverEnabled: true
    model: told.entries
    textRole: "text"
    valueRole: "value"
    font.pixelSize: Theme.bodySize
    Accessible.name: row.label
    Accessible.description: displayText
    onActivated: index => told.enter(told.entries.valueAt(index))
    Component.onCompleted: {
        told.valueTold.connect(follow);
        follow();
    }
    // The release would close a list that the press has opened.
    Keys.onReturnPressed: opening = !popup.visible
    Keys.onReleased: event => {
        event.accepted = opening && event.key === Qt.Key_Return && !event.isAutoRepeat;
        if (!event.accepted)
            return;
        opening = false;
        popup.open();
    }

    contentItem: Words {
        text: control.displayText
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }
    indicator: Symbol {
        x: control.width - width - 10
        y: (control.height - height) / 2
        side: 14
        name: "chevron.up.chevron.down"
        color: Theme.secondary
    }
    background: RoundedBox {
        radius: Theme.controlRadius
        color: Theme.controlOf(control, Theme.control)
        FocusRing {
            shown: control.visualFocus
        }
    }
    delegate: T.ItemDelegate {
        id: line
        required property var model
        required property int index
        width: ListView.view.width
        height: Theme.controlHeight
        hoverEnabled: true
        highlighted: control.highlightedIndex === index
        text: model.text

        background: RoundedBox {
            radius: 5
            color: line.highlighted ? Theme.accent : "transparent"
        }
        Symbol {
            x: 6
            anchors.verticalCenter: parent.verticalCenter
            visible: control.currentIndex === line.index
            side: 13
            name: "checkmark"
            color: line.highlighted ? Theme.accentText : Theme.primary
        }
        Words {
            x: 25
            width: line.width - x - 8
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
            text: line.text
            color: line.highlighted ? Theme.accentText : Theme.primary
        }
    }
    popup: T.Popup {
        y: control.height + 4
        width: control.width + 4
        height: Math.min(contentItem.implicitHeight + topPadding + bottomPadding, 320)
        padding: 5
        margins: 8

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            // Lines that nobody sees cost memory, and those that are still there when the window ends crash the toolkit
            // while it tells screen readers of them.
            model: control.popup.visible && control.Window.visibility !== Window.Hidden ? control.delegateModel : null
            currentIndex: control.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
            Accessible.role: Accessible.List
            Accessible.name: control.row.label
        }
        background: Card {
            floating: true
        }
    }
    ControlButton.Hand {}
}
