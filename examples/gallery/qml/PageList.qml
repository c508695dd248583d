// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic

// The pages with their descriptions below each other. Up and down go to the next one.
ListView {
    id: list

    property var names: []
    property var descriptions: []

    signal chosen(int index)

    implicitWidth: 180
    model: names
    clip: true
    activeFocusOnTab: true
    keyNavigationEnabled: false
    boundsBehavior: Flickable.StopAtBounds
    highlightMoveDuration: 0
    Keys.onUpPressed: chosen(Math.max(0, currentIndex - 1))
    Keys.onDownPressed: chosen(Math.min(count - 1, currentIndex + 1))

    ScrollBar.vertical: ScrollBar {
    }
    delegate: AbstractButton {
        id: entry

        required property int index
        required property string modelData

        width: list.width
        height: 52
        hoverEnabled: true
        focusPolicy: Qt.NoFocus
        text: modelData
        onClicked: list.chosen(index)

        contentItem: Column {
            leftPadding: 18
            topPadding: 8
            spacing: 1

            Text {
                text: entry.text
                color: entry.ListView.isCurrentItem ? Theme.accent : Theme.text
                font.pixelSize: 15
            }
            Text {
                width: list.width - 24
                text: list.descriptions[entry.index] ?? ""
                color: Theme.dimText
                font.pixelSize: Theme.labelSize
                elide: Text.ElideRight
            }
        }
        background: Rectangle {
            color: entry.ListView.isCurrentItem || entry.hovered ? Theme.window : Theme.panel
            border.color: Theme.focus
            border.width: list.activeFocus && entry.ListView.isCurrentItem ? 2 : 0

            Rectangle {
                width: 3
                height: parent.height
                visible: entry.ListView.isCurrentItem
                color: Theme.accent
            }
        }
    }
}
