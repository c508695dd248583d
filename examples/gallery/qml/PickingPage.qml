// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import zel.charts 1.0
import Gallery

// 300 traces at rest: the one under the pointer is named.
ColumnLayout {
    id: page

    readonly property var traces: table.traces // qmllint disable
    readonly property Chart chart: plot.chart

    spacing: 8

    FigureTable {
        id: table
    }
    PlotArea {
        id: plot

        Layout.fillWidth: true
        Layout.fillHeight: true
        traces: page.traces
        xTitle: qsTr("phase difference, degrees")
        yTitle: qsTr("ratio of frequencies, x : y")
        xUnit: "°"
        yNames: table.ratios
    }
    ChartControls {
        // In a low window the chart needs the room.
        visible: page.height > 320
        Layout.fillWidth: true
        Layout.leftMargin: 64
        chart: plot.chart
        canPause: false
    }
}
