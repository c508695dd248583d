// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import zel.charts 1.0
import ChartsTest

TestCase {
    id: testCase

    name: "Chart"

    property Backend backend: Backend {}
    property var log: []

    Component {
        id: component

        Chart {
            property ZoomDelegate band: ZoomDelegate {}
            property ZoomDelegate otherBand: ZoomDelegate {}
            property TestTrace trace: TestTrace {}
            property int completions: 0

            width: 200
            height: 100

            Component.onCompleted: ++completions

            onIsZoomedChanged: isZoomed => testCase.log.push("isZoomed " + isZoomed)
            onIsZoomEnabledChanged: testCase.log.push("isZoomEnabled " + isZoomEnabled)
            onRubberBandChanged: rubberBand => testCase.log.push(rubberBand === band ? "band" : rubberBand === otherBand ? "otherBand" : rubberBand)
            onZoomedIn: testCase.log.push("zoomedIn")
            onHovered: (event, state) => testCase.log.push(event.x + " " + event.y + " " + state)
        }
    }

    Component {
        id: plain

        Chart {}
    }

    Component {
        id: declared

        Chart {
            rubberBand: zoomDelegate
            isZoomEnabled: true

            ZoomDelegate {
                id: zoomDelegate

                visible: false
            }
        }
    }

    function init() {
        failOnWarning(/.*/);
        log = [];
    }

    function createChart() {
        const chart = createTemporaryObject(component, testCase);
        backend.setRanges(chart.trace.domain, Domain.span(0, 10), Domain.span(0, 5));
        return chart;
    }

    function test_initialState() {
        const chart = createTemporaryObject(plain, testCase);
        compare(chart.isZoomed, false);
        compare(chart.isZoomEnabled, false);
        compare(chart.rubberBand, null);
        verify(chart.antialiasing);
        compare(chart.width, 0);
        compare(chart.height, 0);
    }

    function test_bases() {
        const chart = createTemporaryObject(plain, testCase);
        verify(chart instanceof Chart);
        verify(chart instanceof ChartItem);
        verify(chart instanceof Item);
        verify(!(chart instanceof ZoomDelegate));
    }

    function test_declaration() {
        const chart = createTemporaryObject(declared, testCase);
        verify(chart.rubberBand instanceof ZoomDelegate);
        verify(chart.isZoomEnabled);
        compare(chart.rubberBand.parent, chart);
    }

    function test_completion() {
        compare(createChart().completions, 1);
    }

    function test_isZoomEnabled() {
        const chart = createChart();
        chart.isZoomEnabled = false;
        compare(log, []);
        chart.isZoomEnabled = true;
        compare(log, ["isZoomEnabled true"]);
        chart.isZoomEnabled = true;
        compare(log.length, 1);
    }

    function test_rubberBand() {
        const chart = createChart();
        chart.rubberBand = null;
        compare(log, []);
        chart.rubberBand = chart.band;
        compare(chart.rubberBand, chart.band);
        chart.rubberBand = chart.band;
        chart.rubberBand = chart.otherBand;
        chart.rubberBand = null;
        compare(chart.rubberBand, null);
        compare(log, ["band", "otherBand", null]);
    }

    function test_rubberBandOfAnotherType() {
        const chart = createChart();
        let refused = false;
        try {
            chart.rubberBand = testCase;
        } catch (error) {
            refused = true;
        }
        verify(refused);
        compare(chart.rubberBand, null);
        compare(log, []);
    }

    function test_isZoomedIsReadOnly() {
        const chart = createChart();
        let refused = false;
        try {
            chart.isZoomed = true;
        } catch (error) {
            refused = String(error).includes("read-only");
        }
        verify(refused);
        compare(chart.isZoomed, false);
    }

    function test_traces() {
        const chart = createChart();
        chart.addTrace(chart.trace);
        verify(backend.includes(chart, chart.trace));
        compare(chart.trace.domain.size, Qt.size(200, 100));
        chart.width = 300;
        compare(chart.trace.domain.size, Qt.size(300, 100));
        chart.removeTrace(chart.trace);
        verify(!backend.includes(chart, chart.trace));
        chart.removeTrace(chart.trace);
        chart.addTrace(null);
        chart.removeTrace(null);
    }

    function test_zoom() {
        const chart = createChart();
        chart.addTrace(chart.trace);
        const domain = chart.trace.domain;
        chart.zoomIn(Qt.rect(50, 25, 100, 50));
        compare(chart.isZoomed, true);
        compare(domain.isZoomed, true);
        compare(domain.xRange, Domain.span(2.5, 7.5));
        compare(domain.yRange, Domain.span(1.25, 3.75));
        compare(domain.baseXRange, Domain.span(0, 10));
        compare(log, ["isZoomed true", "zoomedIn"]);
        chart.zoomIn(Qt.rect(0, 0, 100, 100));
        compare(domain.xRange, Domain.span(2.5, 5));
        compare(log, ["isZoomed true", "zoomedIn", "zoomedIn"]);
        log = [];
        chart.zoomReset();
        compare(chart.isZoomed, false);
        compare(domain.xRange, Domain.span(0, 10));
        compare(domain.yRange, Domain.span(0, 5));
        compare(log, ["isZoomed false"]);
        chart.zoomReset();
        compare(log, ["isZoomed false"]);
    }

    function test_disablingResets() {
        const chart = createChart();
        chart.isZoomEnabled = true;
        chart.zoomIn(Qt.rect(0, 0, 1, 1));
        log = [];
        chart.isZoomEnabled = false;
        compare(log, ["isZoomEnabled false", "isZoomed false"]);
    }

    function test_clearingTheRubberBandResets() {
        const chart = createChart();
        chart.rubberBand = chart.band;
        chart.zoomIn(Qt.rect(0, 0, 1, 1));
        log = [];
        chart.rubberBand = null;
        compare(log, ["isZoomed false", null]);
    }

    function test_hovered() {
        const chart = createChart();
        backend.hover(chart, true);
        backend.hover(chart, false);
        compare(log, ["4 4 true", "4 4 false"]);
    }
}
