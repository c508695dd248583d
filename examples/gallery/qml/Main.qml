// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound

import QtQml
import QtQuick
import QtQuick.Controls.Basic

// The pages, of which one is shown. Beside it stands their list, in a narrow window a drop-down list
// above it. Ctrl+Tab and Ctrl+Page Down go to the next page, Alt+1 to the first one; F11 fills the
// screen.
ApplicationWindow {
    id: window

    required property list<string> pages
    required property string currentPage
    // "light", "dark" or "system".
    property string theme: "system"
    // The item of the current page.
    property alias page: pageLoader.item
    readonly property bool isNarrow: width < 720
    readonly property int currentIndex: pages.indexOf(currentPage)
    readonly property var pageNames: Array.from(pages)
    readonly property var descriptions: pageNames.map(name => describe(name))
    readonly property int pageCount: descriptions.length
    // To which to return from the full screen.
    property int usualVisibility: Window.Windowed

    function describe(name: string): string {
        switch (name) {
        case "Live":
            return qsTr("the load of each core");
        case "Signal":
            return qsTr("sweep of a monitor");
        case "Bode":
            return qsTr("filters over frequency");
        case "Network":
            return qsTr("a filter's S parameters");
        case "Limits":
            return qsTr("a mask over a spectrum");
        case "Picking":
            return qsTr("300 traces to point at");
        case "Large":
            return qsTr("ten million points");
        }
        return "";
    }
    function goTo(index: int): void {
        if (index >= 0 && index < pageCount)
            currentPage = pages[index];
    }
    // Round and round.
    function step(distance: int): void {
        goTo((currentIndex + distance + pageCount) % pageCount);
    }
    function toggleFullScreen(): void {
        if (visibility === Window.FullScreen) {
            visibility = usualVisibility;
        } else {
            usualVisibility = visibility;
            visibility = Window.FullScreen;
        }
    }

    width: 1080
    height: 680
    minimumWidth: 400
    minimumHeight: 300
    visible: true
    title: qsTr("Charts: %1").arg(currentPage)
    color: Theme.window
    palette.button: Theme.control
    palette.buttonText: Theme.text
    palette.brightText: Theme.accentText
    palette.mid: Theme.frame
    palette.dark: Theme.accent
    palette.light: Theme.control
    palette.midlight: Theme.frame
    palette.window: Theme.panel
    palette.windowText: Theme.text
    palette.base: Theme.panel
    palette.text: Theme.text
    palette.highlight: Theme.focus
    palette.highlightedText: Theme.text
    onCurrentIndexChanged: selector.currentIndex = currentIndex

    header: Rectangle {
        visible: window.isNarrow
        implicitHeight: 44
        color: Theme.panel

        ComboBox {
            id: selector

            objectName: "selector"
            anchors.fill: parent
            anchors.margins: 6
            model: window.pageNames.map((name, index) => name + ":  " + window.descriptions[index])
            Component.onCompleted: currentIndex = window.currentIndex
            onActivated: index => window.goTo(index)
        }
    }

    Binding {
        target: Theme
        property: "mode"
        value: window.theme
    }
    Shortcut {
        sequences: ["Ctrl+Tab", "Ctrl+PgDown"]
        onActivated: window.step(1)
    }
    Shortcut {
        sequences: ["Ctrl+Shift+Tab", "Ctrl+Shift+Backtab", "Ctrl+PgUp"]
        onActivated: window.step(-1)
    }
    Instantiator {
        model: window.pageCount

        Shortcut {
            required property int index

            sequence: "Alt+" + (index + 1)
            onActivated: window.goTo(index)
        }
    }
    Shortcut {
        sequence: "F11"
        onActivated: window.toggleFullScreen()
    }
    Rectangle {
        id: side

        visible: !window.isNarrow
        width: visible ? list.implicitWidth : 0
        height: parent.height
        color: Theme.panel

        PageList {
            id: list

            objectName: "pageList"
            anchors.fill: parent
            names: window.pages
            descriptions: window.descriptions
            currentIndex: window.currentIndex
            onChosen: index => window.goTo(index)
        }
    }
    Loader {
        id: pageLoader

        anchors.fill: parent
        anchors.margins: 14
        anchors.leftMargin: side.width + 14
        focus: true
        source: window.currentPage + "Page.qml"
    }
}
