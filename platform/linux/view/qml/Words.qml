import QtQuick
import Kelpa

/// Words as they are, without any mark-up. Screen readers are told of them by what they stand in, or by `SpokenWords`.
Text {
    textFormat: Text.PlainText
    color: Theme.primary
    font.pixelSize: Theme.bodySize
    Accessible.ignored: true
}
