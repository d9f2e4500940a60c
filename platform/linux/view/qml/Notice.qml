import QtQuick

/// What is new: a few words, a link and a line of explanation below it.
Row {
    id: notice

    property alias newFeatureText: introduction.text
    property alias waterReminderText: link.text
    property alias linkSymbol: link.symbol
    property alias hintText: hint.text
    signal tapped()

    spacing: Theme.tightSpace
    bottomPadding: Theme.stackSpace

    Text {
        id: introduction
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        color: Theme.primary
        font.pixelSize: Theme.bodySize
    }
    Column {
        spacing: Theme.hairSpace

        LinkButton {
            id: link
            Accessible.description: hint.text
            onActivated: notice.tapped()
        }
        Text {
            id: hint
            color: Theme.secondary
            font.pixelSize: Theme.footnoteSize
        }
    }
}
