// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import zel.charts 1.0
import Gallery

// The parameters of a network from a file, or of a computed filter: magnitudes over the frequency,
// reflections in a Smith chart, all of them in a polar chart.
ColumnLayout {
    id: page

    readonly property var traces: network.magnitudes // qmllint disable
    readonly property Chart chart: plot.chart

    spacing: 8

    NetworkPlot {
        id: network

        scale: reachSlider.value
        flip: flipButton.checked
    }
    RowLayout {
        Layout.fillWidth: true
        Layout.fillHeight: true
        spacing: 8

        PlotArea {
            id: plot

            Layout.fillWidth: true
            Layout.fillHeight: true
            traces: page.traces
            yCount: network.magnitudeBands
            xTitle: qsTr("frequency, %1").arg(network.frequencyUnit)
            yTitle: qsTr("S parameters, dB")
            xUnit: network.frequencyUnit
            yUnit: "dB"
        }
        ColumnLayout {
            visible: page.width > 620
            Layout.fillWidth: false
            Layout.preferredWidth: Math.min(page.width * 0.34, (page.height - 90) / 2)
            Layout.fillHeight: true
            spacing: 8

            RoundPlot {
                Layout.fillWidth: true
                Layout.fillHeight: true
                traces: network.reflections // qmllint disable
                reach: network.scale
                isFlipped: network.flip
                title: qsTr("reflections")
                chart.lineWidth: plot.chart.lineWidth
            }
            RoundPlot {
                Layout.fillWidth: true
                Layout.fillHeight: true
                traces: network.phasors // qmllint disable
                isSmith: false
                reach: network.scale
                title: qsTr("all parameters")
                chart.lineWidth: plot.chart.lineWidth
            }
        }
    }
    Legend {
        Layout.fillWidth: true
        Layout.leftMargin: 64
        // Of a large network the pointer tells the names.
        visible: traces.length <= 16
        traces: page.traces
    }
    ChartControls {
        // In a low window the chart needs the room.
        visible: page.height > 320
        Layout.fillWidth: true
        Layout.leftMargin: 64
        chart: plot.chart
        canPause: false

        LabelledSlider {
            id: reachSlider

            width: 156
            textWidth: 66
            text: qsTr("Scale %1").arg(value.toFixed(2))
            from: 0.5
            to: 4
            value: 1
            stepSize: 0.05
        }
        SmallButton {
            id: flipButton

            text: qsTr("Flip")
            checkable: true
        }
        ComboBox {
            height: 32
            visible: count > 1
            model: network.sources
            currentIndex: network.currentSource
            onActivated: index => network.currentSource = index
        }
    }
}
