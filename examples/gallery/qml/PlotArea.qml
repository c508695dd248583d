// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound

import QtQuick
import zel.charts 1.0

// A chart in a frame, with lines and labels at readable steps.
Item {
    id: area

    property var xRange: Domain.span(0, 1)
    property var yRange: Domain.span(0, 1)
    property real xStep: Domain.niceStep(xRange)
    property real yStep: Domain.niceStep(yRange)
    property string xTitle: ""
    property string yTitle: ""
    readonly property Chart chart: chartItem

    function ticks(range: var, step: real): var {
        const values = [];
        if (!(step > 0) || !isFinite(step))
            return values;
        for (let i = Math.ceil(range.min / step); i * step <= range.max && values.length < 12; ++i)
            values.push(i * step);
        return values;
    }
    // With as many decimals as tell neighbouring labels apart.
    function label(value: real, step: real): string {
        let decimals = 0;
        while (decimals < 6 && Math.abs(step * 10 ** decimals - Math.round(step * 10 ** decimals)) > 1e-6)
            ++decimals;
        return (value === 0 ? 0 : value).toFixed(decimals).replace("-", "\u2212");
    }

    Rectangle {
        id: frame

        // Whole pixels: the picture of the traces is as large as the chart and not resampled then.
        x: 64
        y: 26
        width: Math.max(0, Math.floor(area.width) - x - 18)
        height: Math.max(0, Math.floor(area.height) - y - 44)
        color: Theme.plot

        Repeater {
            model: area.ticks(area.xRange, area.xStep)

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
                    text: area.label(xTick.modelData, area.xStep)
                    color: Theme.dimText
                    font.pixelSize: Theme.labelSize
                }
            }
        }
        Repeater {
            model: area.ticks(area.yRange, area.yStep)

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
                    text: area.label(yTick.modelData, area.yStep)
                    color: Theme.dimText
                    font.pixelSize: Theme.labelSize
                }
            }
        }
        Chart {
            id: chartItem

            anchors.fill: parent
        }
        Rectangle {
            anchors.fill: parent
            anchors.margins: -1
            color: "transparent"
            border.color: Theme.frame
        }
    }
    Text {
        x: frame.x
        anchors.bottom: frame.top
        anchors.bottomMargin: 6
        text: area.yTitle
        color: Theme.dimText
        font.pixelSize: Theme.labelSize
    }
    Text {
        anchors.right: frame.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 2
        text: area.xTitle
        color: Theme.dimText
        font.pixelSize: Theme.labelSize
    }
}
