import QtQuick
import Kelpa

/// Words of any length and with line feeds, centred: large where they fit, smaller where they do not, in lines of
/// nearly equal length, so that no single word is left for the last one. Chinese breaks after punctuation where
/// that needs no more lines, because a break inside a word is hard to read.
Item {
    id: prompt

    property string text
    /// What there is room for, the padding included.
    property real availableWidth: 0
    property real availableHeight: 0

    readonly property real roomWidth: Math.max(1, Math.min(availableWidth, Theme.readableWidth) - 2 * Measures.padding)
    readonly property real roomHeight: Math.max(1, availableHeight - 2 * Measures.padding)

    implicitWidth: label.width + 2 * Measures.padding
    implicitHeight: label.contentHeight + 2 * Measures.padding
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    component Title: Words {
        wrapMode: Text.Wrap
        font.pixelSize: Measures.promptSize
        font.bold: true
    }
    Title {
        id: probe
        visible: false
        wrapMode: Text.WordWrap
        width: prompt.roomWidth
    }
    Title {
        id: label
        x: Measures.padding
        y: Measures.padding
        width: prompt.roomWidth
        height: prompt.roomHeight
        horizontalAlignment: Text.AlignHCenter
        color: Theme.secondary
        fontSizeMode: Text.Fit
        minimumPixelSize: Theme.smallestSize
    }

    /// The text with its Chinese characters tied together, punctuation being the only place left to break.
    function tied(): string {
        return text.replace(/([\u3400-\u9fff])(?=[\u3400-\u9fff])/g, "$1\u2060");
    }
    /// How many lines the words need; infinitely many where one of them is wider than a line.
    function lineCount(words: string, width: real): real {
        probe.text = words;
        probe.width = width;
        return probe.contentWidth > width + 1 ? Infinity : probe.lineCount;
    }
    /// The smallest width that needs no more lines than the full one.
    function balancedWidth(words: string, lines: real): real {
        let tooNarrow = roomWidth / (lines + 1);
        let enough = roomWidth;
        while (enough - tooNarrow > 4) {
            const middle = (enough + tooNarrow) / 2;
            if (lineCount(words, middle) > lines)
                tooNarrow = middle;
            else
                enough = middle;
        }
        return Math.ceil(enough);
    }
    function arrange() {
        const lines = lineCount(text, roomWidth);
        const fits = lines < Infinity && probe.contentHeight <= roomHeight;
        const whole = tied();
        const words = lineCount(whole, roomWidth) === lines ? whole : text;
        label.width = fits && lines > 1 ? balancedWidth(words, lines) : roomWidth;
        label.text = words;
    }
    onTextChanged: arrange()
    onRoomWidthChanged: arrange()
    onRoomHeightChanged: arrange()
}
