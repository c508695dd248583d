// SPDX-License-Identifier: MIT
import QtQuick
import zel.charts 1.0

Item {
    id: plot

    width: 640
    height: 360

    //! [gradient curve]
    GradientCurve {
        anchors.fill: parent
        p1: Qt.point(40, 60)
        p2: Qt.point(600, 300)
        color: "#c62828"
        upDirection: true
        shape: FillRectProvider {
        }
        geometryTransform: LogarithmicCurveTransform {
            decibel: -1.5 / 560 // per pixel
        }
    }
    //! [gradient curve]
    //! [curve]
    Curve {
        anchors.fill: parent
        p1: Qt.point(40, 200)
        p2: Qt.point(600, 120)
        color: "#0b67a8"
        geometryTransform: LinearCurveTransform {
        }
    }
    //! [curve]
}
