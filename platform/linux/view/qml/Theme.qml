pragma Singleton
import QtQuick
import Kelpa

/// Sizes and colours of everything that is drawn, in one place. Lengths are device-independent pixels. Each text
/// colour has a contrast of 4.5 to 1 or better to the surface it stands on, in light and in dark.
QtObject {
    id: theme

    readonly property bool dark: Appearance.dark

    // Type
    readonly property int largeTitleSize: 26
    readonly property int headlineSize: 15
    readonly property int bodySize: 14
    readonly property int footnoteSize: 12
    readonly property int smallestSize: 11
    readonly property FontMetrics bodyMetrics: FontMetrics {
        font.pixelSize: theme.bodySize
    }

    /// What is bound to the width of words follows the font as well, which may be set later.
    function widthOf(metrics: FontMetrics, words: string): real {
        return metrics.font.pixelSize > 0 ? metrics.advanceWidth(words) : 0;
    }
    /// That of the widest of several.
    function widest(metrics: FontMetrics, words: var): real {
        return Math.max(0, ...words.map(each => widthOf(metrics, each)));
    }
    /// What a line of that width needs: hinted letters can be a little wider.
    function roomFor(width: real): int {
        return Math.ceil(width * 1.03) + 2;
    }

    // Space
    readonly property int hairSpace: 4
    readonly property int tightSpace: 6
    readonly property int stackSpace: 12
    /// Beside a form, however wide its window is.
    readonly property int formWidth: 760
    /// Of everything that is as high as one line: fields, buttons, switches with their labels.
    readonly property int controlHeight: 30
    /// Of one that stands alone; `Measures.tileHeight` is of a row of them, with what is free above and below.
    readonly property int capsuleHeight: 36
    readonly property int controlRadius: 7
    readonly property int cardRadius: 12
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
    readonly property color water: dark ? "#2b9ab8" : "#0d86a8"
    readonly property color surface: dark ? "#32353b" : "#e6e8ec"
    readonly property color surfaceRaised: dark ? "#34373d" : "#fdfdfe"
    readonly property color surfaceHovered: dark ? "#3e4148" : "#dbdee4"
    readonly property color surfacePressed: dark ? "#494d57" : "#cdd1d9"
    readonly property color track: dark ? "#35383e" : "#d9dce2"
    readonly property color toolbar: dark ? "#26282c" : "#e8eaee"
    readonly property color card: dark ? "#27292d" : "#fdfdfe"
    readonly property color field: dark ? "#1b1c1f" : "#ffffff"
    readonly property color control: dark ? "#3a3d44" : "#e9ebef"
    readonly property color controlHovered: dark ? "#454952" : "#dfe2e8"
    readonly property color controlPressed: dark ? "#50545e" : "#d1d5dc"
    readonly property color controlFaint: dark ? "#26282c" : "#f3f4f6"
    readonly property color tab: dark ? "#383b42" : "#d8dbe1"
    /// The chosen one of several that lie on a track.
    readonly property color raised: dark ? "#5a5f6a" : "#ffffff"
    /// Around what can be changed: 3 to 1 or better to the card.
    readonly property color outline: dark ? "#767b87" : "#878c96"
    readonly property color outlineHovered: dark ? "#969ba7" : "#686d77"
    readonly property color hairline: dark ? "#3a3d44" : "#cfd3da"
    readonly property color shadow: dark ? "#000000" : "#5d626c"
    readonly property color focusRing: dark ? "#cc62a8ff" : "#cc0066de"

    /// What is held down, what the pointer is on, and what neither is the case of. `item` has `pressed` and `hovered`.
    function accentOf(item: var): color {
        return item.pressed ? accentPressed : item.hovered ? accentHovered : accent;
    }
    function controlOf(item: var, rest: color): color {
        return item.pressed ? controlPressed : item.hovered ? controlHovered : rest;
    }
    function surfaceOf(item: var, rest: color): color {
        return item.pressed ? surfacePressed : item.hovered ? surfaceHovered : rest;
    }
    /// How much is left of what cannot be used now.
    readonly property real disabledOpacity: 0.45

    // Motion
    readonly property int quick: 120
}
