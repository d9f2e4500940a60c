import QtQuick
import Kelpa

/// A line of text, as wide as there is room for one.
TextEntry {
    implicitWidth: 480
    enabled: told.enabled
}
