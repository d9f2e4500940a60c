import QtQuick
import Kelpa

/// The day's millilitres in figures and as a bar on which a cup rides.
Column {
    id: progress

    property string finishedText
    property string percentText
    property string remainText
    property string wellDoneText
    property string cup
    property string finished
    property string percent
    property string remain
    property real fraction: 0

    spacing: Theme.stackSpace

    Row {
        id: figures
        width: parent.width
        readonly property real third: width / 3

        WaterFigure {
            width: figures.third
            caption: progress.finishedText
            figure: progress.finished
            color: Theme.link
            pixelSize: 26
        }
        WaterFigure {
            width: figures.third
            caption: progress.percentText
            figure: progress.percent
            color: Theme.primary
            pixelSize: 32
        }
        WaterFigure {
            width: figures.third
            visible: progress.remain !== ""
            caption: progress.remainText
            figure: progress.remain
            color: Theme.warning
            pixelSize: 26
        }
        Text {
            width: figures.third
            height: figures.height
            visible: progress.remain === ""
            text: progress.wellDoneText
            color: Theme.success
            font.pixelSize: 18
            font.bold: true
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 10
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }
    Item {
        x: Theme.hairSpace
        width: parent.width - 2 * Theme.hairSpace
        height: Measures.barHeight

        RoundedBox {
            id: track
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            height: Measures.trackHeight
            radius: height / 2
            color: Theme.track
        }
        RoundedBox {
            id: fill
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(track.radius * 2, track.width * progress.fraction)
            visible: progress.fraction > 0
            height: track.height
            radius: track.radius
            color: Theme.accent
            Behavior on width {
                NumberAnimation { duration: Theme.slow; easing.type: Easing.InOutQuad }
            }
        }
        RoundedBox {
            id: knob
            x: Math.max(0, (fill.visible ? fill.width : 0) - width)
            anchors.verticalCenter: parent.verticalCenter
            width: Measures.barHeight
            height: width
            radius: width / 2
            color: Theme.surfaceRaised

            SoftShadow {
                anchors.fill: parent
                z: -1
                strength: 0.6
            }
            Symbol {
                anchors.centerIn: parent
                // Drawings have room around them, letters have none.
                width: Math.round(Measures.cupSize * 6 / 5)
                height: width
                name: progress.cup
                color: Theme.link
            }
        }
    }
}
