// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0
import Snippets

//! [chart]
Chart {
    id: chart

    width: 640
    height: 360
    isZoomEnabled: true
    rubberBand: band
    onDoubleClicked: zoomReset()
    Component.onCompleted: addTrace(trace)

    //! [rubber band]
    ZoomDelegate {
        id: band

        objectName: "band"
        minSize: 6 // so that a click does not zoom
        zoomType: ZoomDelegate.Diagonal
        visible: false

        Rectangle {
            anchors.fill: parent
            color: "#300b67a8"
            border.color: "#0b67a8"
        }
    }
    //! [rubber band]
    LineTrace {
        id: trace

        objectName: "trace"
        color: "#0b67a8"
        onDoubleClicked: event => event.accepted = false // what the chart does is right here, too
    }
}
//! [chart]
