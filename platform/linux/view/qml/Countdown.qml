import QtQuick
import Kelpa

/// A time in large figures. Every figure has a cell of its own, as wide as the widest: nothing moves when a
/// figure changes, whatever the font, and only the cell that changed is painted again.
Item {
    id: countdown

    property string text
    readonly property real figureWidth: Math.ceil(metrics.widest(10, figure => String(figure)))

    implicitWidth: cells.implicitWidth + 2 * Theme.padding
    implicitHeight: cells.implicitHeight + 2 * Theme.padding
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    TextMeasure {
        id: metrics
        font.pixelSize: Theme.displaySize
        font.bold: true
    }
    Row {
        id: cells
        anchors.centerIn: parent

        Repeater {
            model: countdown.text.length
            Words {
                required property int index
                readonly property bool figure: text >= "0" && text <= "9"
                text: countdown.text.charAt(index)
                width: figure ? countdown.figureWidth : implicitWidth
                horizontalAlignment: Text.AlignHCenter
                font: metrics.font
            }
        }
    }
}
