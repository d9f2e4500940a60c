import QtQuick

/// A cup on its saucer, 15 points high, drawn so that no picture has to be loaded.
Canvas {
    id: cup

    property color color

    width: 17
    height: 16
    onColorChanged: requestPaint()
    onPaint: {
        const ink = getContext("2d");
        ink.reset();
        ink.fillStyle = cup.color;
        ink.beginPath();
        ink.moveTo(2.5, 2);
        ink.lineTo(13.5, 2);
        ink.lineTo(13, 8);
        ink.quadraticCurveTo(12.6, 12, 9.5, 12);
        ink.lineTo(6.5, 12);
        ink.quadraticCurveTo(3.4, 12, 3, 8);
        ink.closePath();
        ink.fill();
        ink.beginPath();
        ink.lineWidth = 1.6;
        ink.strokeStyle = cup.color;
        ink.arc(13.6, 6, 2.6, -Math.PI / 2, Math.PI / 2, false);
        ink.stroke();
        ink.beginPath();
        ink.lineCap = "round";
        ink.moveTo(2.5, 14.8);
        ink.lineTo(13.5, 14.8);
        ink.stroke();
    }
}
