// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound

import QtQuick
import zel.charts 1.0
import Snippets

Item {
    id: plot

    width: 640
    height: 360

    //! [grid]
    XYGrid {
        id: grid

        anchors.fill: chart
        xLayout: XYGrid.NiceLabelsLinGrid
        xRange: trace.domain.xRange
        yCount: 5
    }
    //! [grid]
    //! [x labels]
    Repeater {
        model: grid.xLabels

        Text {
            required property real modelData

            x: chart.x + Domain.mapToGeometry(Domain.span(0, chart.width), grid.xRange, modelData) - width / 2
            y: chart.y + chart.height + 4
            text: Number(modelData.toPrecision(6))
        }
    }
    //! [x labels]
    //! [y labels]
    Repeater {
        model: grid.yCount + 1

        Text {
            required property int index
            readonly property span range: trace.domain.yRange
            readonly property real value: range.min + index * (range.max - range.min) / grid.yCount

            x: chart.x - width - 6
            y: chart.y + chart.height - index * chart.height / grid.yCount - height / 2
            text: Number(value.toPrecision(6))
        }
    }
    //! [y labels]
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
