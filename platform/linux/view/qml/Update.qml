import QtQuick
import Kelpa

/// What is known of updates, and what can be done about it.
WindowPage {
    id: page

    property string headline
    property string text
    property string notes
    property string notesLink
    /// Each with its action for a value. The last one is the one that leads on.
    property var buttons: []
    /// A fraction as text; below 0 while nobody knows how long it takes, empty when there is none.
    property string progress

    implicitWidth: 540
    implicitHeight: content.implicitHeight + 2 * Measures.padding
    color: Theme.card
    focus: true
    onButtonsChanged: settling.restart()

    /// The second click of two is not for the button that took the place of the first one.
    Timer {
        id: settling
        interval: Measures.barTime
    }
    Column {
        id: content
        x: Measures.padding
        y: Measures.padding
        width: page.width - 2 * Measures.padding
        spacing: Measures.padding

        Row {
            width: parent.width
            spacing: Measures.padding

            Image {
                id: picture
                width: 64
                height: 64
                source: "qrc:/pictures/app.orvane.Kelpa.png"
                sourceSize: Qt.size(width * Screen.devicePixelRatio, height * Screen.devicePixelRatio)
                Accessible.ignored: true
            }
            Column {
                width: parent.width - picture.width - parent.spacing
                spacing: Theme.tightSpace

                SpokenWords {
                    width: parent.width
                    text: page.headline
                    wrapMode: Text.Wrap
                    font.pixelSize: Theme.headlineSize
                    font.bold: true
                    Accessible.role: Accessible.Heading
                }
                // It may name a file, which is to be copied.
                TextEdit {
                    width: parent.width
                    visible: text !== ""
                    text: page.text
                    textFormat: TextEdit.PlainText
                    wrapMode: TextEdit.Wrap
                    readOnly: true
                    selectionColor: Theme.accent
                    selectedTextColor: Theme.accentText
                    color: Theme.secondary
                    font.pixelSize: Theme.bodySize
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                LinkButton {
                    visible: page.notes !== ""
                    text: page.notes
                    onActivated: Browser.open(page.notesLink)
                }
                Bar {
                    width: parent.width
                    visible: page.progress !== ""
                    fraction: Number(page.progress)
                }
            }
        }
        Flow {
            width: parent.width
            layoutDirection: Qt.RightToLeft
            spacing: Theme.stackSpace

            Repeater {
                // From the right end: the last one comes first.
                model: page.buttons.slice().reverse()

                PushButton {
                    required property int index
                    required property var modelData

                    text: modelData.text
                    prominent: index === 0 && modelData.value !== "cancel"
                    onClicked: {
                        if (!settling.running)
                            page.action(modelData.value, "");
                    }
                }
            }
        }
    }

    // It fills, or something moves in it while nobody knows how long it takes.
    component Bar: Item {
        id: bar

        required property real fraction
        readonly property bool busy: fraction < 0

        implicitHeight: 18
        Accessible.role: Accessible.ProgressBar
        Accessible.name: busy ? "" : Math.round(fraction * 100) + "%"

        RoundedBox {
            id: track
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            height: 6
            color: Theme.track
        }
        RoundedBox {
            id: filling
            anchors.verticalCenter: parent.verticalCenter
            width: bar.busy ? bar.width / 4 : Math.max(height, bar.width * bar.fraction)
            height: track.height
            color: Theme.accent

            SequentialAnimation on x {
                running: bar.busy && bar.visible
                loops: Animation.Infinite
                onStopped: filling.x = 0
                Move {
                    to: bar.width * 3 / 4
                }
                Move {
                    to: 0
                }
            }
        }
    }
    component Move: NumberAnimation {
        duration: 900
        easing.type: Easing.InOutQuad
    }
}
