// SPDX-License-Identifier: MIT
import QtQuick.Controls.Basic

// As wide as its text, not as wide as buttons usually are.
Button {
    width: implicitContentWidth + 24
    height: 32
}
