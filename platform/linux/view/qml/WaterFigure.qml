import QtQuick
import Kelpa

/// A caption above a figure, which becomes a little smaller where it has no room.
Item {
    id: item

    property alias caption: label.text
    property alias figure: number.text
    property alias color: number.color
    property alias pixelSize: number.font.pixelSize

    /// Figures of every size stand on one line.
    readonly property real baseOfFigure: 31

    implicitHeight: label.implicitHeight + 40
    Accessible.role: Accessible.StaticText
    Accessible.name: caption + " " + figure

    Text {
        id: label
        anchors.horizontalCenter: parent.horizontalCenter
        color: Theme.primary
        font.pixelSize: Measures.captionSize
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
    Text {
        id: number
        anchors.baseline: label.bottom
        anchors.baselineOffset: item.baseOfFigure
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Math.floor(font.pixelSize * Measures.figureShrink)
        elide: Text.ElideRight
        font.bold: true
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
}
