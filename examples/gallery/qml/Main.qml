// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic

ApplicationWindow {
    id: window

    required property list<string> pages
    required property string currentPage
    // The item of the current page.
    property alias page: pageLoader.item

    width: 1080
    height: 680
    minimumWidth: 400
    minimumHeight: 300
    visible: true
    title: qsTr("Charts: %1").arg(currentPage)
    color: Theme.window
    palette.button: Theme.control
    palette.buttonText: Theme.text
    palette.mid: Theme.frame
    palette.dark: Theme.accent
    palette.light: Theme.text
    palette.midlight: Theme.frame
    palette.window: Theme.panel
    palette.windowText: Theme.text
    palette.base: Theme.panel
    palette.text: Theme.text

    header: Rectangle {
        id: header

        // In a narrow window, too, all pages can be reached.
        readonly property int padding: window.width < 500 ? 8 : 16

        color: Theme.panel
        implicitHeight: 44

        Row {
            anchors.fill: parent
            anchors.leftMargin: header.padding

            Repeater {
                model: window.pages

                AbstractButton {
                    id: tab

                    required property string modelData
                    readonly property bool isCurrent: modelData === window.currentPage

                    height: parent.height
                    leftPadding: header.padding
                    rightPadding: header.padding
                    text: modelData
                    onClicked: window.currentPage = modelData

                    contentItem: Text {
                        text: tab.text
                        color: tab.isCurrent ? Theme.accent : tab.hovered ? Theme.text : Theme.dimText
                        font.pixelSize: 15
                        verticalAlignment: Text.AlignVCenter
                    }
                    background: Rectangle {
                        color: "transparent"

                        Rectangle {
                            anchors.bottom: parent.bottom
                            width: parent.width
                            height: 3
                            color: tab.isCurrent ? Theme.accent : "transparent"
                        }
                    }
                }
            }
        }
    }

    Loader {
        id: pageLoader

        anchors.fill: parent
        anchors.margins: 14
        source: window.currentPage + "Page.qml"
    }
}
