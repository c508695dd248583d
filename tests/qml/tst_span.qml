// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import zel.charts 1.0
import ChartsTest

TestCase {
    id: testCase

    name: "span"

    property Backend backend: Backend {}
    property span own
    property var kept
    readonly property real ownLength: own.max - own.min

    SignalSpy {
        id: ownSpy
        target: testCase
        signalName: "ownChanged"
    }

    SignalSpy {
        id: spanSpy
        target: testCase.backend
        signalName: "spanChanged"
    }

    function init() {
        failOnWarning(/.*/);
        own = Domain.span(0, 0);
        backend.span = Domain.span(0, 0);
        backend.spans = [];
        ownSpy.clear();
        spanSpy.clear();
    }

    function test_default() {
        const fresh = Qt.createQmlObject("import QtQml; import zel.charts; QtObject { property span s }", testCase);
        compare(fresh.s.min, 0);
        compare(fresh.s.max, 0);
        fresh.destroy();
    }

    function test_readAndWriteMembers() {
        own = Domain.span(1, 2);
        own.min = -4;
        compare(own.min, -4);
        compare(own.max, 2);
        own.max = -8;
        compare(own.min, -4);
        compare(own.max, -8);
        own.min = Infinity;
        compare(own.min, Infinity);
    }

    function test_assignmentCopies() {
        own = Domain.span(1, 2);
        backend.span = own;
        own.min = 5;
        compare(backend.span.min, 1);
        backend.span.max = 7;
        compare(own.max, 2);
        compare(backend.span.max, 7);
    }

    function test_copyFromMethodIsFree() {
        const first = Domain.span(1, 2);
        const second = Domain.span(1, 2);
        first.min = 9;
        compare(second.min, 1);
        compare(Domain.span(1, 2).min, 1);
    }

    function test_argumentIsACopy() {
        const span = Domain.span(0, 10);
        compare(Domain.mapToGeometry(span, span, 4), 4);
        compare(span.min, 0);
        compare(span.max, 10);
    }

    function test_change() {
        own = Domain.span(1, 2);
        compare(ownSpy.count, 1);
        own = Domain.span(1, 2);
        compare(ownSpy.count, 1);
        own.max = 3;
        compare(ownSpy.count, 2);
    }

    function test_changeOfOneMember() {
        backend.span = Domain.span(1, 2);
        compare(spanSpy.count, 1);
        backend.span.max = 3;
        compare(spanSpy.count, 2);
        backend.span.max = 3;
        compare(spanSpy.count, 2);
    }

    function test_binding() {
        own = Domain.span(1, 4);
        compare(ownLength, 3);
        own.max = 11;
        compare(ownLength, 10);
    }

    function test_comparison_data() {
        return [
            { tag: "same", a: [1, 2], b: [1, 2], equal: true },
            { tag: "zero and nearly zero", a: [0, 1], b: [1e-13, 1], equal: true },
            { tag: "one and nearly one", a: [1, 2], b: [1 + 1e-13, 2], equal: true },
            { tag: "small but different", a: [1e-3, 2], b: [1.1e-3, 2], equal: false },
            { tag: "other max", a: [1, 2], b: [1, 3], equal: false },
            { tag: "reversed", a: [1, 2], b: [2, 1], equal: false },
        ];
    }

    function test_comparison(row) {
        const a = Domain.span(row.a[0], row.a[1]);
        const b = Domain.span(row.b[0], row.b[1]);
        compare(a == b, row.equal);
        compare(backend.equal(a, b), row.equal);
    }

    function test_list() {
        backend.spans = [Domain.span(1, 2), Domain.span(4, 3)];
        compare(backend.spans.length, 2);
        compare(backend.spans[0].min, 1);
        compare(backend.spans[0].max, 2);
        compare(backend.spans[1].min, 4);
        compare(backend.spans[1].max, 3);
        backend.spans.push(Domain.span(5, 6));
        compare(backend.spans.length, 3);
        compare(backend.spans[2].max, 6);
        backend.spans = [];
        compare(backend.spans.length, 0);
    }

    function test_listElementsAreCopies() {
        const span = Domain.span(1, 2);
        backend.spans = [span, span];
        span.min = 9;
        compare(backend.spans[0].min, 1);
        compare(backend.spans[1].min, 1);
    }

    function test_listAsArgument() {
        compare(backend.totalLength([]), 0);
        compare(backend.totalLength([Domain.span(1, 2), Domain.span(10, 14), Domain.span(8, 7)]), 5);
        backend.spans = [Domain.span(0, 3)];
        compare(backend.totalLength(backend.spans), 3);
    }

    function test_keptInVar() {
        kept = Domain.span(1, 2);
        kept.max = 6;
        own = kept;
        compare(own.max, 6);
    }
}
