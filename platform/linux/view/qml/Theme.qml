pragma Singleton
import QtQuick
import Kelpa

/// Sizes and colours of everything that is drawn, in one place. Lengths are device-independent pixels. Each text
/// colour has a contrast of 4.5 to 1 or better to the surface it stands on, in light and in dark.
QtObject {
    readonly property bool dark: Appearance.dark

    // Type
    readonly property int displaySize: 100
    readonly property int titleSize: 40
    readonly property int headlineSize: 15
    readonly property int bodySize: 14
    readonly property int footnoteSize: 12
    readonly property int smallestSize: 11

    // Space
    readonly property int hairSpace: 4
    readonly property int tightSpace: 6
    readonly property int stackSpace: 12
    readonly property int padding: 16
    readonly property int section: 80
    /// A line of text that is longer than this is hard to follow.
    readonly property int readableWidth: 1240

    // Colours
    readonly property color windowBackground: dark ? "#1e1f22" : "#f1f2f4"
    readonly property color primary: dark ? "#f3f4f6" : "#1b1d20"
    readonly property color secondary: dark ? "#a3a7b0" : "#5d626c"
    readonly property color link: dark ? "#62a8ff" : "#0059c9"
    readonly property color linkHovered: dark ? "#8dc0ff" : "#0048a5"
    readonly property color linkPressed: dark ? "#4491ef" : "#00377f"
    readonly property color accent: dark ? "#1f6fe0" : "#0066de"
    readonly property color accentHovered: dark ? "#1b67d3" : "#0059c4"
    readonly property color accentPressed: dark ? "#195fc4" : "#004da9"
    readonly property color accentText: "#ffffff"
    readonly property color warning: dark ? "#ff7a70" : "#c4261b"
    readonly property color success: dark ? "#4cc38a" : "#15734a"
    readonly property color surface: dark ? "#2a2c30" : "#e6e8ec"
    readonly property color surfaceRaised: dark ? "#2e3035" : "#fdfdfe"
    readonly property color surfaceHovered: dark ? "#373a40" : "#dbdee4"
    readonly property color surfacePressed: dark ? "#424650" : "#cdd1d9"
    readonly property color track: dark ? "#35383e" : "#d9dce2"
    readonly property color hairline: dark ? "#3a3d44" : "#cfd3da"
    readonly property color shadow: dark ? "#000000" : "#5d626c"
    readonly property color focusRing: dark ? "#8062a8ff" : "#800066de"

    // Motion
    readonly property int quick: 120
    readonly property int slide: 250
    readonly property int slow: 400
}
