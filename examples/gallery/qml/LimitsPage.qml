// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts
import zel.charts 1.0
import Gallery

// The limit test of a spectrum analyser: a mask above the spectrum, an alert line below the mask, and
// a straight line that the noise must not fall under.
ColumnLayout {
    id: page

    readonly property var traces: analyzer.traces // qmllint disable
    readonly property Chart chart: plot.chart
    readonly property bool isAlert: upper.isValid && upper.margin < alertSlider.value
    readonly property string unit: qsTr("dBm")

    // Where a frequency and a level are in the chart.
    function place(frequency: real, level: real): point {
        const width = plot.chart.width;
        const height = plot.chart.height;
        const x = Domain.mapToGeometry(Domain.span(0, width), plot.xRange, frequency);
        return Qt.point(x, height - Domain.mapToGeometry(Domain.span(0, height), plot.yRange, level));
    }
    function megahertz(frequency: real): string {
        return plot.number(frequency, 2) + "\u00a0MHz";
    }
    function decibels(value: real, unit: string): string {
        return plot.number(value, 1) + "\u00a0" + unit;
    }
    function verdict(): string {
        if (!upper.isValid || !lower.isValid)
            return "";
        const at = megahertz(upper.place.x);
        const by = decibels(Math.abs(upper.margin), "dB");
        if (upper.isExceeded)
            return qsTr("Limit exceeded at %1 by %2").arg(at).arg(by);
        if (lower.isExceeded)
            return qsTr("Below the floor at %1 by %2").arg(megahertz(lower.place.x)).arg(decibels(Math.abs(lower.margin), "dB"));
        return isAlert ? qsTr("Only %2 left at %1").arg(at).arg(by) : qsTr("Passed by %2 at %1").arg(at).arg(by);
    }
    // The limit's level at the pointer.
    function pointedLevel(): string {
        const frequency = Domain.mapFromGeometry(Domain.span(0, plot.chart.width), plot.xRange, maskPointer.point.position.x);
        const level = upper.limitAt(frequency);
        return isNaN(level) ? "" : qsTr("Limit at %1: %2").arg(megahertz(frequency)).arg(decibels(level, unit));
    }
    // A curve does not listen to its transform: taken away and given back, it is asked for its points.
    function reshape(): void {
        for (const curve of [mask, limitLine, alertLine]) {
            curve.geometryTransform = null;
            // There is no logarithmic line without a bend, and a slider's 0 may be a little beside it.
            curve.geometryTransform = Math.abs(bendSlider.value) < 0.05 ? straight : bent;
        }
    }

    spacing: 8

    SpectrumAnalyzer {
        id: analyzer
    }
    LinearCurveTransform {
        id: straight
    }
    LogarithmicCurveTransform {
        id: bent

        // Per pixel, so that the shape stays the same in a window of another size and in a zoom.
        decibel: bendSlider.value / (mask.p2.x - mask.p1.x)
        pointCount: Math.round(pointSlider.value)
        onDecibelChanged: page.reshape()
        onPointCountChanged: page.reshape()
    }
    LimitTest {
        id: upper

        trace: page.traces[0]
        curve: mask
    }
    LimitTest {
        id: lower

        trace: page.traces[0]
        curve: lowerLine
        isLower: true
    }
    PlotArea {
        id: plot

        Layout.fillWidth: true
        Layout.fillHeight: true
        traces: page.traces
        yCount: 10
        xTitle: qsTr("frequency, MHz")
        yTitle: qsTr("power in 60 kHz, dBm")
        xUnit: "MHz"
        yUnit: page.unit

        // Under the traces, and in a zoom not beside the chart.
        Item {
            anchors.fill: parent
            clip: true
            z: -1

            GradientCurve {
                id: mask

                readonly property bool isLit: maskPointer.hovered || upper.isExceeded

                objectName: "mask"
                anchors.fill: parent
                upDirection: true
                shape: FillRectProvider {
                }
                p1: page.place(98.4, startSlider.value)
                p2: page.place(107, endSlider.value)
                color: isLit ? Theme.failure : Theme.limit
                lineWidth: isLit ? 4 : 2
                opacity: isLit ? 0.6 : 0.3
                Component.onCompleted: page.reshape()

                HoverHandler {
                    id: maskPointer
                }
            }
            // The mask's own line is as faint as its fill.
            Curve {
                id: limitLine

                anchors.fill: parent
                p1: mask.p1
                p2: mask.p2
                color: Theme.failure
                lineWidth: 2
            }
            Curve {
                id: alertLine

                anchors.fill: parent
                p1: page.place(98.4, startSlider.value - alertSlider.value)
                p2: page.place(107, endSlider.value - alertSlider.value)
                color: Theme.warning
            }
            Curve {
                id: lowerLine

                anchors.fill: parent
                geometryTransform: straight
                p1: page.place(97, floorSlider.value)
                p2: page.place(107, floorSlider.value)
                color: Theme.accent
                lineWidth: lower.isExceeded ? 3 : 1.5
            }
        }
        // The point that decides.
        Rectangle {
            readonly property LimitTest test: lower.isExceeded && !upper.isExceeded ? lower : upper
            readonly property point place: page.place(test.place.x, test.place.y)

            visible: test.isValid && place.x >= 0 && place.x <= parent.width && place.y >= 0 && place.y <= parent.height
            x: Math.round(place.x - width / 2)
            y: Math.round(test === lower ? place.y + 5 : place.y - height - 5)
            width: 8
            height: 8
            rotation: 45
            antialiasing: true
            color: verdictText.color
        }
        Rectangle {
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: 8
            visible: verdictText.text !== ""
            width: badge.width + 16
            height: badge.height + 10
            radius: 3
            color: Theme.panel
            border.color: verdictText.color

            Column {
                id: badge

                anchors.centerIn: parent
                spacing: 2

                Text {
                    id: verdictText

                    objectName: "verdict"
                    text: page.verdict()
                    color: upper.isExceeded || lower.isExceeded ? Theme.failure : page.isAlert ? Theme.warning : Theme.success
                    font.pixelSize: Theme.labelSize
                }
                Text {
                    objectName: "pointedLevel"
                    visible: maskPointer.hovered && text !== ""
                    text: maskPointer.hovered ? page.pointedLevel() : ""
                    color: Theme.text
                    font.pixelSize: Theme.labelSize
                }
            }
        }
    }
    Legend {
        Layout.fillWidth: true
        Layout.leftMargin: 64
        traces: [...page.traces, {
                "name": qsTr("limit"),
                "color": Theme.failure
            }, {
                "name": qsTr("alert"),
                "color": Theme.warning
            }, {
                "name": qsTr("floor"),
                "color": Theme.accent
            }]
    }
    GridLayout {
        id: sliders

        readonly property int rowsNeeded: Math.ceil(6 / columns)

        // In a low window the chart needs the room.
        visible: page.height > 250 + rowsNeeded * 32
        Layout.fillWidth: true
        Layout.leftMargin: 64
        Layout.rightMargin: 12
        columns: Math.max(1, Math.min(3, Math.floor((page.width - 82) / 240)))
        columnSpacing: 20
        rowSpacing: 4

        LabelledSlider {
            id: startSlider

            objectName: "start"
            Layout.fillWidth: true
            Layout.preferredHeight: 28
            textWidth: 120
            text: qsTr("Start %1").arg(page.decibels(value, page.unit))
            from: -70
            to: -5
            value: -40
            stepSize: 0.5
        }
        LabelledSlider {
            id: endSlider

            objectName: "end"
            Layout.fillWidth: true
            Layout.preferredHeight: 28
            textWidth: 120
            text: qsTr("End %1").arg(page.decibels(value, page.unit))
            from: -95
            to: -30
            value: -72
            stepSize: 0.5
        }
        LabelledSlider {
            id: bendSlider

            objectName: "bend"
            Layout.fillWidth: true
            Layout.preferredHeight: 28
            textWidth: 120
            text: qsTr("Bend %1").arg(plot.number(value, 1))
            from: -3
            to: 3
            value: -1.5
            stepSize: 0.1
            onValueChanged: page.reshape()
        }
        LabelledSlider {
            id: pointSlider

            objectName: "point"
            Layout.fillWidth: true
            Layout.preferredHeight: 28
            textWidth: 120
            text: qsTr("Points %1").arg(Math.round(value))
            from: 2
            to: 100
            value: 60
            stepSize: 1
        }
        LabelledSlider {
            id: alertSlider

            objectName: "alert"
            Layout.fillWidth: true
            Layout.preferredHeight: 28
            textWidth: 120
            text: qsTr("Alert %1").arg(page.decibels(value, "dB"))
            from: 0
            to: 20
            value: 6
            stepSize: 0.5
        }
        LabelledSlider {
            id: floorSlider

            objectName: "floor"
            Layout.fillWidth: true
            Layout.preferredHeight: 28
            textWidth: 120
            text: qsTr("Floor %1").arg(page.decibels(value, page.unit))
            from: -100
            to: -60
            value: -97
            stepSize: 0.5
        }
    }
    ChartControls {
        visible: page.height > 320 + sliders.rowsNeeded * 32
        Layout.fillWidth: true
        Layout.leftMargin: 64
        chart: plot.chart
        paused: analyzer.paused
        onPauseToggled: analyzer.paused = !analyzer.paused
    }
}
