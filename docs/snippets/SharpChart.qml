// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0
import Snippets

Item {
    id: plot

    property real ratio: Screen.devicePixelRatio
    property point clickPoint

    width: 320
    height: 200

    //! [chart]
    Chart {
        objectName: "chart"
        // As many pixels as the screen has in this place.
        width: plot.width * plot.ratio
        height: plot.height * plot.ratio
        scale: 1 / plot.ratio
        transformOrigin: Item.TopLeft
        onClicked: event => plot.clickPoint = Qt.point(event.x / plot.ratio, event.y / plot.ratio)
        Component.onCompleted: addTrace(trace)
    }
    LineTrace {
        id: trace

        objectName: "trace"
        color: "#0b67a8"
        lineWidth: 2 * plot.ratio
    }
    //! [chart]
}
