import QtQuick
import Kelpa

/// The about panel.
WindowPage {
    id: panel

    property var about: ({ icon: "", glyph: "", glyphFont: "", name: "", version: "", copyright: "", link: "" })

    implicitWidth: 340
    implicitHeight: page.implicitHeight + 2 * 28

    Page {
        id: page
        anchors.centerIn: parent
        upright: true
        content: panel.about
        availableWidth: panel.width - 2 * Measures.padding
    }

    // The program's picture and what it says of itself, beside it or below. The preferences have a pane of it as well.
    component Page: Grid {
        id: about

        required property var content
        property string copyright: content.copyright
        property real availableWidth: 400
        property bool upright: false

        columns: upright ? 1 : 2
        columnSpacing: Measures.padding
        rowSpacing: Theme.stackSpace
        verticalItemAlignment: Grid.AlignVCenter
        horizontalItemAlignment: Grid.AlignHCenter

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
            }
            Loader {
                anchors.centerIn: parent
                active: icon.status !== Image.Ready && about.content.glyph !== ""
                sourceComponent: Words {
                    FontLoader {
                        source: "qrc:/fonts/iconfont.ttf"
                    }
                    text: about.content.glyph
                    font.family: about.content.glyphFont
                    font.pixelSize: 80
                    bottomPadding: Measures.belowGlyph
                }
            }
        }
        Column {
            spacing: Theme.tightSpace

            Line {
                text: about.content.name
                color: Theme.primary
                font.pixelSize: Theme.largeTitleSize
                font.bold: true
            }
            Line {
                text: about.content.version
            }
            Line {
                text: about.copyright
            }
            LinkButton {
                anchors.horizontalCenter: about.upright ? parent.horizontalCenter : undefined
                text: about.content.link
                onActivated: Browser.open(about.content.linkAddress)
            }
        }
    }
    component Line: SpokenWords {
        anchors.horizontalCenter: about.upright ? parent.horizontalCenter : undefined
        width: Math.min(implicitWidth, about.availableWidth - (about.upright ? 0 : picture.width + about.columnSpacing))
        wrapMode: Text.Wrap
        horizontalAlignment: about.upright ? Text.AlignHCenter : Text.AlignLeft
        color: Theme.secondary
    }
}
