// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0
import Snippets

//! [chart]
Item {
    // An even number of pixels in both directions puts the middles of grid and traces at one place.
    width: 300
    height: 300

    SmithGrid {
        anchors.fill: parent
        scale: trace.domain.xRange.max
        flip: trace.domain.isLeftSmith
    }
    Chart {
        objectName: "chart"
        anchors.fill: parent
        Component.onCompleted: addTrace(trace)
    }
    LineTrace {
        id: trace

        objectName: "trace"
        color: "#c62828"
        lineWidth: 3
    }
}
//! [chart]
