import QtQuick
import Kelpa

/// The width of words. What is bound to it follows the font as well, which may be set later.
FontMetrics {
    function widthOf(words: string): real {
        return font.pixelSize > 0 ? advanceWidth(words) : 0;
    }
    /// What a line of that measure needs: hinted letters can be a little wider.
    function roomFor(measured: real): int {
        return Math.ceil(measured * 1.03) + 2;
    }
    /// Of several words.
    function widest(words: var): real {
        return Math.max(0, ...words.map(each => widthOf(each)));
    }
}
