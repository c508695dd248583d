// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound

import QtQuick
import zel.charts 1.0

// A chart in a frame, with lines and labels at readable steps and a line above it that tells what
// was clicked. All traces have the same ranges.
Item {
    id: area

    property var traces: []
    readonly property var domain: traces.length > 0 ? traces[0].domain : null // qmllint disable
    readonly property var xRange: domain?.xRange ?? Domain.span(0, 1)
    readonly property var yRange: domain?.yRange ?? Domain.span(0, 1)
    property int xLayout: XYGrid.NiceLabelsLinGrid
    // Whether x is the exponent of ten of what is shown, whose unit is xUnit.
    readonly property bool isLogX: xLayout === XYGrid.LogGrid
    // Bands between the horizontal lines.
    property int yCount: Math.max(yNames.length, 10)
    property string xTitle: ""
    property string yTitle: ""
    property string xUnit: ""
    property string yUnit: ""
    // Names of the values 0, 1, ...: they stand at their values, and not numbers at the lines.
    property var yNames: []
    // What can be done here, in place of what can be done everywhere.
    property string hint: qsTr("click a trace for its value, drag to zoom, double click or Esc to go back")
    readonly property alias chart: chartItem
    // What is drawn over the chart, or under the traces where its z is negative.
    default property alias overlays: chartItem.data

    // Where labels stand and what they say. The grid's border has a label, too, if it has a value of
    // the layout.
    function xTicks(values: var, width: real): var {
        const step = values.length > 1 ? values[1] - values[0] : 0;
        const end = values.length > 1 ? values[values.length - 1] + step : NaN;
        const isEnd = Math.abs(end - xRange.max) < 1e-6 * step;
        let shown = values;
        if (isLogX)
            shown = logarithmicLabels(values);
        else if (isEnd)
            shown = [...values, end];
        const texts = shown.map(value => isLogX ? scaled(10 ** value, "", 3) : label(value, step));
        const widths = texts.map(text => labelMetrics.advanceWidth(text));
        // Where they are at equal distances, every second one and so on, as is wide enough for all.
        const distance = step * width / (xRange.max - xRange.min);
        const stride = isLogX ? 1 : readableStride((Math.max(...widths) + 10) / distance);
        const ticks = [];
        let free = -Infinity;
        for (let i = 0; i < shown.length; ++i) {
            const position = Domain.mapToGeometry(Domain.span(0, width), xRange, shown[i]);
            // The last one stays in the window.
            const left = Math.min(position - widths[i] / 2, area.width - frame.x - widths[i] - 1);
            const isLeftOut = step > 0 && Math.round(shown[i] / step) % stride !== 0;
            if (isLeftOut || left < free || position > width + 1)
                continue;
            ticks.push({
                    "left": left,
                    "text": texts[i]
                });
            free = left + widths[i] + 10;
        }
        return ticks;
    }
    // The first of 1, 2, 5, 10, 20, ... that is not smaller.
    function readableStride(least: real): int {
        if (!(least > 1 && least < 1e6))
            return 1;
        const decade = 10 ** Math.floor(Math.log10(least));
        return [1, 2, 5, 10].find(part => part * decade >= least) * decade;
    }
    // Decades as long as there are some, borders included, else every line.
    function logarithmicLabels(values: var): var {
        const decades = [];
        for (let decade = Math.ceil(xRange.min - 1e-9); decade <= xRange.max + 1e-9; ++decade)
            decades.push(decade);
        return decades.length > 1 ? decades : values;
    }
    // "20 kHz" of 20000 and "Hz".
    function scaled(value: real, unit: string, digits: int): string {
        const prefixes = ["", "k", "M", "G"];
        let index = 0;
        while (Math.abs(value) >= 999.5 && index < 3) {
            value /= 1000;
            ++index;
        }
        const suffix = prefixes[index] + unit;
        return Number(value.toPrecision(digits)).toString() + (suffix ? "\u00a0" + suffix : "");
    }
    function yTicks(height: real): var {
        const step = (yRange.max - yRange.min) / yCount;
        const values = [];
        if (yNames.length > 0) {
            for (let i = Math.max(0, Math.ceil(yRange.min)); i < yNames.length && i <= yRange.max; ++i)
                values.push(i);
        } else {
            for (let i = 0; i <= yCount; ++i)
                values.push(yRange.min + i * step);
        }
        const ticks = [];
        let free = height + 1;
        for (const value of values) {
            const position = height - Domain.mapToGeometry(Domain.span(0, height), yRange, value);
            if (position > free)
                continue;
            ticks.push({
                    "position": position,
                    "text": yNames.length > 0 ? yNames[value] : label(value, step)
                });
            free = position - 15;
        }
        return ticks;
    }
    function number(value: real, decimals: int): string {
        const digits = Math.abs(value).toFixed(decimals);
        // No minus before a zero.
        const sign = value < 0 && Number(digits) !== 0 ? "\u2212" : "";
        const parts = digits.split(".");
        let whole = parts[0];
        // Groups of three digits in numbers that are long enough to need them.
        for (let place = whole.length > 4 ? whole.length - 3 : 0; place > 0; place -= 3)
            whole = whole.slice(0, place) + "\u202f" + whole.slice(place);
        return sign + (parts.length > 1 ? whole + "." + parts[1] : whole);
    }
    // With as many decimals as the step has, if those are few, or as tell neighbouring labels apart.
    function label(value: real, step: real): string {
        let decimals = 0;
        while (decimals < 4 && Math.abs(step * 10 ** decimals - Math.round(step * 10 ** decimals)) > 1e-6)
            ++decimals;
        if (decimals === 4)
            decimals = Math.max(0, Math.min(Math.ceil(-Math.log10(step)) + 1, 9));
        return number(value, decimals);
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
        const place = isLogX ? scaled(10 ** dataX, xUnit, 4) : coordinate(dataX, domain.xRange, width, xUnit);
        return qsTr("%1:  %2, %3").arg(trace.name).arg(place).arg(coordinate(dataY, domain.yRange, height, yUnit));
    }

    onTracesChanged: readout.text = ""

    FontMetrics {
        id: labelMetrics

        font.pixelSize: Theme.labelSize
    }
    Rectangle {
        id: frame

        // Whole pixels: the picture of the traces is as large as the chart and not resampled then.
        x: 64
        y: 26
        width: Math.max(0, Math.floor(area.width) - x - 18)
        height: Math.max(0, Math.floor(area.height) - y - 44)
        color: Theme.plot

        XYGrid {
            id: grid

            anchors.fill: parent
            xLayout: area.xLayout
            yCount: area.yCount
            innerGridLinesColor: Theme.grid
            outerGridLinesColor: Theme.frame
            // Labels are those of the layout at the time when the range changes: the layout goes first.
            Component.onCompleted: xRange = Qt.binding(() => area.xRange)
        }
        Repeater {
            model: area.xTicks(grid.xLabels, grid.width)

            Text {
                required property var modelData

                x: Math.round(modelData.left)
                y: frame.height + 6
                text: modelData.text
                color: Theme.dimText
                font.pixelSize: Theme.labelSize
            }
        }
        Repeater {
            model: area.yTicks(grid.height)

            Text {
                required property var modelData

                x: -width - 8
                y: Math.round(modelData.position - height / 2)
                text: modelData.text
                color: Theme.dimText
                font.pixelSize: Theme.labelSize
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
    }
    // Where the chart itself takes keys.
    Rectangle {
        anchors.fill: frame
        anchors.margins: -3
        visible: chartItem.activeFocus && chartItem.activeFocusOnTab
        color: "transparent"
        border.color: Theme.focus
        border.width: 2
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
        text: area.hint
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
