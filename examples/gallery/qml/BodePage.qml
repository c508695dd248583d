// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import zel.charts 1.0
import Gallery

// The magnitude of computed filters over a logarithmic frequency axis.
ColumnLayout {
    id: page

    readonly property var traces: response.traces // qmllint disable
    readonly property Chart chart: plot.chart

    spacing: 8

    FilterResponse {
        id: response
    }
    PlotArea {
        id: plot

        Layout.fillWidth: true
        Layout.fillHeight: true
        traces: page.traces
        xLayout: XYGrid.LogGrid
        yCount: 6
        xTitle: qsTr("frequency, Hz")
        yTitle: qsTr("transmission of Butterworth filters, dB")
        xUnit: "Hz"
        yUnit: "dB"
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
        canPause: false
    }
}
