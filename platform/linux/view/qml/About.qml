import QtQuick
import Kelpa

/// The about panel.
Rectangle {
    id: page

    property var about: ({ icon: "", glyph: "", glyphFont: "", name: "", version: "", copyright: "", link: "" })
    signal action(string name, string value)

    implicitWidth: 340
    implicitHeight: content.implicitHeight + 2 * 28
    color: Theme.windowBackground

    Shortcut {
        sequences: ["Ctrl+W", "Escape"]
        onActivated: page.Window.window.close()
    }
    AboutPage {
        id: content
        anchors.centerIn: parent
        upright: true
        content: page.about
        availableWidth: page.width - 2 * Theme.padding
    }
}
