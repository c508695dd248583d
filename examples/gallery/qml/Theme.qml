// SPDX-License-Identifier: MIT
pragma Singleton

import QtQuick

// Colours and sizes, dark or light. Without a wish of the user's they follow the desktop: Qt tells its
// choice by the colours of its palette.
QtObject {
    id: theme

    // "light", "dark", or "system".
    property string mode: "system"
    readonly property SystemPalette desktop: SystemPalette {
    }
    readonly property bool isDark: mode === "dark" || (mode !== "light" && desktop.window.hslLightness < 0.5)

    readonly property color window: isDark ? "#0f141b" : "#edf0f4"
    readonly property color panel: isDark ? "#161d27" : "#ffffff"
    readonly property color plot: isDark ? "#0b0f14" : "#ffffff"
    readonly property color grid: isDark ? "#232c38" : "#dfe4ea"
    readonly property color roundGrid: isDark ? "#2f3a48" : "#d0d7df"
    readonly property color frame: isDark ? "#3a4656" : "#93a0b0"
    readonly property color control: isDark ? "#2a3544" : "#d9e0e8"
    readonly property color text: isDark ? "#d7dee8" : "#1c2530"
    readonly property color dimText: isDark ? "#93a0b1" : "#566270"
    readonly property color accent: isDark ? "#4fc3f7" : "#0272b8"
    // On what has the accent as its colour.
    readonly property color accentText: isDark ? "#0b0f14" : "#ffffff"
    // Around what has the keyboard; apart from the accent, which some of that has.
    readonly property color focus: isDark ? "#ffd54f" : "#7a1fa2"
    readonly property color success: isDark ? "#66e08a" : "#14783a"
    readonly property color warning: isDark ? "#ffb74d" : "#b45f00"
    readonly property color failure: isDark ? "#ff5252" : "#d32f2f"
    readonly property color limit: "#d9434f"
    readonly property color band: isDark ? "#304fc3f7" : "#300272b8"
    readonly property int textSize: 13
    readonly property int labelSize: 12

    // The colour of a trace, which is made for a dark plot, for this one: as dark as it has to be to
    // stand out from white.
    function traceColor(color: color): color {
        if (isDark)
            return color;
        let lightness = color.hslLightness;
        let result = color;
        while (brightness(result) > 0.28 && lightness > 0.1) {
            lightness -= 0.02;
            result = Qt.hsla(Math.max(0, color.hslHue), color.hslSaturation, lightness, 1);
        }
        return result;
    }
    // Relative luminance, as in the guidelines for accessible web pages: 0.28 has a contrast of 3.2 to
    // white.
    function brightness(color: color): real {
        const linear = part => part <= 0.03928 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
        return 0.2126 * linear(color.r) + 0.7152 * linear(color.g) + 0.0722 * linear(color.b);
    }
}
