import QtQuick
import QtQuick.Templates as T
import Kelpa

/// One of the tabs: a symbol above its label.
T.TabButton {
    id: tab

    required property int index
    required property var layout
    property int count: 1
    property bool current: false
    signal wanted(int index)

    implicitWidth: Math.max(76, label.implicitWidth + 20)
    implicitHeight: 56
    hoverEnabled: true
    text: layout.label
    focusPolicy: current || activeFocus ? Qt.TabFocus : Qt.NoFocus
    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: current
    Accessible.onPressAction: wanted(index)
    onClicked: wanted(index)
    Keys.onLeftPressed: wanted(Math.max(0, index - 1))
    Keys.onRightPressed: wanted(Math.min(count - 1, index + 1))
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home)
            wanted(0);
        else if (event.key === Qt.Key_End)
            wanted(count - 1);
        else
            return;
        event.accepted = true;
    }

    background: RoundedBox {
        radius: Theme.controlRadius + 1
        color: tab.current ? Theme.tab : tab.pressed ? Theme.controlPressed : tab.hovered ? Theme.controlHovered
            : "transparent"
        FocusRing {
            shown: tab.visualFocus
            inset: 0
        }
    }
    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 6
        width: 26
        height: 26
        name: tab.layout.symbol
        color: tab.current ? Theme.link : Theme.secondary
    }
    Text {
        id: label
        anchors.horizontalCenter: parent.horizontalCenter
        y: 34
        text: tab.text
        textFormat: Text.PlainText
        color: tab.current ? Theme.link : Theme.secondary
        font.pixelSize: Theme.footnoteSize
        Accessible.ignored: true
    }
}
