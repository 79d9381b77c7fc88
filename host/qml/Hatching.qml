import QtQuick 2.15

// Diagonal lines. They distinguish an area without its colour.
Canvas {
    id: canvas

    property color ink: theme.bad
    readonly property int step: 9

    onInkChanged: requestPaint()
    onPaint: {
        const context = getContext("2d")
        context.reset()
        context.strokeStyle = ink
        context.lineWidth = 2
        context.beginPath()
        for (let x = -height; x < width; x += step) {
            context.moveTo(x, height)
            context.lineTo(x + height, 0)
        }
        context.stroke()
    }
}
