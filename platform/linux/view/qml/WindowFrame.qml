import QtQuick
import Kelpa

/// What stands around an ordinary window where the desktop leaves that to the window: a bar with its title and
/// a button that closes it, a line around everything, and edges to take hold of.
Item {
    id: frame

    readonly property int titleHeight: 40
    readonly property int edge: 4
    readonly property int corner: 12
    readonly property bool floating: Window.visibility === Window.Windowed
    readonly property bool resizable: Window.window !== null
        && Window.window.minimumWidth < Window.window.maximumWidth

    function switchMaximized() {
        if (!resizable)
            return;
        if (floating)
            Window.window.showMaximized();
        else
            Window.window.showNormal();
    }

    anchors.fill: parent

    Rectangle {
        width: frame.width
        height: frame.titleHeight
        color: Theme.toolbar

        // The desktop moves the window from there on, and keeps the release of the button to itself.
        DragHandler {
            target: null
            onActiveChanged: {
                if (active)
                    frame.Window.window.startSystemMove();
            }
        }
        TapHandler {
            onDoubleTapped: frame.switchMaximized()
        }
        Words {
            anchors.centerIn: parent
            width: Math.min(implicitWidth, parent.width - 2 * frame.titleHeight)
            text: frame.Window.window ? frame.Window.window.title : ""
            elide: Text.ElideRight
            color: frame.Window.active ? Theme.primary : Theme.secondary
            font.bold: true
        }
        // As with the bars that desktops draw, Tab does not lead here: there are shortcuts for it.
        CloseButton {
            anchors.right: parent.right
            anchors.rightMargin: (frame.titleHeight - height) / 2
            anchors.verticalCenter: parent.verticalCenter
            width: 24
            height: 24
            activeFocusOnTab: false
            Accessible.ignored: true
            onActivated: frame.Window.window.close()
        }
    }
    Rectangle {
        anchors.fill: parent
        visible: frame.floating
        color: "transparent"
        border.color: Theme.hairline
        border.width: 1
    }
    Repeater {
        model: frame.floating && frame.resizable ? [
            Qt.LeftEdge, Qt.RightEdge, Qt.TopEdge, Qt.BottomEdge, Qt.LeftEdge | Qt.TopEdge,
            Qt.RightEdge | Qt.TopEdge, Qt.LeftEdge | Qt.BottomEdge, Qt.RightEdge | Qt.BottomEdge
        ] : []

        MouseArea {
            required property int modelData
            readonly property bool atRight: modelData & Qt.RightEdge
            readonly property bool atBottom: modelData & Qt.BottomEdge
            readonly property bool sideways: atRight || modelData & Qt.LeftEdge
            readonly property bool upright: atBottom || modelData & Qt.TopEdge
            readonly property int thickness: sideways && upright ? frame.corner : frame.edge

            x: atRight ? frame.width - thickness : 0
            y: atBottom ? frame.height - thickness : 0
            width: sideways ? thickness : frame.width
            height: upright ? thickness : frame.height
            cursorShape: !upright ? Qt.SizeHorCursor : !sideways ? Qt.SizeVerCursor
                : atRight === atBottom ? Qt.SizeFDiagCursor : Qt.SizeBDiagCursor
            onPressed: frame.Window.window.startSystemResize(modelData)
        }
    }
}
