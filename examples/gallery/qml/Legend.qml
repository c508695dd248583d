// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound

import QtQuick

// The names of traces beside a stroke of their colour.
Flow {
    id: legend

    property var traces: []

    spacing: 16

    Repeater {
        model: legend.traces

        Row {
            required property var modelData

            spacing: 6

            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 18
                height: 3
                color: parent.modelData.color
            }
            Text {
                text: parent.modelData.name
                color: Theme.text
                font.pixelSize: Theme.textSize
            }
        }
    }
}
