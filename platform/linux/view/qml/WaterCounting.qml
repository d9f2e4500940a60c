import QtQuick
import Kelpa

/// When the next drink is due. What is due now stands out.
Item {
    id: counting

    property string tip
    property string remaining
    readonly property bool counts: remaining !== ""

    Accessible.role: Accessible.StaticText
    Accessible.name: tip + " " + remaining

    Row {
        anchors.centerIn: parent
        spacing: Measures.panelPadding

        Text {
            anchors.verticalCenter: counting.counts ? undefined : parent.verticalCenter
            anchors.baseline: counting.counts ? time.baseline : undefined
            width: Math.min(implicitWidth, counting.width - (counting.counts ? time.width + parent.spacing : 0))
            text: counting.tip
            color: Theme.secondary
            font.pixelSize: counting.counts ? 17 : 22
            font.bold: !counting.counts
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 11
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
        Text {
            id: time
            anchors.verticalCenter: parent.verticalCenter
            visible: counting.counts
            text: counting.remaining
            color: Theme.primary
            opacity: Measures.remainingOpacity
            font.pixelSize: 24
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
    }
}
