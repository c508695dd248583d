// SPDX-License-Identifier: MIT
import QtCharts
import QtQuick

/*! A chart of nothing but its lines, over the whole item. */
ChartView {
    property alias abscissa: xAxis
    required property bool useOpenGL

    function addTrace() {
        const trace = createSeries(ChartView.SeriesTypeLine, "", xAxis, yAxis);
        trace.useOpenGL = useOpenGL;
        return trace;
    }

    animationOptions: ChartView.NoAnimation
    backgroundColor: "transparent"
    backgroundRoundness: 0
    dropShadowEnabled: false
    legend.visible: false
    margins.bottom: 0
    margins.left: 0
    margins.right: 0
    margins.top: 0
    plotArea: Qt.rect(0, 0, width, height)

    ValueAxis {
        id: xAxis

        gridVisible: false
        labelsVisible: false
        lineVisible: false
        minorGridVisible: false
        visible: false
    }

    ValueAxis {
        id: yAxis

        gridVisible: false
        labelsVisible: false
        lineVisible: false
        max: 1
        min: -1
        minorGridVisible: false
        visible: false
    }
}
