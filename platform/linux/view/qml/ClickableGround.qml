import QtQuick

/// What lies behind everything: a click there ends what is being typed.
MouseArea {
    anchors.fill: parent
    onPressed: parent.forceActiveFocus(Qt.MouseFocusReason)
}
