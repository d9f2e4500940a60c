import QtQuick
import Kelpa

/// The program's picture and what it says of itself.
Grid {
    id: about

    required property var content
    property string copyright: content.copyright
    property real availableWidth: 400
    /// One below the other, as in the about panel.
    property bool upright: false

    readonly property int alignment: upright ? Text.AlignHCenter : Text.AlignLeft
    readonly property real textWidth: upright ? availableWidth : availableWidth - picture.width - columnSpacing

    columns: upright ? 1 : 2
    columnSpacing: Theme.padding
    rowSpacing: Theme.stackSpace
    verticalItemAlignment: Grid.AlignVCenter
    horizontalItemAlignment: Grid.AlignHCenter

    component Line: Text {
        width: Math.min(implicitWidth, about.textWidth)
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        horizontalAlignment: about.alignment
        color: Theme.secondary
        font.pixelSize: Theme.bodySize
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Item {
        id: picture
        width: Measures.pictureSize
        height: width
        Accessible.role: Accessible.Graphic
        Accessible.name: about.content.name

        Image {
            id: icon
            anchors.fill: parent
            source: about.content.icon ? "qrc:/pictures/" + about.content.icon + ".png" : ""
            sourceSize: Qt.size(width * Screen.devicePixelRatio, height * Screen.devicePixelRatio)
            smooth: true
        }
        Loader {
            anchors.centerIn: parent
            active: icon.status !== Image.Ready && about.content.glyph !== ""
            sourceComponent: Text {
                FontLoader {
                    source: "qrc:/fonts/iconfont.ttf"
                }
                text: about.content.glyph
                color: Theme.primary
                font.family: about.content.glyphFont
                font.pixelSize: 80
                bottomPadding: Measures.belowGlyph
                Accessible.ignored: true
            }
        }
    }
    Column {
        spacing: Theme.tightSpace

        Line {
            anchors.horizontalCenter: about.upright ? parent.horizontalCenter : undefined
            text: about.content.name
            color: Theme.primary
            font.pixelSize: Theme.largeTitleSize
            font.bold: true
        }
        Line {
            anchors.horizontalCenter: about.upright ? parent.horizontalCenter : undefined
            text: about.content.version
        }
        Line {
            anchors.horizontalCenter: about.upright ? parent.horizontalCenter : undefined
            text: about.copyright
        }
        LinkButton {
            anchors.horizontalCenter: about.upright ? parent.horizontalCenter : undefined
            text: about.content.link
            onActivated: Browser.open(about.content.linkAddress)
        }
    }
}
