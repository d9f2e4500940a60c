import QtQuick
import Kelpa

/// What one window shows. The program sets its properties, and is told as an action what a person wants.
Rectangle {
    signal action(string name, string value)

    color: Theme.windowBackground
}
