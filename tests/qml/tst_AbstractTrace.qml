// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import zel.charts 1.0
import ChartsTest

TestCase {
    id: testCase

    name: "AbstractTrace"

    property Backend backend: Backend {}
    property var log: []
    property bool acceptClicks: true

    component LoggingTrace: TestTrace {
        onNameChanged: testCase.log.push("name " + name)
        onVisibleChanged: testCase.log.push("visible " + visible)
        onZChanged: z => testCase.log.push("z " + z)
        onColorChanged: color => testCase.log.push("color " + color)
        onLineWidthChaned: lineWidth => testCase.log.push("lineWidth " + lineWidth)
        onClicked: event => {
            testCase.log.push([event.x, event.y, event.button, event.buttons, event.modifiers, event.flags, event.accepted].join(" "));
            if (!testCase.acceptClicks)
                event.accepted = false;
        }
    }

    Component {
        id: plainTrace

        TestTrace {}
    }

    Component {
        id: loggingTrace

        LoggingTrace {}
    }

    function init() {
        failOnWarning(/.*/);
        log = [];
        acceptClicks = true;
    }

    function test_initialState() {
        const trace = createTemporaryObject(plainTrace, testCase);
        verify(trace.visible);
        compare(trace.name, "");
        compare(trace.z, 0);
        compare(trace.lineWidth, 1.5);
        verify(!trace.color.valid);
        verify(trace.domain !== null);
        compare(trace.domain, trace.domain);
    }

    function test_isAnAbstractTrace() {
        const trace = createTemporaryObject(plainTrace, testCase);
        verify(trace instanceof AbstractTrace);
        verify(trace.domain instanceof TraceDomain);
        verify(!(trace.domain instanceof AbstractTrace));
    }

    function test_change_data() {
        return [
            { tag: "name", value: "S11", entry: "name S11" },
            { tag: "visible", value: false, entry: "visible false" },
            { tag: "z", value: -2.5, entry: "z -2.5" },
            { tag: "color", value: "#80102030", entry: "color #80102030" },
            { tag: "lineWidth", value: 1.6, entry: "lineWidth 1.6" },
        ];
    }

    function test_change(row) {
        const trace = createTemporaryObject(loggingTrace, testCase);
        const initial = trace[row.tag];
        trace[row.tag] = initial;
        compare(log, []);
        trace[row.tag] = row.value;
        compare(log, [row.entry]);
        trace[row.tag] = row.value;
        compare(log, [row.entry]);
    }

    function test_smallChangeOfLineWidth() {
        const trace = createTemporaryObject(loggingTrace, testCase);
        trace.lineWidth = 1.5 + 1e-13;
        compare(log, []);
        compare(trace.lineWidth, 1.5);
    }

    function test_setInDeclaration() {
        const trace = createTemporaryObject(plainTrace, testCase, {
                "name": "S21",
                "visible": false,
                "z": 3,
                "color": "red",
                "lineWidth": 2
            });
        compare(trace.name, "S21");
        compare(trace.visible, false);
        compare(trace.z, 3);
        verify(Qt.colorEqual(trace.color, "red"));
        compare(trace.lineWidth, 2);
    }

    TestTrace {
        id: source
    }

    QtObject {
        id: bound

        readonly property real lineWidth: source.lineWidth
        readonly property real z: source.z
        readonly property string name: source.name
        readonly property real minX: source.domain.xRange.min
    }

    function test_bindings() {
        source.lineWidth = 4;
        compare(bound.lineWidth, 4);
        source.z = 5;
        compare(bound.z, 5);
        source.name = "bound";
        compare(bound.name, "bound");
        backend.setRanges(source.domain, Domain.span(6, 7), Domain.span(8, 9));
        compare(bound.minX, 6);
    }

    function test_domainIsConstant() {
        const trace = createTemporaryObject(plainTrace, testCase);
        const domain = trace.domain;
        let refused = false;
        try {
            trace.domain = null;
        } catch (error) {
            refused = String(error).includes("read-only");
        }
        verify(refused);
        compare(trace.domain, domain);
    }

    function test_domainProperties() {
        const trace = createTemporaryObject(plainTrace, testCase);
        const domain = trace.domain;
        for (const range of ["xRange", "yRange", "argRange", "baseXRange", "baseYRange"]) {
            compare(domain[range].min, 0);
            compare(domain[range].max, 0);
        }
        compare(domain.format, TraceDomain.XYFormat);
        compare(domain.size, Qt.size(0, 0));
        for (const flag of ["isLeftSmith", "isZoomed", "isLogX", "isRound"])
            compare(domain[flag], false);
        domain.isLogX = true;
        compare(domain.isLogX, true);
        domain.size = Qt.size(3, 4);
        compare(domain.size, Qt.size(3, 4));
        domain.shiftYRange(2);
        compare(domain.yRange.min, 2);
        compare(domain.yRange.max, 2);
    }

    function test_clicked() {
        const trace = createTemporaryObject(loggingTrace, testCase);
        verify(backend.click(trace));
        compare(log, ["4 4 2 1 67108864 0 true"]);
    }

    function test_clickedIsPassedOn() {
        const trace = createTemporaryObject(loggingTrace, testCase);
        acceptClicks = false;
        verify(!backend.click(trace));
        compare(log.length, 1);
    }
}
