// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import zel.charts 1.0
import Gallery

// Samples from a file, or computed ones, played as the sweep of an oscilloscope.
ColumnLayout {
    id: page

    readonly property var traces: player.traces // qmllint disable
    readonly property Chart chart: plot.chart

    // "4 s of data a second" is how fast the beam runs where it is not the signal's own rate.
    function rate(): string {
        if (player.speed === 1)
            return qsTr("at its own rate");
        return player.speed < 1 ? qsTr("slowed down %1 times").arg(Number(1 / player.speed).toPrecision(3)) : qsTr("%1 times as fast").arg(Number(player.speed).toPrecision(3));
    }

    spacing: 8

    SignalPlayer {
        id: player
    }
    PlotArea {
        id: plot

        Layout.fillWidth: true
        Layout.fillHeight: true
        traces: page.traces
        yCount: player.valueBands
        xTitle: qsTr("time in the sweep, s")
        yTitle: player.valueUnit ? qsTr("value, %1").arg(player.valueUnit) : qsTr("value")
        xUnit: "s"
        yUnit: player.valueUnit
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
        paused: player.paused
        onPauseToggled: player.paused = !player.paused

        ComboBox {
            visible: count > 1
            model: player.sources
            currentIndex: player.currentSource
            height: 32
            onActivated: index => player.currentSource = index
        }
        Text {
            height: 32
            verticalAlignment: Text.AlignVCenter
            text: qsTr("%1, %2").arg(player.sources[player.currentSource]).arg(page.rate())
            color: Theme.dimText
            font.pixelSize: Theme.textSize
        }
    }
}
