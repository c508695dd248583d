// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0
import Minimal

Window {
    width: 640
    height: 320
    visible: true
    color: "#0b0f14"

    Chart {
        anchors.fill: parent
        Component.onCompleted: addTrace(wave)
    }
    WaveTrace {
        id: wave
        color: "#4fc3f7"
        lineWidth: 2
    }
}
