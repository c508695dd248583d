// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0
import Gallery

// A chart whose traces stand out under the pointer and tell where they were clicked. A drag with
// the left button zooms, a double click on the background goes back.
Chart {
    id: chart

    // Those that leave the list are destroyed by their owner, or stay attached.
    property var traces: []
    property real lineWidth: 2
    property int zoomType: ZoomDelegate.Diagonal
    property AbstractTrace hoveredTrace: null
    // Traces that were attached, and the names of the colours that they came with: a colour itself
    // would stay that of the trace.
    property var knownTraces: []
    property var ownColors: []
    // Where the button went down, to tell a click from a drag.
    property point pressPoint

    // (x, y) is where, in pixels.
    signal traceClicked(AbstractTrace trace, real x, real y)
    signal backgroundClicked

    function attach(): void {
        hoveredTrace = null;
        zoomReset();
        for (const trace of traces) {
            addTrace(trace);
            trace.hovered.connect((event, state) => chart.noteHover(trace, state));
            trace.pressed.connect(event => chart.notePress(event));
            trace.clicked.connect(event => chart.noteClick(trace, event));
            // Not the trace's business: what a double click does is the same everywhere.
            trace.doubleClicked.connect(event => event.accepted = false);
        }
        const colors = traces.map(trace => ownColor(trace));
        knownTraces = [...traces];
        ownColors = colors;
        recolor();
        restyle();
    }
    function ownColor(trace: AbstractTrace): string {
        const index = knownTraces.indexOf(trace);
        return index < 0 ? trace.color.toString() : ownColors[index];
    }
    function recolor(): void {
        for (let i = 0; i < traces.length; ++i)
            traces[i].color = Theme.traceColor(Qt.color(ownColors[i]));
    }
    function noteHover(trace: AbstractTrace, isHovered: bool): void {
        if (isHovered)
            hoveredTrace = trace;
        else if (trace === hoveredTrace)
            hoveredTrace = null;
    }
    function notePress(event: ChartMouseEvent): void {
        pressPoint = Qt.point(event.x, event.y);
    }
    function noteClick(trace: AbstractTrace, event: ChartMouseEvent): void {
        if (isClick(event))
            traceClicked(trace, event.x, event.y);
    }
    function isClick(event: ChartMouseEvent): bool {
        return Math.max(Math.abs(event.x - pressPoint.x), Math.abs(event.y - pressPoint.y)) <= band.minSize;
    }
    // The hovered trace is wider, and above the others.
    function restyle(): void {
        for (const trace of traces) {
            const isHovered = trace === hoveredTrace;
            trace.lineWidth = isHovered ? lineWidth + 2 : lineWidth;
            trace.z = isHovered ? 1 : 0;
        }
    }

    isZoomEnabled: true
    rubberBand: band
    onTracesChanged: attach()
    onLineWidthChanged: restyle()
    onHoveredTraceChanged: restyle()
    // The pointer has left the chart, if with a trace under it without a word to the trace.
    onHovered: (event, state) => {
        if (!state)
            hoveredTrace = null;
    }
    onPressed: event => notePress(event)
    onClicked: event => {
        if (isClick(event))
            backgroundClicked();
    }
    onDoubleClicked: zoomReset()

    Connections {
        function onIsDarkChanged(): void {
            chart.recolor();
        }

        target: Theme
    }
    HitTestRefresh {
        chart: chart
        trace: chart.traces.length > 0 ? chart.traces[0] : null
    }
    HoverHandler {
        id: pointer

        cursorShape: chart.hoveredTrace ? Qt.PointingHandCursor : Qt.CrossCursor
    }
    ZoomDelegate {
        id: band

        minSize: 6
        zoomType: chart.zoomType
        visible: false

        Rectangle {
            anchors.fill: parent
            color: Theme.band
            border.color: Theme.accent
        }
    }
    // The name of the hovered trace, beside the pointer.
    Rectangle {
        readonly property point place: pointer.point.position

        visible: chart.hoveredTrace !== null && pointer.hovered && !band.visible
        z: 1
        x: Math.round(Math.min(place.x + 14, chart.width - width - 2))
        y: Math.round(place.y > height + 12 ? place.y - height - 10 : place.y + 18)
        width: tagName.implicitWidth + 34
        height: tagName.implicitHeight + 8
        radius: 3
        color: Theme.panel
        border.color: Theme.frame

        Rectangle {
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            width: 12
            height: 4
            color: chart.hoveredTrace?.color ?? "transparent"
        }
        Text {
            id: tagName

            objectName: "tag"
            x: 26
            anchors.verticalCenter: parent.verticalCenter
            text: chart.hoveredTrace?.name ?? ""
            color: Theme.text
            font.pixelSize: Theme.textSize
        }
    }
}
