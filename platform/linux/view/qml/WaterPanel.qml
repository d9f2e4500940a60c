import QtQuick
import Kelpa

/// The water panel: how far the day has come, when the next drink is due, and the answer to it.
Rectangle {
    id: panel

    property string finishedText
    property string percentText
    property string remainText
    property string wellDoneText
    property string skipText
    property string doneText
    property string closeText
    property string cup
    property string amounts
    property string finished
    property string percent
    property string remain
    property string fraction
    property string tip
    property string remaining
    property string selectedAmount
    /// How much of the content is seen, where the window itself cannot be faded.
    property real reveal: 1
    /// The answers are offered for one of them; a second click does nothing.
    property bool answered: true
    signal action(string name, string value)

    function answer(name) {
        if (answered)
            return;
        answered = true;
        panel.action(name, "");
    }

    color: Theme.windowBackground
    border.color: Theme.hairline
    border.width: 1
    Keys.onEscapePressed: panel.action("close", "")

    Item {
        anchors.fill: parent
        anchors.margins: Measures.panelPadding
        opacity: panel.reveal

        CloseButton {
            id: close
            anchors.left: parent.left
            anchors.top: parent.top
            name: panel.closeText
            onActivated: panel.action("close", "")
        }
        WaterProgress {
            id: progress
            anchors.top: close.bottom
            anchors.left: parent.left
            anchors.right: parent.right
            finishedText: panel.finishedText
            percentText: panel.percentText
            remainText: panel.remainText
            wellDoneText: panel.wellDoneText
            cup: panel.cup
            finished: panel.finished
            percent: panel.percent
            remain: panel.remain
            fraction: Number(panel.fraction)
        }
        WaterCounting {
            anchors.top: progress.bottom
            anchors.bottom: selection.top
            anchors.left: parent.left
            anchors.right: parent.right
            tip: panel.tip
            remaining: panel.remaining
        }
        WaterSelection {
            id: selection
            anchors.bottom: answers.top
            anchors.bottomMargin: Theme.stackSpace
            anchors.left: parent.left
            anchors.right: parent.right
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

            PlainCapsule {
                height: done.height
                text: panel.skipText
                color: Theme.warning
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
                shadow: Measures.answerShadow
                text: panel.doneText
                onActivated: panel.answer("done")
            }
        }
    }
}
