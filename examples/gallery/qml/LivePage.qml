// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import zel.charts 1.0
import Gallery

// The load of each core of the machine over the last ten seconds.
ColumnLayout {
    id: page

    readonly property var traces: cpu.traces // qmllint disable
    readonly property Chart chart: plot.chart

    spacing: 8

    CpuLoad {
        id: cpu
    }
    PlotArea {
        id: plot

        Layout.fillWidth: true
        Layout.fillHeight: true
        traces: page.traces
        yCount: 5
        xTitle: qsTr("time before now, s")
        yTitle: qsTr("load of each core, %")
        xUnit: "s"
        yUnit: "%"
    }
    Legend {
        Layout.fillWidth: true
        Layout.leftMargin: 64
        traces: page.traces
    }
    ChartControls {
        // In a low window the chart needs the room.
        visible: page.height > 320
        Layout.fillWidth: true
        Layout.leftMargin: 64
        chart: plot.chart
        paused: cpu.paused
        onPauseToggled: cpu.paused = !cpu.paused
    }
}
