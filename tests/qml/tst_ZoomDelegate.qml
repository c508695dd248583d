// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import zel.charts 1.0

TestCase {
    id: testCase

    name: "ZoomDelegate"

    property var log: []

    Component {
        id: component

        ZoomDelegate {
            onMinSizeChanged: testCase.log.push("minSize " + minSize)
            onZoomTypeChanged: testCase.log.push("zoomType " + zoomType)
        }
    }

    Component {
        id: declared

        ZoomDelegate {
            visible: false
            minSize: 10
            zoomType: ZoomDelegate.Horizontal

            Rectangle {
                objectName: "content"
                anchors.fill: parent
                color: "red"
            }
        }
    }

    function init() {
        failOnWarning(/.*/);
        log = [];
    }

    function test_initialState() {
        const delegate = createTemporaryObject(component, testCase);
        compare(delegate.minSize, 0);
        compare(delegate.zoomType, ZoomDelegate.Diagonal);
        compare(delegate.width, 0);
        compare(delegate.height, 0);
        verify(delegate instanceof Item);
        compare(log, []);
    }

    function test_declaration() {
        const delegate = createTemporaryObject(declared, testCase);
        compare(delegate.minSize, 10);
        compare(delegate.zoomType, ZoomDelegate.Horizontal);
        compare(delegate.visible, false);
        delegate.width = 40;
        delegate.height = 30;
        const content = findChild(delegate, "content");
        compare(content.width, 40);
        compare(content.height, 30);
    }

    function test_change_data() {
        return [
            { tag: "minSize", value: 7 },
            { tag: "zoomType", value: ZoomDelegate.Vertical },
        ];
    }

    function test_change(row) {
        const delegate = createTemporaryObject(component, testCase);
        delegate[row.tag] = delegate[row.tag];
        compare(log, []);
        delegate[row.tag] = row.value;
        compare(delegate[row.tag], row.value);
        compare(log, [row.tag + " " + row.value]);
        delegate[row.tag] = row.value;
        compare(log.length, 1);
    }

    function test_operationsAreNotForQml() {
        const delegate = createTemporaryObject(component, testCase);
        for (const name of ["startResize", "updatePoint", "stopResize", "isAreaValid", "resizeArea"])
            compare(delegate[name], undefined);
    }
}
