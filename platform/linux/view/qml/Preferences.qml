import QtQuick
import Kelpa

/// The preferences: tabs at the top, and below them what belongs to the chosen one.
Rectangle {
    id: page

    property var layout: ({})
    /// Of the About pane; empty until it is told.
    property string copyright
    /// What the program says of each control, by its id.
    property var controls: ({})
    signal action(string name, string value)

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

    color: Theme.windowBackground

    Shortcut {
        sequences: ["Ctrl+W"]
        onActivated: page.Window.window.close()
    }
    Shortcut {
        sequences: ["Ctrl+Tab", "Ctrl+PgDown"]
        onActivated: page.turn(1)
    }
    Shortcut {
        sequences: ["Ctrl+Shift+Tab", "Ctrl+PgUp"]
        onActivated: page.turn(-1)
    }

    ClickableGround {}
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

                    PreferencesTab {
                        required property var modelData
                        layout: modelData
                        count: page.panes.length
                        current: index === page.current
                        onWanted: next => page.choose(next)
                    }
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
            sourceComponent: modelData.about ? aboutPane : settingsPane
            onCurrentChanged: {
                if (current)
                    active = true;
            }
            Component.onCompleted: {
                if (current)
                    active = true;
            }

            Component {
                id: settingsPane
                PreferencesPane {
                    layout: loader.modelData
                    buttons: page.layout.buttons
                    controls: page.controls
                }
            }
            Component {
                id: aboutPane
                Flickable {
                    contentWidth: width
                    contentHeight: Math.max(height, about.implicitHeight + 2 * Theme.padding)
                    boundsBehavior: Flickable.StopAtBounds
                    clip: true
                    Accessible.role: Accessible.Pane
                    Accessible.name: loader.modelData.label

                    ClickableGround {}
                    AboutPage {
                        id: about
                        anchors.centerIn: parent
                        content: loader.modelData.about
                        copyright: page.copyright
                        availableWidth: page.width - 2 * Theme.padding
                    }
                }
            }
        }
    }
}
