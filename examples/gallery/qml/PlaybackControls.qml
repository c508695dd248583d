// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

// Pause and line width of the traces; further controls can stand beside them.
RowLayout {
    id: controls

    property bool paused: false
    property var traces: []

    signal pauseToggled

    function applyLineWidth(): void {
        for (const trace of traces)
            trace.lineWidth = widthSlider.value;
    }

    spacing: 14
    onTracesChanged: applyLineWidth()

    Button {
        text: controls.paused ? qsTr("Go on") : qsTr("Pause")
        implicitWidth: 90
        onClicked: controls.pauseToggled()
    }
    Text {
        text: qsTr("Line width %1 px").arg(widthSlider.value.toFixed(1))
        color: Theme.text
        font.pixelSize: Theme.textSize
        Layout.preferredWidth: 118
    }
    Slider {
        id: widthSlider

        from: 1
        to: 8
        stepSize: 0.5
        value: 2
        Layout.preferredWidth: 160
        onValueChanged: controls.applyLineWidth()
    }
}
