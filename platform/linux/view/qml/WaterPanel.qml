import QtQuick
import Kelpa

/// The water panel: how far the day has come, when the next drink is due, and the answer to it.
WindowPage {
    id: panel

    property var texts: ({})
    property var amounts: []
    property var progress: ({})
    property string tip
    property string remaining
    property string selectedAmount
    /// How much of the content is seen, where the window itself cannot be faded.
    property real reveal: 1
    /// The answers are offered for one of them; a second click does nothing.
    property bool answered: true

    function answer(name) {
        if (answered)
            return;
        answered = true;
        panel.action(name, "");
    }

    border.color: Theme.hairline
    border.width: 1
    Keys.onEscapePressed: panel.action("close", "")

    Item {
        anchors.fill: parent
        anchors.margins: Measures.panelPadding
        opacity: panel.reveal

        CloseButton {
            id: close
            name: panel.texts.close ?? ""
            onActivated: panel.action("close", "")
        }
        // The day's millilitres in figures and as a bar.
        Column {
            id: day
            anchors.top: close.bottom
            width: parent.width
            spacing: Theme.stackSpace

            Row {
                id: figures
                width: parent.width

                Figure {
                    caption: panel.texts.finished ?? ""
                    text: panel.progress.finished ?? ""
                    color: Theme.link
                }
                Figure {
                    caption: panel.texts.percent ?? ""
                    text: panel.progress.percent ?? ""
                    pixelSize: 32
                }
                Figure {
                    visible: text !== ""
                    caption: panel.texts.remain ?? ""
                    text: panel.progress.remain ?? ""
                    color: Theme.warning
                }
                Words {
                    width: figures.width / 3
                    height: figures.height
                    visible: panel.progress.remain === ""
                    text: panel.texts.wellDone ?? ""
                    color: Theme.success
                    font.pixelSize: 18
                    font.bold: true
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 10
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
            }
            Bar {
                x: Theme.hairSpace
                width: parent.width - 2 * Theme.hairSpace
                fraction: panel.progress.fraction ?? 0
            }
        }
        // When the next drink is due. What is due now stands out.
        Item {
            id: counting
            anchors.top: day.bottom
            anchors.bottom: selection.top
            width: parent.width
            readonly property bool counts: panel.remaining !== ""
            Accessible.role: Accessible.StaticText
            Accessible.name: panel.tip + " " + panel.remaining

            Row {
                anchors.centerIn: parent
                spacing: Measures.panelPadding

                Words {
                    anchors.verticalCenter: parent.verticalCenter
                    // Its letters stand on one line with those of the time.
                    anchors.verticalCenterOffset: counting.counts
                        ? time.baselineOffset - time.height / 2 - (baselineOffset - height / 2) : 0
                    width: Math.min(implicitWidth, counting.width - (counting.counts ? time.width + parent.spacing : 0))
                    text: panel.tip
                    color: Theme.secondary
                    font.pixelSize: counting.counts ? 17 : 22
                    font.bold: !counting.counts
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 11
                }
                Words {
                    id: time
                    visible: counting.counts
                    anchors.verticalCenter: parent.verticalCenter
                    text: panel.remaining
                    opacity: Measures.remainingOpacity
                    font.pixelSize: 24
                }
            }
        }
        WaterSelection {
            id: selection
            anchors.bottom: answers.top
            anchors.bottomMargin: Theme.stackSpace
            width: parent.width
            amounts: panel.amounts
            selected: panel.selectedAmount
            onChosen: millilitres => panel.action("amount", millilitres)
        }
        Row {
            id: answers
            anchors.bottom: parent.bottom
            anchors.right: parent.right
            anchors.rightMargin: Theme.hairSpace
            anchors.bottomMargin: Theme.hairSpace
            spacing: Measures.panelPadding
            enabled: !panel.answered

            CapsuleButton {
                height: done.height
                plain: true
                slim: true
                text: panel.texts.skip ?? ""
                ink: Theme.warning
                onActivated: panel.answer("skip")
            }
            Rectangle {
                width: 1
                height: Measures.dividerHeight
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.hairline
            }
            CapsuleButton {
                id: done
                slim: true
                text: panel.texts.done ?? ""
                onActivated: panel.answer("done")
            }
        }
    }

    // A caption above a figure, which becomes a little smaller where it has no room.
    component Figure: Item {
        id: figure

        property alias caption: label.text
        property alias text: number.text
        property alias color: number.color
        property alias pixelSize: number.font.pixelSize

        width: figures.width / 3
        implicitHeight: label.implicitHeight + 40
        Accessible.role: Accessible.StaticText
        Accessible.name: caption + " " + text

        Words {
            id: label
            anchors.horizontalCenter: parent.horizontalCenter
            font.pixelSize: Measures.captionSize
        }
        Words {
            id: number
            // Figures of every size stand on one line.
            anchors.baseline: label.bottom
            anchors.baselineOffset: 31
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: 26
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Math.floor(font.pixelSize * Measures.figureShrink)
            elide: Text.ElideRight
            font.bold: true
        }
    }
    // A cup rides on what is filled of it.
    component Bar: Item {
        id: bar

        required property real fraction

        height: Measures.barHeight

        RoundedBox {
            id: track
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            height: Measures.trackHeight
            color: Theme.track
        }
        RoundedBox {
            id: fill
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(height, track.width * bar.fraction)
            visible: bar.fraction > 0
            height: track.height
            color: Theme.accent
            Behavior on width {
                NumberAnimation { duration: Measures.barTime; easing.type: Easing.InOutQuad }
            }
        }
        RoundedBox {
            x: Math.max(0, (fill.visible ? fill.width : 0) - width)
            anchors.verticalCenter: parent.verticalCenter
            width: Measures.barHeight
            height: width
            color: Theme.surfaceRaised

            SoftShadow {
                strength: 0.6
            }
            Symbol {
                anchors.centerIn: parent
                // Drawings have room around them, letters have none.
                side: Math.round(Measures.cupSize * 6 / 5)
                name: panel.texts.cup ?? ""
                color: Theme.link
            }
        }
    }
}
