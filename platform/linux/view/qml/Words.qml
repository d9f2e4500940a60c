import QtQuick
import Kelpa

/// Words as they are, without any mark-up. Screen readers are told of them by what they stand in, or as what `role` says.
Text {
    property int role: Accessible.NoRole

    textFormat: Text.PlainText
    color: Theme.primary
    font.pixelSize: Theme.bodySize
    Accessible.ignored: role === Accessible.NoRole
    Accessible.role: role
    Accessible.name: text
}
