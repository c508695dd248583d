// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import zel.charts 1.0
import Gallery

// The load of each core of the machine over the last ten seconds.
ColumnLayout {
    id: page

    readonly property var traces: cpu.traces // qmllint disable property type
    readonly property Chart chart: plot.chart

    spacing: 8

    CpuLoad {
        id: cpu
    }
    PlotArea {
        id: plot

        Layout.fillWidth: true
        Layout.fillHeight: true
        xRange: page.traces[0].domain.xRange
        yRange: page.traces[0].domain.yRange
        xStep: 1
        yStep: 20
        xTitle: qsTr("time before now, s")
        yTitle: qsTr("load of each core, %")
        Component.onCompleted: {
            for (const trace of page.traces)
                chart.addTrace(trace);
        }
    }
    Legend {
        Layout.fillWidth: true
        Layout.leftMargin: 64
        traces: page.traces
    }
    PlaybackControls {
        Layout.fillWidth: true
        Layout.leftMargin: 64
        paused: cpu.paused
        traces: page.traces
        onPauseToggled: cpu.paused = !cpu.paused
    }
}
