import QtQuick
import Kelpa

/// The break screen: what to do, how long, and the way out of it.
WindowPage {
    id: screen

    property var texts: ({})
    property string prompt
    property string count
    property bool skipOffered: false
    /// How much of the content is seen, where the window itself cannot be faded.
    property real reveal: 1

    Column {
        id: stack

        /// On a screen too small for the least that must be seen, everything shrinks alike.
        readonly property real roomy: 560
        readonly property real fit: Math.max(0.1, Math.min(1, screen.height / roomy, screen.width / roomy))
        /// All but the prompt.
        readonly property real rest: Measures.belowPrompt + countdown.implicitHeight + notice.implicitHeight
            + skip.implicitHeight + 4 * spacing

        anchors.centerIn: parent
        scale: fit
        opacity: screen.reveal
        spacing: Theme.stackSpace

        Prompt {
            anchors.horizontalCenter: parent.horizontalCenter
            text: screen.prompt
            availableWidth: screen.width / stack.fit - 2 * Measures.padding
            availableHeight: screen.height / stack.fit - stack.rest - 2 * Measures.padding
        }
        Item {
            width: 1
            height: Measures.belowPrompt
        }
        // The time in large figures. Every figure has a cell of its own, as wide as the widest: nothing moves when a
        // figure changes, whatever the font, and only the cell that changed is painted again.
        Item {
            id: countdown
            readonly property real figureWidth: Math.ceil(Theme.widest(metrics, [..."0123456789"]))

            anchors.horizontalCenter: parent.horizontalCenter
            implicitWidth: cells.implicitWidth + 2 * Measures.padding
            implicitHeight: cells.implicitHeight + 2 * Measures.padding
            Accessible.role: Accessible.StaticText
            Accessible.name: screen.count

            FontMetrics {
                id: metrics
                font.pixelSize: Measures.countSize
                font.bold: true
            }
            Row {
                id: cells
                anchors.centerIn: parent

                Repeater {
                    model: screen.count.length
                    Words {
                        required property int index
                        readonly property bool figure: text >= "0" && text <= "9"
                        text: screen.count.charAt(index)
                        width: figure ? countdown.figureWidth : implicitWidth
                        horizontalAlignment: Text.AlignHCenter
                        font: metrics.font
                    }
                }
            }
        }
        // What is new: a few words, a link and a line of explanation below it.
        Row {
            id: notice
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Theme.tightSpace
            bottomPadding: Theme.stackSpace

            SpokenWords {
                text: screen.texts.newFeature ?? ""
            }
            Column {
                spacing: Theme.hairSpace

                LinkButton {
                    text: screen.texts.waterReminder ?? ""
                    symbol: screen.texts.linkSymbol ?? ""
                    Accessible.description: screen.texts.hint ?? ""
                    onActivated: screen.action("notice", "")
                }
                Words {
                    text: screen.texts.hint ?? ""
                    color: Theme.secondary
                    font.pixelSize: Theme.footnoteSize
                }
            }
        }
        CapsuleButton {
            id: skip
            anchors.horizontalCenter: parent.horizontalCenter
            visible: screen.skipOffered
            text: screen.texts.skip ?? ""
            onActivated: screen.action("skip", "")
        }
    }
}
