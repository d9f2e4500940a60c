import QtQuick
import Kelpa

/// One of the charts: its name and the chosen figures above, the scale beside, and the bars.
Item {
    id: chart

    required property int index
    required property var content
    /// A colour for each part of a bar.
    required property var inks
    /// The column whose figures are told.
    required property int current
    /// What the scale has to the left of the columns.
    required property real gutter
    required property real columnWidth

    readonly property var figures: content.bars[current]?.texts ?? []

    SpokenWords {
        id: name
        text: chart.content.name
        color: Theme.secondary
        font.pixelSize: Measures.sectionTitleSize
        font.bold: true
        Accessible.role: Accessible.Heading
    }
    Row {
        anchors.right: parent.right
        anchors.verticalCenter: name.verticalCenter
        spacing: Theme.stackSpace

        Repeater {
            model: chart.figures

            Row {
                id: figure
                required property int index
                required property string modelData
                spacing: Theme.tightSpace

                RoundedBox {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 10
                    height: 10
                    radius: 3
                    color: chart.inks[figure.index]
                }
                SpokenWords {
                    text: figure.modelData
                    font.bold: figure.index === 0
                }
            }
        }
    }
    Words {
        anchors.verticalCenter: ceiling.verticalCenter
        width: chart.gutter - Theme.tightSpace
        horizontalAlignment: Text.AlignRight
        text: chart.content.scale
        color: Theme.secondary
        font.pixelSize: Theme.smallestSize
    }
    Rectangle {
        id: ceiling
        x: chart.gutter
        y: name.height + Theme.stackSpace
        width: chart.width - chart.gutter
        height: 1
        color: Theme.hairline
        opacity: 0.6
    }
    Rectangle {
        id: ground
        x: ceiling.x
        y: chart.height - Theme.stackSpace
        width: ceiling.width
        height: 1
        color: Theme.hairline
    }
    Item {
        id: bars
        x: ceiling.x
        y: ceiling.y
        width: ceiling.width
        height: ground.y - ceiling.y

        RoundedBox {
            visible: chart.current >= 0
            x: chart.current * chart.columnWidth + 1
            y: -Theme.hairSpace
            width: chart.columnWidth - 2
            height: parent.height + Theme.hairSpace
            radius: 5
            color: Theme.surface
        }
        Repeater {
            model: chart.content.bars
            Bar {
                inks: chart.inks
                room: bars.height
            }
        }
    }

    // Its parts stand on each other; the mark is what was to be reached.
    component Bar: Item {
        id: bar

        required property int index
        required property var modelData
        required property var inks
        required property real room

        readonly property real thickness: Math.max(4, Math.min(30, Math.round(chart.columnWidth * 0.56)))
        function heightOf(part: int): real {
            return Math.min(1, modelData.parts[part]) * room;
        }
        function below(part: int): real {
            return modelData.parts.slice(0, part).reduce((sum, share, i) => sum + heightOf(i), 0);
        }

        x: Math.round((index + 0.5) * chart.columnWidth - thickness / 2)
        width: thickness
        height: room

        Repeater {
            model: bar.modelData.parts.length

            RoundedBox {
                required property int index
                readonly property real full: bar.heightOf(index)
                readonly property real gap: index > 0 && bar.below(index) > 0 ? 2 : 0

                visible: full > 0
                width: bar.width
                y: bar.room - bar.below(index) - full
                height: Math.max(2, full - gap)
                radius: 4
                color: bar.inks[index]
            }
        }
        Rectangle {
            visible: bar.modelData.goal > 0
            x: -4
            y: Math.round((1 - Math.min(1, bar.modelData.goal)) * bar.room)
            width: bar.width + 8
            height: 2
            color: Theme.primary
            opacity: 0.55
        }
    }
}
