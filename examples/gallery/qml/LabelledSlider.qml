// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls.Basic

// A slider behind the name of what it sets.
Item {
    id: item

    property alias text: label.text
    // The same for sliders that stand below each other.
    property alias textWidth: label.width
    property alias from: slider.from
    property alias to: slider.to
    property alias stepSize: slider.stepSize
    property alias value: slider.value

    implicitWidth: label.width + 108
    implicitHeight: 32

    Text {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        color: Theme.text
        font.pixelSize: Theme.textSize
    }
    Slider {
        id: slider

        anchors.left: label.right
        anchors.leftMargin: 8
        anchors.right: parent.right
        height: parent.height
    }
}
