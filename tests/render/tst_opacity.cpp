// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;

using TracePoints = std::vector<TracePoint>;
Q_DECLARE_METATYPE(TracePoints)

/*! The opacity of vertices is a mask: what interpolates to less than 0.1 is not drawn, everything
    else is drawn opaque. */
class tst_Opacity : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void points();
    void lines_data();
    void lines();
    void belowIsSeenThroughTheGap();
    void changes();

private:
    static constexpr QSize size = {200, 100};
};

void tst_Opacity::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Opacity::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_Opacity::points()
{
    struct Row
    {
        float opacity;
        bool isDrawn;
    };
    const std::vector<Row> rows = {{-1.0F, false}, {0.0F, false}, {0.05F, false}, {0.0999F, false},
            {0.1001F, true}, {0.2F, true}, {0.5F, true}, {1.0F, true}, {2.0F, true}};

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, 7.0F, QColor(200, 0, 100));
    ExpectedPicture expected(size);
    TracePoints points;
    double x = 10.5;
    for (const Row &row : rows) {
        points.push_back({static_cast<float>(x), 50.5F, row.opacity});
        // Drawn or not, never paler.
        if (row.isDrawn)
            expected.addPoint({x, 50.5}, 7.0, QColor(200, 0, 100));
        x += 20.0;
    }
    trace.setPoints(points);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Opacity::lines_data()
{
    // Horizontal lines between vertices at x and opacity, and what is left of them.
    QTest::addColumn<QList<QPointF>>("vertices");
    QTest::addColumn<QList<QPointF>>("visibleSpans");

    using Vertices = QList<QPointF>;
    const auto row = [](const char *name, const Vertices &vertices, const Vertices &spans) {
        QTest::newRow(name) << vertices << spans;
    };
    row("full", {{20.0, 1.0}, {180.0, 1.0}}, {{20.0, 180.0}});
    row("faint", {{20.0, 0.11}, {180.0, 0.11}}, {{20.0, 180.0}});
    row("too faint", {{20.0, 0.09}, {180.0, 0.09}}, {});
    row("zero", {{20.0, 0.0}, {180.0, 0.0}}, {});
    // 0.1 is reached after a tenth of the way from 0 to 1.
    row("rising", {{20.0, 0.0}, {180.0, 1.0}}, {{36.0, 180.0}});
    row("falling", {{20.0, 1.0}, {180.0, 0.0}}, {{20.0, 164.0}});
    row("half way", {{20.0, 0.0}, {180.0, 0.2}}, {{100.0, 180.0}});
    row("from below zero", {{20.0, -1.0}, {180.0, 1.0}}, {{108.0, 180.0}});
    row("to above one", {{20.0, 0.0}, {180.0, 4.0}}, {{24.0, 180.0}});
    row("never reached", {{20.0, 0.0}, {180.0, 0.0999}}, {});
    row("gap at a vertex", {{20.0, 1.0}, {100.0, 0.0}, {180.0, 1.0}},
            {{20.0, 92.0}, {108.0, 180.0}});
    row("gap of a segment",
            {{20.0, 1.0}, {60.0, 1.0}, {60.0, 0.0}, {120.0, 0.0}, {120.0, 1.0}, {180.0, 1.0}},
            {{20.0, 60.0}, {120.0, 180.0}});
    row("peak", {{20.0, 0.0}, {100.0, 0.2}, {180.0, 0.0}}, {{60.0, 140.0}});
}

void tst_Opacity::lines()
{
    QFETCH(QList<QPointF>, vertices);
    QFETCH(QList<QPointF>, visibleSpans);

    TracePoints points;
    for (const QPointF &vertex : vertices)
        points.push_back({static_cast<float>(vertex.x()), 50.5F, static_cast<float>(vertex.y())});
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(points);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    // One pixel of tolerance along the line is the slack that every line's end has.
    ExpectedPicture expected(size);
    for (const QPointF &span : visibleSpans)
        expected.addLine({span.x(), 50.5}, {span.y(), 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Opacity::belowIsSeenThroughTheGap()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace below(size, DrawType::LineStrip, 5.0F, Qt::blue);
    below.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    PixelTrace above(size, DrawType::LineStrip, 5.0F, Qt::red);
    above.setPoints(TracePoints{{20.0F, 50.5F, 0.0F}, {180.0F, 50.5F, 0.2F}});
    above.setZ(1.0);
    window.chart()->addTrace(&below);
    window.chart()->addTrace(&above);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture expected(size);
    expected.addLine({20.0, 50.5}, {180.0, 50.5}, 5.0, Qt::blue);
    expected.addLine({100.0, 50.5}, {180.0, 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_Opacity::changes()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::Points, 7.0F, Qt::red);
    trace.setPoints(TracePoints{{50.5F, 50.5F, 1.0F}, {150.5F, 50.5F, 0.0F}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    ExpectedPicture left(size);
    left.addPoint({50.5, 50.5}, 7.0, Qt::red);
    QCOMPARE(left.compare(window.picture()), QString());

    trace.setPoints(TracePoints{{50.5F, 50.5F, 0.0F}, {150.5F, 50.5F, 1.0F}});
    ExpectedPicture right(size);
    right.addPoint({150.5, 50.5}, 7.0, Qt::red);
    QCOMPARE(right.compare(window.picture()), QString());
}

QTEST_MAIN(tst_Opacity)

#include "tst_opacity.moc"
