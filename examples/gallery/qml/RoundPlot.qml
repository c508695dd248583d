// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0

// A Smith or a polar chart. The grid and the traces' domains have the same scale.
Item {
    id: plot

    property var traces: []
    property bool isSmith: true
    // The magnitude at the boundary.
    property real reach: 1
    property bool isFlipped: false
    property string title: ""
    readonly property alias chart: chartItem

    function describe(trace: AbstractTrace, x: real, y: real): string {
        const radius = square.width / 2;
        const real = (x - radius) / radius * reach * (isFlipped ? -1 : 1);
        const imaginary = (radius - y) / radius * reach;
        const magnitude = Math.hypot(real, imaginary);
        const angle = Math.atan2(imaginary, real) * 180 / Math.PI;
        return qsTr("%1:  %2 at %3°").arg(trace.name).arg(magnitude.toFixed(3)).arg(angle.toFixed(1).replace("-", "\u2212"));
    }

    onTracesChanged: readout.text = ""

    Text {
        id: titleText

        text: plot.title
        color: Theme.dimText
        font.pixelSize: Theme.labelSize
    }
    Text {
        id: readout

        anchors.right: parent.right
        width: Math.min(implicitWidth, plot.width - titleText.width - 16)
        elide: Text.ElideRight
        font.pixelSize: Theme.labelSize
    }
    Item {
        id: square

        // An even number of pixels, so that the centre is where grid and traces both have it.
        width: 2 * Math.max(0, Math.floor(Math.min(plot.width - 2, plot.height - 24) / 2))
        height: width
        x: Math.round((plot.width - width) / 2)
        y: 22

        Rectangle {
            anchors.fill: parent
            radius: width / 2
            color: Theme.plot
        }
        SmithGrid {
            anchors.fill: parent
            visible: plot.isSmith
            innerGridLinesColor: Theme.roundGrid
            outerGridLinesColor: Theme.frame
            scale: plot.reach
            flip: plot.isFlipped
        }
        PolarGrid {
            anchors.fill: parent
            visible: !plot.isSmith
            innerGridLinesColor: Theme.roundGrid
            outerGridLinesColor: Theme.frame
            scale: plot.reach
        }
        InteractiveChart {
            id: chartItem

            anchors.fill: parent
            traces: plot.traces
            isZoomEnabled: false
            onTraceClicked: (trace, x, y) => {
                readout.text = plot.describe(trace, x, y);
                readout.color = trace.color;
            }
            onBackgroundClicked: readout.text = ""
        }
    }
}
