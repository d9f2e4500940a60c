import QtQuick

/// Words that screen readers read for what they are.
Words {
    Accessible.ignored: false
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
