import QtQuick

/// The width of words. What is bound to it follows the font as well, which may be set later.
FontMetrics {
    function widthOf(words: string): real {
        return font.pixelSize > 0 ? advanceWidth(words) : 0;
    }
}
