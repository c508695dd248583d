// SPDX-License-Identifier: MIT
#ifndef CHARTS_TEST_ZOOMWINDOW_H
#define CHARTS_TEST_ZOOMWINDOW_H

#include "ChartWindow.h"
#include "MousePointer.h"
#include "TestTrace.h"

#include <ChartsLibrary/TraceDomain.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QPointer>
#include <QtCore/QRectF>
#include <QtCore/QStringList>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/*!
    A window with a chart that a mouse may zoom: its rubber band is a child of the chart and hidden.

    It writes down what chart, rubber band and traces say about zoom, in the order of arrival: a
    domain hears of its range first and has told of its base before the range is written down.
*/
class ZoomWindow : public ChartWindow
{
public:
    explicit ZoomWindow(const QSize &size = {200, 100})
        : ChartWindow(size)
        , m_band(new Charts::ZoomDelegate(chart()))
        , mouse(*this)
    {
        using Charts::Chart;

        chart()->setIsZoomEnabled(true);
        m_band->setVisible(false);
        chart()->setRubberBand(m_band);

        connect(m_band, &QQuickItem::visibleChanged, this, [this] {
            note(m_band->isVisible() ? QStringLiteral("shown") : QStringLiteral("hidden"));
        });
        connect(chart(), &Chart::isZoomedChanged, this, [this](bool isZoomed) {
            note(isZoomed ? QStringLiteral("zoomed") : QStringLiteral("reset"));
        });
        connect(chart(), &Chart::zoomedIn, this, [this] {
            note(QStringLiteral("zoomedIn"));
            ++zoomCount;
        });
        connect(chart(), &Chart::isZoomEnabledChanged, this, [this] {
            note(chart()->isZoomEnabled() ? QStringLiteral("enabled") : QStringLiteral("disabled"));
        });
        connect(chart(), &Chart::rubberBandChanged, this, [this](QQuickItem *item) {
            note(item ? QStringLiteral("rubber band set") : QStringLiteral("rubber band cleared"));
        });
    }

    ~ZoomWindow() override
    {
        // The items outlive the log.
        if (chart())
            chart()->disconnect(this);
        if (m_band)
            m_band->disconnect(this);
    }

    /*! Null once it has been deleted. */
    [[nodiscard]] Charts::ZoomDelegate *band() const { return m_band; }
    [[nodiscard]] bool isBandShown() const { return m_band->isVisible(); }
    [[nodiscard]] QRectF bandRect() const { return {m_band->position(), m_band->size()}; }

    /*! Adds a trace to the chart; it stands in the log as T0, T1 and so on. */
    TestTrace &addTrace(Charts::Span x, Charts::Span y)
    {
        using Charts::TraceDomain;

        const QString name = QStringLiteral("T%1").arg(m_traces.size());
        TestTrace &trace = *m_traces.emplace_back(std::make_unique<TestTrace>());
        TraceDomain *domain = trace.domain();
        domain->setRangeXY(x, y);
        connect(domain, &TraceDomain::zoomedChanged, this, [this, name](bool isZoomed) {
            note(name + (isZoomed ? QStringLiteral(" zoomed") : QStringLiteral(" reset")));
        });
        connect(domain, &TraceDomain::xRangeChanged, this,
                [this, name] { note(name + QStringLiteral(" x")); });
        connect(domain, &TraceDomain::yRangeChanged, this,
                [this, name] { note(name + QStringLiteral(" y")); });
        connect(domain, &TraceDomain::baseXRangeChanged, this,
                [this, name] { note(name + QStringLiteral(" base x")); });
        connect(domain, &TraceDomain::baseYRangeChanged, this,
                [this, name] { note(name + QStringLiteral(" base y")); });
        chart()->addTrace(&trace);
        return trace;
    }
    void deleteTrace(std::size_t index) { m_traces.at(index).reset(); }

    /*! What was written down since the last call. */
    [[nodiscard]] QStringList takeLog() { return std::exchange(m_log, {}); }
    void note(const QString &text) { m_log.append(text); }

    /*! How often zoomedIn() came. */
    int zoomCount = 0;

private:
    QPointer<Charts::ZoomDelegate> m_band;
    std::vector<std::unique_ptr<TestTrace>> m_traces;
    QStringList m_log;

public:
    // Last, to be gone before the others: it releases its buttons.
    MousePointer mouse;
};

#endif
