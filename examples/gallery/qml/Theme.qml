// SPDX-License-Identifier: MIT
pragma Singleton

import QtQuick

QtObject {
    readonly property color window: "#0f141b"
    readonly property color panel: "#161d27"
    readonly property color plot: "#0b0f14"
    readonly property color grid: "#232c38"
    readonly property color roundGrid: "#2f3a48"
    readonly property color frame: "#3a4656"
    readonly property color control: "#2a3544"
    readonly property color text: "#d7dee8"
    readonly property color dimText: "#93a0b1"
    readonly property color accent: "#4fc3f7"
    readonly property color success: "#66e08a"
    readonly property color warning: "#ffb74d"
    readonly property color failure: "#ff5252"
    readonly property color limit: "#d9434f"
    readonly property color band: "#304fc3f7"
    readonly property int textSize: 13
    readonly property int labelSize: 12
}
