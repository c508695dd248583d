// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0
import Snippets

//! [chart]
Chart {
    id: chart

    property string message: ""

    width: 640
    height: 360
    onClicked: message = "background"
    onHovered: (event, state) => {
        if (!state)
            trace.lineWidth = 2; // the pointer is gone, without a word to the trace
    }
    Component.onCompleted: addTrace(trace)

    LineTrace {
        id: trace

        objectName: "trace"
        name: "current"
        color: "#0b67a8"
        lineWidth: 2
        onHovered: (event, state) => lineWidth = state ? 4 : 2
        onClicked: event => chart.message = name + " at " + event.x + ", " + event.y
    }
}
//! [chart]
