import QtQuick
import QtQuick.Templates as T
import Kelpa

/// The preferences: tabs at the top, and below them what belongs to the chosen one.
WindowPage {
    id: page

    property var layout: ({})
    /// What the program says of each control, by its id.
    property var controls: ({})

    readonly property var panes: layout.panes ? layout.panes : []
    property int current: 0

    function choose(index: int) {
        const tab = tabs.itemAt(index);
        if (bar.activeFocus && tab)
            tab.forceActiveFocus(Qt.TabFocusReason);
        current = index;
        action("turned", String(index));
    }
    function turn(places: int) {
        choose((current + places + panes.length) % panes.length);
    }

    Shortcut {
        sequences: ["Ctrl+Tab", "Ctrl+PgDown"]
        onActivated: page.turn(1)
    }
    Shortcut {
        sequences: ["Ctrl+Shift+Tab", "Ctrl+PgUp"]
        onActivated: page.turn(-1)
    }

    PreferencesPane.Ground {}
    Rectangle {
        id: toolbar
        width: page.width
        height: bar.height + 16
        color: Theme.toolbar

        FocusScope {
            id: bar
            anchors.centerIn: parent
            width: row.width
            height: row.height
            Accessible.role: Accessible.PageTabList
            Accessible.name: page.Window.window ? page.Window.window.title : ""

            Row {
                id: row
                spacing: Theme.hairSpace

                Repeater {
                    id: tabs
                    model: page.panes
                    Tab {}
                }
            }
        }
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 1
            color: Theme.hairline
        }
    }
    Repeater {
        model: page.panes

        Loader {
            id: loader
            required property int index
            required property var modelData
            readonly property bool current: index === page.current

            y: toolbar.height
            width: page.width
            height: page.height - y
            // Made when it is first looked at, and then kept with what is being typed in it.
            active: false
            visible: current
            sourceComponent: PreferencesPane {
                layout: loader.modelData
                buttons: page.layout.buttons
                controls: page.controls
            }
            onCurrentChanged: active = active || current
            Component.onCompleted: active = current
        }
    }

    // A symbol above its label.
    component Tab: T.TabButton {
        id: tab

        required property int index
        required property var modelData
        readonly property bool current: index === page.current
        readonly property color ink: current ? Theme.link : Theme.secondary

        implicitWidth: Math.max(76, label.implicitWidth + 20)
        implicitHeight: 56
        hoverEnabled: true
        text: modelData.label
        focusPolicy: current || activeFocus ? Qt.TabFocus : Qt.NoFocus
        Accessible.selectable: true
        Accessible.selected: current
        Accessible.onPressAction: clicked()
        onClicked: page.choose(index)
        Keys.onLeftPressed: page.choose(Math.max(0, index - 1))
        Keys.onRightPressed: page.choose(Math.min(page.panes.length - 1, index + 1))
        Keys.onPressed: event => {
            event.accepted = event.key === Qt.Key_Home || event.key === Qt.Key_End;
            if (event.accepted)
                page.choose(event.key === Qt.Key_Home ? 0 : page.panes.length - 1);
        }

        background: RoundedBox {
            radius: Theme.controlRadius + 1
            color: tab.current ? Theme.tab : Theme.controlOf(tab, "transparent")
            FocusRing {
                shown: tab.visualFocus
                inset: 0
            }
        }
        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            y: 6
            side: 26
            name: tab.modelData.symbol
            color: tab.ink
        }
        Words {
            id: label
            anchors.horizontalCenter: parent.horizontalCenter
            y: 34
            text: tab.text
            color: tab.ink
            font.pixelSize: Theme.footnoteSize
        }
    }
}
