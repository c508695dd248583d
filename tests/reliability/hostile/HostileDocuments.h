// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_HOSTILEDOCUMENTS_H
#define CHARTS_TEST_HOSTILEDOCUMENTS_H

#include <QtCore/QLatin1StringView>

/*! What every document begins with. */
constexpr auto documentHead = QLatin1StringView(R"(
        import QtQuick
        import zel.charts 1.0
        import Test 1.0
        Item {
            id: root
            width: 200
            height: 100
            property var log: []
    )");

/*! A chart with a trace whose handlers do, one time, what stands for %1. */
constexpr auto handlersDocument = QLatin1StringView(R"(
            property string handler
            property bool isDone: false
            property QtObject chart: maker.createObject(root)
            property QtObject a: lineMaker.createObject(null)
            function hear(name) {
                log.push(name)
                if (name !== handler || isDone)
                    return
                isDone = true
                %1
            }
            function zoom() {
                chart.addTrace(a)
                chart.isZoomEnabled = true
                chart.zoomIn(Qt.rect(20, 20, 50, 50))
                if (chart)
                    chart.isZoomEnabled = false
            }
            Component.onCompleted: chart.addTrace(a)
            property Component maker: Component {
                Chart {
                    width: 200
                    height: 100
                    onPressed: root.hear("chart pressed")
                    onReleased: root.hear("chart released")
                    onClicked: root.hear("chart clicked")
                    onDoubleClicked: root.hear("chart doubleClicked")
                    onHovered: (event, state) => root.hear("chart hovered " + state)
                    onIsZoomedChanged: isZoomed => root.hear("chart zoomed " + isZoomed)
                    onZoomedIn: root.hear("chart zoomedIn")
                    onIsZoomEnabledChanged: root.hear("chart enabled")
                }
            }
            property Component lineMaker: Component {
                QmlLine {
                    id: line
                    fromTop: 30
                    onPressed: root.hear("A pressed")
                    onReleased: root.hear("A released")
                    onClicked: root.hear("A clicked")
                    onDoubleClicked: root.hear("A doubleClicked")
                    onHovered: (event, state) => root.hear("A hovered " + state)
                    property Connections connections: Connections {
                        target: line.domain
                        function onZoomedChanged(isZoomed) { root.hear("domain zoomed " + isZoomed) }
                        function onXRangeChanged() { root.hear("domain x") }
                        function onYRangeChanged() { root.hear("domain y") }
                    }
                }
            }
        }
    )");

/*! Handlers that keep their events, and a function that tries what can be done with them. */
constexpr auto keptDocument = QLatin1StringView(R"(
            property Chart chart: Chart {
                parent: root
                width: 200
                height: 100
                Component.onCompleted: addTrace(root.a)
                onPressed: event => root.keep(event)
            }
            property var kept: []
            property QtObject keeper: QtObject { property QtObject event }
            property AbstractTrace a: QmlLine {
                fromTop: 30
                onPressed: event => root.keep(event)
                onHovered: (event, state) => root.keep(event)
            }
            function keep(event) {
                kept.push(event)
                keeper.event = event
            }
            function read() {
                const attempts = [
                    event => event.x,
                    event => { event.accepted = false; return "written" },
                    event => String(event),
                    event => event === null || event === undefined
                ]
                let texts = []
                for (const event of kept) {
                    for (const attempt of attempts) {
                        try {
                            texts.push(String(attempt(event)))
                        } catch (error) {
                            texts.push(error.name)
                        }
                    }
                }
                return texts.join(" ") + " " + keeper.event
            }
        }
    )");

#endif
