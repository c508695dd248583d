// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import zel.charts 1.0
import ChartsTest

TestCase {
    id: testCase

    name: "Domain"

    property TestTrace trace: TestTrace {}
    property Backend backend: Backend {}

    function init() {
        failOnWarning(/.*/);
        backend.setFormat(trace.domain, TraceDomain.XYFormat);
    }

    function test_span() {
        const span = Domain.span(1, 2);
        compare(span.min, 1);
        compare(span.max, 2);
    }

    function test_spanIsNotReordered() {
        const span = Domain.span(5, -Infinity);
        compare(span.min, 5);
        compare(span.max, -Infinity);
    }

    function test_mapping_data() {
        // Pixels from 0 to 200, data from -1 to 1: a data unit is 100 pixels.
        return [
            { tag: "middle", data: 0, pixel: 100 },
            { tag: "lower end", data: -1, pixel: 0 },
            { tag: "upper end", data: 1, pixel: 200 },
            { tag: "quarter", data: -0.5, pixel: 50 },
            { tag: "outside", data: 3, pixel: 400 },
            { tag: "infinite", data: Infinity, pixel: Infinity },
        ];
    }

    function test_mapping(row) {
        compare(Domain.mapToGeometry(Domain.span(0, 200), Domain.span(-1, 1), row.data), row.pixel);
        compare(Domain.mapFromGeometry(Domain.span(0, 200), Domain.span(-1, 1), row.pixel), row.data);
    }

    function test_mappingFromReversed() {
        // A reversed span has no length: everything is mapped to its min.
        const reversed = Domain.span(7, 3);
        for (const pixel of [-10, 0, 50, 1e6])
            compare(Domain.mapFromGeometry(Domain.span(0, 200), reversed, pixel), 7);
    }

    function test_mappingFromNothing() {
        const empty = Domain.span(3, 3);
        compare(Domain.mapToGeometry(Domain.span(0, 200), empty, 4), Infinity);
        compare(Domain.mapToGeometry(Domain.span(0, 200), empty, 2), -Infinity);
        verify(isNaN(Domain.mapToGeometry(Domain.span(0, 200), empty, 3)));
    }

    function test_niceStep_data() {
        return [
            { tag: "1", min: 0, max: 1, step: 0.1 },
            { tag: "1.2", min: 0, max: 1.2, step: 0.125 },
            { tag: "2", min: 0, max: 2, step: 0.2 },
            { tag: "3", min: 0, max: 3, step: 0.3 },
            { tag: "7", min: 0, max: 7, step: 0.75 },
            { tag: "8", min: 0, max: 8, step: 1 },
            { tag: "100", min: 0, max: 100, step: 10 },
            { tag: "not from 0", min: -50, max: 50, step: 10 },
            { tag: "tiny", min: 0, max: 5e-13, step: 5e-13 },
            { tag: "nothing", min: 4, max: 4, step: 0 },
            { tag: "reversed", min: 10, max: 0, step: 1e-301 },
        ];
    }

    function test_niceStep(row) {
        fuzzyCompare(Domain.niceStep(Domain.span(row.min, row.max)), row.step, row.step * 1e-12);
    }

    function test_isDomainRound_data() {
        return [
            { tag: "XYFormat", format: TraceDomain.XYFormat, round: false },
            { tag: "SmithFormat", format: TraceDomain.SmithFormat, round: true },
            { tag: "PolarFormat", format: TraceDomain.PolarFormat, round: true },
        ];
    }

    function test_isDomainRound(row) {
        backend.setFormat(trace.domain, row.format);
        compare(Domain.isDomainRound(trace.domain), row.round);
        compare(trace.domain.isRound, row.round);
        compare(trace.domain.format, row.format);
    }

    function test_nothingElse() {
        // Not published: it is for C++ only.
        compare(Domain.mapRangeValue, undefined);
    }
}
