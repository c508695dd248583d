// SPDX-License-Identifier: MIT
#include "DomainSignalLog.h"
#include "ExactCompare.h"

#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;

namespace {

constexpr Span baseX(0.0, 10.0);
constexpr Span baseY(0.0, 5.0);
constexpr Span zoomX(2.0, 4.0);
constexpr Span zoomY(1.0, 3.0);

void setUp(TraceDomain &domain)
{
    domain.setSize(QSizeF(200.0, 100.0));
    domain.setRangeXY(baseX, baseY);
}

} // namespace

class tst_TraceDomainZoom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void zoomInAndReset();
    void zoomTarget_data();
    void zoomTarget();
    void zoomAgain();
    void zoomToRectangle_data();
    void zoomToRectangle();
    void roundDomainsDoNotZoom_data();
    void roundDomainsDoNotZoom();
    void zoomedByHand();
    void resetWithoutZoom();
    void resetAfterBaseChange();
    void formatResetsZoom_data();
    void formatResetsZoom();
};

void tst_TraceDomainZoom::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TraceDomainZoom::zoomInAndReset()
{
    TraceDomain domain;
    setUp(domain);
    DomainSignalLog log(domain);

    domain.zoomIn(zoomX, zoomY);
    QCOMPARE(log.take(), signalNames("zoomedChanged(1) xRangeChanged yRangeChanged"));
    QVERIFY(domain.isZoomed());
    COMPARE_EXACT(domain.xRange(), zoomX);
    COMPARE_EXACT(domain.yRange(), zoomY);
    COMPARE_EXACT(domain.baseXRange(), baseX);
    COMPARE_EXACT(domain.baseYRange(), baseY);

    domain.zoomReset();
    QCOMPARE(log.take(),
            signalNames("zoomedChanged(0) baseXRangeChanged xRangeChanged baseYRangeChanged "
                        "yRangeChanged"));
    QVERIFY(!domain.isZoomed());
    COMPARE_EXACT(domain.xRange(), baseX);
    COMPARE_EXACT(domain.yRange(), baseY);
    COMPARE_EXACT(domain.baseXRange(), baseX);
    COMPARE_EXACT(domain.baseYRange(), baseY);
}

void tst_TraceDomainZoom::zoomTarget_data()
{
    QTest::addColumn<Span>("x");
    QTest::addColumn<Span>("y");
    QTest::addColumn<bool>("isZoom");

    const auto row = [](const char *name, Span x, Span y, bool isZoom) {
        QTest::newRow(name) << x << y << isZoom;
    };
    row("the ranges in force", baseX, baseY, false);
    row("within the tolerances", Span(1e-13, 10.0 - 1e-12), Span(-1e-12, 5.0), false);
    row("another x.min", Span(1.0, 10.0), baseY, true);
    row("another x.max", Span(0.0, 9.0), baseY, true);
    row("another y.min", baseX, Span(1.0, 5.0), true);
    row("another y.max", baseX, Span(0.0, 4.0), true);
    row("just beyond the tolerance", Span(2e-12, 10.0), baseY, true);
    // Stored as passed: neither kept inside the base nor put in order nor given an extent.
    row("beyond the base", Span(-100.0, 100.0), Span(-50.0, 50.0), true);
    row("reversed", Span(4.0, 2.0), Span(3.0, 1.0), true);
    row("empty", Span(2.0, 2.0), Span(3.0, 3.0), true);
    row("huge", Span(-largest, largest), Span(-largest, largest), true);
    row("infinite", Span(-inf, inf), Span(inf, -inf), true);
    row("NaN", Span(NaN, NaN), Span(NaN, NaN), true);
}

void tst_TraceDomainZoom::zoomTarget()
{
    QFETCH(Span, x);
    QFETCH(Span, y);
    QFETCH(bool, isZoom);

    TraceDomain domain;
    setUp(domain);
    DomainSignalLog log(domain);
    domain.zoomIn(x, y);
    QCOMPARE(log.take(),
            isZoom ? signalNames("zoomedChanged(1) xRangeChanged yRangeChanged") : QStringList());
    QCOMPARE(domain.isZoomed(), isZoom);
    COMPARE_EXACT(domain.xRange(), isZoom ? x : baseX);
    COMPARE_EXACT(domain.yRange(), isZoom ? y : baseY);
    COMPARE_EXACT(domain.baseXRange(), baseX);
    COMPARE_EXACT(domain.baseYRange(), baseY);

    domain.zoomReset();
    QVERIFY(!domain.isZoomed());
    COMPARE_EXACT(domain.xRange(), baseX);
    COMPARE_EXACT(domain.yRange(), baseY);
}

void tst_TraceDomainZoom::zoomAgain()
{
    TraceDomain domain;
    setUp(domain);
    domain.zoomIn(zoomX, zoomY);
    DomainSignalLog log(domain);

    domain.zoomIn(Span(2.5, 3.0), Span(1.5, 2.0));
    QCOMPARE(log.take(), signalNames("xRangeChanged yRangeChanged"));
    COMPARE_EXACT(domain.xRange(), Span(2.5, 3.0));

    domain.zoomIn(Span(2.5, 3.0), Span(1.5, 2.0));
    QCOMPARE(log.take(), QStringList());

    // Back to the base ranges by hand is still a zoom.
    domain.zoomIn(baseX, baseY);
    QCOMPARE(log.take(), signalNames("xRangeChanged yRangeChanged"));
    QVERIFY(domain.isZoomed());
    COMPARE_EXACT(domain.baseXRange(), baseX);
    COMPARE_EXACT(domain.baseYRange(), baseY);

    // And the reset then finds the ranges in place.
    domain.zoomReset();
    QCOMPARE(log.take(), signalNames("zoomedChanged(0)"));
}

void tst_TraceDomainZoom::zoomToRectangle_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<bool>("isZoom");
    QTest::addColumn<Span>("x");
    QTest::addColumn<Span>("y");

    QTest::newRow("inside") << QRectF(40.0, 40.0, 40.0, 40.0) << true << zoomX << zoomY;
    QTest::newRow("the whole item") << QRectF(0.0, 0.0, 200.0, 100.0) << false << baseX << baseY;
    QTest::newRow("full width") << QRectF(0.0, 40.0, 200.0, 40.0) << true << baseX << zoomY;
    QTest::newRow("full height") << QRectF(40.0, 0.0, 40.0, 100.0) << true << zoomX << baseY;
    QTest::newRow("empty") << QRectF(40.0, 40.0, 0.0, 0.0) << true << Span(2.0, 2.0)
                           << Span(3.0, 3.0);
    QTest::newRow("negative extent")
            << QRectF(80.0, 80.0, -40.0, -40.0) << true << Span(4.0, 2.0) << Span(3.0, 1.0);
}

void tst_TraceDomainZoom::zoomToRectangle()
{
    QFETCH(QRectF, rect);
    QFETCH(bool, isZoom);
    QFETCH(Span, x);
    QFETCH(Span, y);

    TraceDomain domain;
    setUp(domain);
    DomainSignalLog log(domain);
    domain.zoomIn(rect);
    QCOMPARE(log.take(),
            isZoom ? signalNames("zoomedChanged(1) xRangeChanged yRangeChanged") : QStringList());
    QCOMPARE(domain.isZoomed(), isZoom);
    COMPARE_CLOSE(domain.xRange(), x);
    COMPARE_CLOSE(domain.yRange(), y);
}

void tst_TraceDomainZoom::roundDomainsDoNotZoom_data()
{
    QTest::addColumn<TraceDomain::TraceFormat>("format");

    QTest::newRow("Smith") << TraceDomain::SmithFormat;
    QTest::newRow("polar") << TraceDomain::PolarFormat;
}

void tst_TraceDomainZoom::roundDomainsDoNotZoom()
{
    QFETCH(TraceDomain::TraceFormat, format);

    TraceDomain domain;
    setUp(domain);
    domain.setFormat(format);
    DomainSignalLog log(domain);
    domain.zoomIn(zoomX, zoomY);
    domain.zoomIn(QRectF(40.0, 40.0, 40.0, 40.0));
    QCOMPARE(log.take(), QStringList());
    QVERIFY(!domain.isZoomed());
    COMPARE_EXACT(domain.xRange(), baseX);
    COMPARE_EXACT(domain.yRange(), baseY);

    domain.setFormat(TraceDomain::XYFormat);
    domain.zoomIn(zoomX, zoomY);
    QVERIFY(domain.isZoomed());
}

void tst_TraceDomainZoom::zoomedByHand()
{
    TraceDomain domain;
    setUp(domain);
    domain.setZoomed(true);
    DomainSignalLog log(domain);
    domain.zoomIn(zoomX, zoomY);
    QCOMPARE(log.take(), signalNames("xRangeChanged yRangeChanged"));
    COMPARE_EXACT(domain.baseXRange(), baseX);
    domain.zoomReset();
    COMPARE_EXACT(domain.xRange(), baseX);
    COMPARE_EXACT(domain.yRange(), baseY);

    // Ended by hand as well, the ranges stay and there is nothing to reset.
    domain.zoomIn(zoomX, zoomY);
    domain.setZoomed(false);
    log.take();
    domain.zoomReset();
    QCOMPARE(log.take(), QStringList());
    COMPARE_EXACT(domain.xRange(), zoomX);
}

void tst_TraceDomainZoom::resetWithoutZoom()
{
    TraceDomain domain;
    setUp(domain);
    DomainSignalLog log(domain);
    domain.zoomReset();
    QCOMPARE(log.take(), QStringList());
    COMPARE_EXACT(domain.xRange(), baseX);
    COMPARE_EXACT(domain.yRange(), baseY);
}

void tst_TraceDomainZoom::resetAfterBaseChange()
{
    TraceDomain domain;
    setUp(domain);
    domain.zoomIn(zoomX, zoomY);
    domain.setBaseRangeX(-1.0, 20.0);
    domain.setBaseRangeY(Span(9.0, -2.0));
    domain.zoomReset();
    COMPARE_EXACT(domain.xRange(), Span(-1.0, 20.0));
    COMPARE_EXACT(domain.yRange(), Span(9.0, -2.0));
    COMPARE_EXACT(domain.baseXRange(), Span(-1.0, 20.0));
    COMPARE_EXACT(domain.baseYRange(), Span(9.0, -2.0));
}

void tst_TraceDomainZoom::formatResetsZoom_data()
{
    QTest::addColumn<TraceDomain::TraceFormat>("before");
    QTest::addColumn<TraceDomain::TraceFormat>("after");
    QTest::addColumn<QStringList>("log");

    const auto row = [](const char *name, TraceDomain::TraceFormat before,
                             TraceDomain::TraceFormat after, const char *log) {
        QTest::newRow(name) << before << after << signalNames(log);
    };
    row("XY to Smith", TraceDomain::XYFormat, TraceDomain::SmithFormat,
            "zoomedChanged(0) baseXRangeChanged xRangeChanged baseYRangeChanged yRangeChanged "
            "formatChanged(1)");
    row("XY to polar", TraceDomain::XYFormat, TraceDomain::PolarFormat,
            "zoomedChanged(0) baseXRangeChanged xRangeChanged baseYRangeChanged yRangeChanged "
            "formatChanged(2)");
    row("polar to Smith", TraceDomain::PolarFormat, TraceDomain::SmithFormat,
            "zoomedChanged(0) baseXRangeChanged xRangeChanged baseYRangeChanged yRangeChanged "
            "formatChanged(1)");
    row("polar to XY", TraceDomain::PolarFormat, TraceDomain::XYFormat, "formatChanged(0)");
    row("XY again", TraceDomain::XYFormat, TraceDomain::XYFormat, "");
    row("polar again", TraceDomain::PolarFormat, TraceDomain::PolarFormat, "");
}

void tst_TraceDomainZoom::formatResetsZoom()
{
    QFETCH(TraceDomain::TraceFormat, before);
    QFETCH(TraceDomain::TraceFormat, after);
    QFETCH(QStringList, log);

    TraceDomain domain;
    setUp(domain);
    domain.setFormat(before);
    // A round domain does not zoom in, but its flag can be set.
    domain.setZoomed(true);
    domain.setRangeXY(zoomX, zoomY);
    DomainSignalLog heard(domain);

    domain.setFormat(after);
    QCOMPARE(heard.take(), log);
    const bool isReset = log.size() > 1;
    QCOMPARE(domain.isZoomed(), !isReset);
    COMPARE_EXACT(domain.xRange(), isReset ? baseX : zoomX);
    COMPARE_EXACT(domain.yRange(), isReset ? baseY : zoomY);
}

QTEST_GUILESS_MAIN(tst_TraceDomainZoom)
#include "tst_tracedomain_zoom.moc"
