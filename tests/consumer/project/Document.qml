// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0

Item {
    id: root

    required property AbstractTrace trace
    property alias chart: chart
    property var span: Domain.span(1, 2)
    property real step: Domain.niceStep(Domain.span(0, 1.2))
    property real pixel: Domain.mapToGeometry(Domain.span(0, 200), Domain.span(0, 10), 2.5)
    property real lastWidth: 0

    width: 320
    height: 200

    Chart {
        id: chart

        anchors.fill: parent
        rubberBand: ZoomDelegate {
            zoomType: ZoomDelegate.Horizontal
        }
        Component.onCompleted: {
            addTrace(root.trace);
            root.trace.color = "#102030";
            root.trace.lineWidth = 4;
            root.trace.name = "ramp";
        }
    }
    Connections {
        target: root.trace
        function onLineWidthChaned(width) {
            root.lastWidth = width;
        }
    }
}
