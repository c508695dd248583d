// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound

import QtQuick
import zel.charts 1.0

// A chart in a frame, with lines and labels at readable steps and a line above it that tells what
// was clicked. All traces have the same ranges.
Item {
    id: area

    property var traces: []
    readonly property var domain: traces.length > 0 ? traces[0].domain : null // qmllint disable property
    readonly property var xRange: domain?.xRange ?? Domain.span(0, 1)
    readonly property var yRange: domain?.yRange ?? Domain.span(0, 1)
    property real xStep: Domain.niceStep(xRange)
    property real yStep: Domain.niceStep(yRange)
    property string xTitle: ""
    property string yTitle: ""
    property string xUnit: ""
    property string yUnit: ""
    // Names of the values 0, 1, ... instead of numbers.
    property var yNames: []
    readonly property alias chart: chartItem

    function ticks(range: var, step: real): var {
        const values = [];
        if (!(step > 0) || !isFinite(step))
            return values;
        for (let i = Math.ceil(range.min / step); i * step <= range.max && values.length < 40; ++i)
            values.push(i * step);
        return values;
    }
    // Doubled until there is room for the labels, each of which takes so many pixels.
    function roomyStep(step: real, range: var, pixels: real, labelSize: real): real {
        const distance = step / (range.max - range.min) * pixels;
        return distance > 0 && distance < labelSize ? step * 2 ** Math.ceil(Math.log2(labelSize / distance)) : step;
    }
    function number(value: real, decimals: int): string {
        // No minus before a zero.
        const isZero = Math.abs(value) < 0.5 * 10 ** -decimals;
        return (isZero ? 0 : value).toFixed(decimals).replace("-", "\u2212");
    }
    // With as many decimals as tell neighbouring labels apart.
    function label(value: real, step: real): string {
        let decimals = 0;
        while (decimals < 6 && Math.abs(step * 10 ** decimals - Math.round(step * 10 ** decimals)) > 1e-6)
            ++decimals;
        return number(value, decimals);
    }
    function yLabel(value: real): string {
        if (yNames.length === 0)
            return label(value, frame.yStep);
        const name = yNames[value];
        return name === undefined ? "" : name;
    }
    // With as many decimals as tell neighbouring pixels apart.
    function coordinate(value: real, range: var, pixels: real, unit: string): string {
        const decimals = Math.ceil(-Math.log10((range.max - range.min) / pixels));
        // Degrees follow their number without a space.
        return number(value, Math.max(0, Math.min(decimals, 9))) + (unit && unit !== "°" ? "\u00a0" : "") + unit;
    }
    function describe(trace: AbstractTrace, x: real, y: real): string {
        const width = chartItem.width;
        const height = chartItem.height;
        const domain = trace.domain;
        const dataX = Domain.mapFromGeometry(Domain.span(0, width), domain.xRange, x);
        const dataY = Domain.mapFromGeometry(Domain.span(0, height), domain.yRange, height - y);
        return qsTr("%1:  %2, %3").arg(trace.name).arg(coordinate(dataX, domain.xRange, width, xUnit)).arg(coordinate(dataY, domain.yRange, height, yUnit));
    }

    onTracesChanged: readout.text = ""

    Rectangle {
        id: frame

        readonly property real xStep: area.roomyStep(area.xStep, area.xRange, width, 44)
        readonly property real yStep: area.roomyStep(area.yStep, area.yRange, height, 16)

        // Whole pixels: the picture of the traces is as large as the chart and not resampled then.
        x: 64
        y: 26
        width: Math.max(0, Math.floor(area.width) - x - 18)
        height: Math.max(0, Math.floor(area.height) - y - 44)
        color: Theme.plot

        Repeater {
            model: area.ticks(area.xRange, frame.xStep)

            Item {
                id: xTick

                required property real modelData

                x: Math.round(Domain.mapToGeometry(Domain.span(0, frame.width), area.xRange, modelData))

                Rectangle {
                    width: 1
                    height: frame.height
                    color: Theme.grid
                }
                Text {
                    anchors.horizontalCenter: parent.left
                    y: frame.height + 6
                    text: area.label(xTick.modelData, frame.xStep)
                    color: Theme.dimText
                    font.pixelSize: Theme.labelSize
                }
            }
        }
        Repeater {
            model: area.ticks(area.yRange, frame.yStep)

            Item {
                id: yTick

                required property real modelData

                y: Math.round(frame.height - Domain.mapToGeometry(Domain.span(0, frame.height), area.yRange, modelData))

                Rectangle {
                    width: frame.width
                    height: 1
                    color: Theme.grid
                }
                Text {
                    anchors.right: parent.left
                    anchors.rightMargin: 8
                    anchors.verticalCenter: parent.top
                    text: area.yLabel(yTick.modelData)
                    color: Theme.dimText
                    font.pixelSize: Theme.labelSize
                }
            }
        }
        InteractiveChart {
            id: chartItem

            anchors.fill: parent
            traces: area.traces
            onTraceClicked: (trace, x, y) => {
                readout.text = area.describe(trace, x, y);
                readout.color = trace.color;
            }
            onBackgroundClicked: readout.text = ""
        }
        Rectangle {
            anchors.fill: parent
            anchors.margins: -1
            color: "transparent"
            border.color: Theme.frame
        }
    }
    Shortcut {
        sequence: "Esc"
        onActivated: chartItem.zoomReset()
    }
    Text {
        id: yTitle

        x: frame.x
        anchors.bottom: frame.top
        anchors.bottomMargin: 6
        text: area.yTitle
        color: Theme.dimText
        font.pixelSize: Theme.labelSize
    }
    Text {
        id: readout

        objectName: "readout"
        anchors.right: frame.right
        anchors.bottom: frame.top
        anchors.bottomMargin: 6
        width: Math.min(implicitWidth, frame.width - yTitle.width - 16)
        elide: Text.ElideRight
        font.pixelSize: Theme.labelSize
    }
    Text {
        x: frame.x
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 2
        visible: width + xTitle.width + 16 < frame.width
        text: qsTr("click a trace for its value, drag to zoom, double click or Esc to go back")
        color: Theme.dimText
        font.pixelSize: Theme.labelSize
    }
    Text {
        id: xTitle

        anchors.right: frame.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 2
        text: area.xTitle
        color: Theme.dimText
        font.pixelSize: Theme.labelSize
    }
}
