// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound

import QtQuick
import zel.charts 1.0
import Snippets

Item {
    id: plot

    width: 640
    height: 360

    XYGrid {
        id: grid

        anchors.fill: chart
        xLayout: XYGrid.LogGrid
        xRange: trace.domain.xRange
    }
    //! [labels]
    Repeater {
        model: grid.xLabels

        Text {
            required property real modelData

            x: chart.x + Domain.mapToGeometry(Domain.span(0, chart.width), grid.xRange, modelData) - width / 2
            y: chart.y + chart.height + 4
            visible: Number.isInteger(modelData)
            text: 10 ** modelData
        }
    }
    //! [labels]
    Chart {
        id: chart

        objectName: "chart"
        x: 60
        y: 20
        width: plot.width - 80
        height: plot.height - 60
        Component.onCompleted: addTrace(trace)
    }
    LineTrace {
        id: trace

        objectName: "trace"
        color: "#0b67a8"
    }
}
