import QtQuick
import Kelpa

/// The width of words. What is bound to it follows the font as well, which may be set later.
FontMetrics {
    font.pixelSize: Theme.bodySize
    function widthOf(words: string): real {
        return font.pixelSize > 0 ? advanceWidth(words) : 0;
    }
    /// What a line of that measure needs: hinted letters can be a little wider.
    function roomFor(measured: real): int {
        return Math.ceil(measured * 1.03) + 2;
    }
    /// Of so many words, which `wordsAt` gives one by one.
    function widest(count: int, wordsAt: var): real {
        let width = 0;
        for (let i = 0; i < count; ++i)
            width = Math.max(width, widthOf(wordsAt(i)));
        return width;
    }
}
