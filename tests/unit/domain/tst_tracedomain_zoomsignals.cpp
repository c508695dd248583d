// SPDX-License-Identifier: MIT
#include "DomainSignalLog.h"
#include "ExactCompare.h"

#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QProcess>
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

// What listeners of the zoom see, and what they may change while they listen.
class tst_TraceDomainZoomSignals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void zoomInEmission_data();
    void zoomInEmission();
    void formatIsStoredBeforeTheReset();
    void changeWhileZoomingIn();
    void resetWhileZoomingIn();
    void changeWhileResetting();
    void changeOfYWhileXReturns();
    void zoomAndReset();
    void emissionOrder();
};

void tst_TraceDomainZoomSignals::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TraceDomainZoomSignals::zoomInEmission_data()
{
    QTest::addColumn<bool>("isRectangle");

    QTest::newRow("spans") << false;
    QTest::newRow("rectangle") << true;
}

// Both ranges are in place before the first of the three signals.
void tst_TraceDomainZoomSignals::zoomInEmission()
{
    QFETCH(bool, isRectangle);

    TraceDomain domain;
    setUp(domain);
    int heard = 0;
    const auto check = [&] {
        ++heard;
        QVERIFY(domain.isZoomed());
        COMPARE_CLOSE(domain.xRange(), zoomX);
        COMPARE_CLOSE(domain.yRange(), zoomY);
        COMPARE_EXACT(domain.baseXRange(), baseX);
        COMPARE_EXACT(domain.baseYRange(), baseY);
    };
    connect(&domain, &TraceDomain::zoomedChanged, this, check);
    connect(&domain, &TraceDomain::xRangeChanged, this, check);
    connect(&domain, &TraceDomain::yRangeChanged, this, check);
    if (isRectangle)
        domain.zoomIn(QRectF(40.0, 40.0, 40.0, 40.0));
    else
        domain.zoomIn(zoomX, zoomY);
    QCOMPARE(heard, 3);
}

void tst_TraceDomainZoomSignals::formatIsStoredBeforeTheReset()
{
    TraceDomain domain;
    setUp(domain);
    domain.zoomIn(zoomX, zoomY);
    int heard = 0;
    connect(&domain, &TraceDomain::zoomedChanged, this, [&] {
        ++heard;
        QCOMPARE(domain.format(), TraceDomain::SmithFormat);
        COMPARE_EXACT(domain.xRange(), zoomX);
        // Too late for a zoom, the domain is round.
        domain.zoomIn(Span(7.0, 8.0), Span(7.0, 8.0));
    });
    connect(&domain, &TraceDomain::formatChanged, this, [&](TraceDomain::TraceFormat format) {
        ++heard;
        QCOMPARE(format, TraceDomain::SmithFormat);
        QVERIFY(!domain.isZoomed());
        COMPARE_EXACT(domain.xRange(), baseX);
        COMPARE_EXACT(domain.yRange(), baseY);
    });
    domain.setFormat(TraceDomain::SmithFormat);
    QCOMPARE(heard, 2);
}

void tst_TraceDomainZoomSignals::changeWhileZoomingIn()
{
    TraceDomain domain;
    setUp(domain);
    DomainSignalLog log(domain);
    connect(&domain, &TraceDomain::zoomedChanged, this, [&domain] {
        domain.setRangeX(6.0, 7.0);
        domain.setBaseRangeX(-8.0, 8.0);
    });
    domain.zoomIn(zoomX, zoomY);
    QCOMPARE(log.take(),
            signalNames("zoomedChanged(1) xRangeChanged baseXRangeChanged xRangeChanged "
                        "yRangeChanged"));
    COMPARE_EXACT(domain.xRange(), Span(6.0, 7.0));
    COMPARE_EXACT(domain.yRange(), zoomY);
    COMPARE_EXACT(domain.baseXRange(), Span(-8.0, 8.0));
    COMPARE_EXACT(domain.baseYRange(), baseY);
}

void tst_TraceDomainZoomSignals::resetWhileZoomingIn()
{
    TraceDomain domain;
    setUp(domain);
    connect(&domain, &TraceDomain::zoomedChanged, this, [&domain](bool isZoomed) {
        if (isZoomed)
            domain.zoomReset();
    });
    domain.zoomIn(zoomX, zoomY);
    QVERIFY(!domain.isZoomed());
    COMPARE_EXACT(domain.xRange(), baseX);
    COMPARE_EXACT(domain.yRange(), baseY);
    COMPARE_EXACT(domain.baseXRange(), baseX);
    COMPARE_EXACT(domain.baseYRange(), baseY);
}

void tst_TraceDomainZoomSignals::changeWhileResetting()
{
    TraceDomain domain;
    setUp(domain);
    domain.zoomIn(zoomX, zoomY);
    connect(&domain, &TraceDomain::zoomedChanged, this, [&domain] {
        // The ranges are still the zoomed ones, the flag is not.
        COMPARE_EXACT(domain.xRange(), zoomX);
        QVERIFY(!domain.isZoomed());
        domain.setBaseRangeX(-8.0, 8.0);
        domain.setBaseRangeY(-9.0, 9.0);
    });
    DomainSignalLog log(domain);
    domain.zoomReset();
    // The listener's ranges are the ones returned to, so returning to them is no further change.
    QCOMPARE(log.take().count(QStringLiteral("xRangeChanged")), 1);
    COMPARE_EXACT(domain.xRange(), Span(-8.0, 8.0));
    COMPARE_EXACT(domain.yRange(), Span(-9.0, 9.0));
    COMPARE_EXACT(domain.baseXRange(), Span(-8.0, 8.0));
    COMPARE_EXACT(domain.baseYRange(), Span(-9.0, 9.0));
}

// Both base ranges are read before the first range returns.
void tst_TraceDomainZoomSignals::changeOfYWhileXReturns()
{
    TraceDomain domain;
    setUp(domain);
    domain.zoomIn(zoomX, zoomY);
    connect(&domain, &TraceDomain::xRangeChanged, this,
            [&domain] { domain.setRangeY(70.0, 80.0); });
    domain.zoomReset();
    COMPARE_EXACT(domain.xRange(), baseX);
    COMPARE_EXACT(domain.yRange(), baseY);
    COMPARE_EXACT(domain.baseYRange(), baseY);
}

// Watched from outside by emissionOrder().
void tst_TraceDomainZoomSignals::zoomAndReset()
{
    TraceDomain domain;
    setUp(domain);
    domain.zoomIn(zoomX, zoomY);
    domain.zoomReset();
    COMPARE_EXACT(domain.xRange(), baseX);
    COMPARE_EXACT(domain.yRange(), baseY);
}

// A listener hears the base's signal before the range's, because the domain listens to itself
// first. Which signal is emitted first is another question, and only a watcher of all emissions
// can tell: Qt Test prints them with -vs, nested ones included. So this program runs one of its
// tests again and reads what was printed.
void tst_TraceDomainZoomSignals::emissionOrder()
{
    QProcess program;
    program.start(QCoreApplication::applicationFilePath(),
            {QStringLiteral("-vs"), QStringLiteral("zoomAndReset")});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 0);

    static const QRegularExpression line(QStringLiteral(R"(Signal: \S*TraceDomain\(\S+\) (\w+))"));
    QStringList emitted;
    for (auto match = line.globalMatch(QString::fromUtf8(program.readAllStandardOutput()));
            match.hasNext();)
        emitted.append(match.next().captured(1));
    QCOMPARE(emitted, signalNames("sizeChanged xRangeChanged baseXRangeChanged yRangeChanged "
                                  "baseYRangeChanged zoomedChanged xRangeChanged yRangeChanged "
                                  "zoomedChanged xRangeChanged baseXRangeChanged yRangeChanged "
                                  "baseYRangeChanged"));
}

QTEST_GUILESS_MAIN(tst_TraceDomainZoomSignals)
#include "tst_tracedomain_zoomsignals.moc"
