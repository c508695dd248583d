// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0

// Zooms and moves a chart along x, the traces' whole range at most: with the wheel, by dragging with
// the right or the middle button, and with keys that the page hands over.
Item {
    id: navigator

    required property Chart chart
    // Of all traces.
    required property TraceDomain domain
    // The shortest range to be shown.
    property real shortest: 1

    // The range from first to last, within the whole range and not too short.
    function show(first: real, last: real): void {
        const whole = domain.baseXRange;
        const length = Math.min(Math.max(last - first, shortest), whole.max - whole.min);
        if (length === whole.max - whole.min) {
            chart.zoomReset();
            return;
        }
        const begin = Math.min(Math.max((first + last - length) / 2, whole.min), whole.max - length);
        const range = domain.xRange;
        const pixel = (range.max - range.min) / chart.width;
        chart.zoomIn(Qt.rect((begin - range.min) / pixel, 0, length / pixel, chart.height));
    }
    // Keeps what is at x, in pixels, where it is.
    function zoomAt(x: real, factor: real): void {
        const range = domain.xRange;
        const position = range.min + (range.max - range.min) * x / chart.width;
        const length = Math.max((range.max - range.min) * factor, shortest);
        const begin = position - length * x / chart.width;
        show(begin, begin + length);
    }
    // By a part of the chart's width, to the right if positive.
    function move(part: real): void {
        const range = domain.xRange;
        const distance = (range.max - range.min) * part;
        show(range.min + distance, range.max + distance);
    }
    function handleKey(event: KeyEvent): void {
        if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
            return;
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_Left:
            return move(-0.1);
        case Qt.Key_Right:
            return move(0.1);
        case Qt.Key_PageUp:
            return move(-0.9);
        case Qt.Key_PageDown:
            return move(0.9);
        case Qt.Key_Home:
            return move(-1e9);
        case Qt.Key_End:
            return move(1e9);
        case Qt.Key_Plus:
        case Qt.Key_Up:
            return zoomAt(chart.width / 2, 0.5);
        case Qt.Key_Minus:
        case Qt.Key_Down:
            return zoomAt(chart.width / 2, 2);
        }
        event.accepted = false;
    }

    anchors.fill: parent

    // A rubber band may be a pixel wide.
    Connections {
        function onZoomedIn(): void {
            const range = navigator.domain.xRange;
            if (range.max - range.min < 0.999 * navigator.shortest)
                navigator.show(range.min, range.max);
        }

        target: navigator.chart
    }
    WheelHandler {
        target: null
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            if (event.angleDelta.y !== 0)
                navigator.zoomAt(event.x, 0.8 ** (event.angleDelta.y / 120));
            if (event.angleDelta.x !== 0)
                navigator.move(-0.05 * event.angleDelta.x / 120);
        }
    }
    DragHandler {
        property real movedTo: 0

        target: null
        acceptedButtons: Qt.RightButton | Qt.MiddleButton
        cursorShape: Qt.ClosedHandCursor
        onActiveChanged: movedTo = 0
        onActiveTranslationChanged: {
            if (!active)
                return;
            navigator.move((movedTo - activeTranslation.x) / navigator.width);
            movedTo = activeTranslation.x;
        }
    }
}
