// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0
import Minimal

Window {
    width: 640
    height: 360
    visible: true
    color: "#10151c"
    title: "A chart"

    Chart {
        id: chart
        anchors.fill: parent
        Component.onCompleted: addTrace(wave)
    }
    WaveTrace {
        id: wave
        color: "#4fc3f7"
        lineWidth: 2
    }
}
