// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0

// Loaded by Qt's own programs, which know nothing of the library: the module's plugin has to bring
// it in. Leaves with 42 after one line, or with 1 and a line on each difference.
Item {
    id: root

    readonly property var geometry: Domain.span(0, 200)
    readonly property var range: Domain.span(-1, 1)

    function differences(): var {
        const list = [];
        const compare = (what, actual, expected) => {
            if (actual !== expected)
                list.push(what + " is " + actual + " instead of " + expected);
        };
        compare("span.min", range.min, -1);
        compare("span.max", range.max, 1);
        compare("mapToGeometry", Domain.mapToGeometry(geometry, range, 0), 100);
        compare("mapFromGeometry", Domain.mapFromGeometry(geometry, range, 50), -0.5);
        compare("niceStep", Domain.niceStep(Domain.span(0, 100)), 10);
        compare("chart.width", chart.width, 320);
        compare("chart.isZoomEnabled", chart.isZoomEnabled, true);
        compare("chart.isZoomed", chart.isZoomed, false);
        compare("chart.rubberBand", chart.rubberBand, band);
        compare("band.minSize", band.minSize, 30);
        return list;
    }

    width: 320
    height: 200

    Chart {
        id: chart

        anchors.fill: parent
        isZoomEnabled: true
        rubberBand: band
    }
    ZoomDelegate {
        id: band

        minSize: 30
    }
    // Once the program's event loop runs.
    Timer {
        interval: 1
        running: true
        onTriggered: {
            const list = root.differences();
            console.log(list.length === 0 ? "the chart module works" : list.join("\n"));
            Qt.exit(list.length === 0 ? 42 : 1);
        }
    }
}
