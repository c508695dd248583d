// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound

import QtQuick

// Pause, line width and zoom of a chart; further controls can stand beside them.
Flow {
    id: controls

    property InteractiveChart chart
    property bool canPause: true
    property bool paused: false

    signal pauseToggled

    spacing: 10

    SmallButton {
        visible: controls.canPause
        text: controls.paused ? qsTr("Go on") : qsTr("Pause")
        width: 74
        onClicked: controls.pauseToggled()
    }
    LabelledSlider {
        textWidth: 112
        text: qsTr("Line width %1 px").arg(value.toFixed(1))
        from: 1
        to: 8
        stepSize: 0.5
        value: 2
        onValueChanged: {
            if (controls.chart)
                controls.chart.lineWidth = value;
        }
    }
    Row {
        spacing: 4

        Text {
            anchors.verticalCenter: parent.verticalCenter
            rightPadding: 4
            text: qsTr("Zoom")
            color: Theme.text
            font.pixelSize: Theme.textSize
        }
        Repeater {
            // In the order of ZoomDelegate's types.
            model: [qsTr("Diagonal"), qsTr("Vertical"), qsTr("Horizontal")]

            SmallButton {
                required property int index
                required property string modelData

                text: modelData
                checkable: true
                autoExclusive: true
                checked: index === 0
                onClicked: controls.chart.zoomType = index
            }
        }
    }
    SmallButton {
        text: qsTr("Reset")
        enabled: controls.chart.isZoomed
        onClicked: controls.chart.zoomReset()
    }
}
