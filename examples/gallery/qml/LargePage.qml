// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import zel.charts 1.0
import Gallery

// Ten million samples, drawn with two vertices for each column of pixels.
ColumnLayout {
    id: page

    readonly property var traces: large.traces // qmllint disable
    readonly property Chart chart: plot.chart
    readonly property LargeTrace trace: large.trace

    spacing: 8
    focus: true
    Keys.onPressed: event => navigator.handleKey(event)

    LargeSignal {
        id: large
    }
    PlotArea {
        id: plot

        Layout.fillWidth: true
        Layout.fillHeight: true
        traces: page.traces
        xTitle: qsTr("number of the sample")
        yTitle: qsTr("signal, V")
        yUnit: "V"
        hint: qsTr("wheel or drag to zoom, right drag or arrow keys to move, double click or Esc to go back")
        chart.activeFocusOnTab: true

        Navigator {
            id: navigator

            chart: plot.chart
            domain: page.trace.domain
            shortest: 8
        }
        Text {
            anchors.centerIn: parent
            visible: !large.ready
            text: qsTr("making ten million samples ...")
            color: Theme.dimText
            font.pixelSize: Theme.textSize
        }
    }
    Text {
        objectName: "account"
        Layout.fillWidth: true
        Layout.leftMargin: 64
        text: qsTr("%1 samples visible, drawn with %2 vertices, found in %3\u00a0ms").arg(plot.number(page.trace.visibleSamples, 0)).arg(plot.number(page.trace.vertexCount, 0)).arg(page.trace.fillTime.toFixed(2))
        color: Theme.text
        font.pixelSize: Theme.textSize
        wrapMode: Text.WordWrap
    }
    ChartControls {
        // In a low window the chart needs the room.
        visible: page.height > 320
        Layout.fillWidth: true
        Layout.leftMargin: 64
        chart: plot.chart
        canPause: false

        SmallButton {
            objectName: "live"
            text: qsTr("Live")
            checkable: true
            onToggled: large.live = checked
        }
    }
}
