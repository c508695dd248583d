// SPDX-License-Identifier: MIT
#include "DomainSignalLog.h"
#include "ExactCompare.h"

#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;

// The base ranges: they follow the visible ranges, or stay while a zoom is in force.
class tst_TraceDomainBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void baseFollowsEveryEmission();
    void baseFollowsTheSignalOnly();
    void baseIsFrozenWhileZoomed();
    void setBaseWhileZoomed();
    void setZoomedMovesNothing();
    void shiftYRangeWhileZoomed();
};

void tst_TraceDomainBase::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TraceDomainBase::baseFollowsEveryEmission()
{
    TraceDomain domain;
    domain.setRangeXY(0.0, 10.0, 0.0, 5.0);
    DomainSignalLog log(domain);
    // Also when the application emits the signal and nothing has changed.
    Q_EMIT domain.xRangeChanged();
    QCOMPARE(log.take(), signalNames("baseXRangeChanged xRangeChanged"));
    Q_EMIT domain.yRangeChanged();
    QCOMPARE(log.take(), signalNames("baseYRangeChanged yRangeChanged"));

    domain.setZoomed(true);
    log.take();
    Q_EMIT domain.xRangeChanged();
    Q_EMIT domain.yRangeChanged();
    QCOMPARE(log.take(), signalNames("xRangeChanged yRangeChanged"));
}

void tst_TraceDomainBase::baseFollowsTheSignalOnly()
{
    TraceDomain domain;
    domain.setRangeXY(0.0, 10.0, 0.0, 5.0);
    {
        const QSignalBlocker blocker(domain);
        domain.setRangeXY(1.0, 2.0, 3.0, 4.0);
    }
    COMPARE_EXACT(domain.xRange(), Span(1.0, 2.0));
    COMPARE_EXACT(domain.baseXRange(), Span(0.0, 10.0));
    COMPARE_EXACT(domain.baseYRange(), Span(0.0, 5.0));

    Q_EMIT domain.yRangeChanged();
    COMPARE_EXACT(domain.baseXRange(), Span(0.0, 10.0));
    COMPARE_EXACT(domain.baseYRange(), Span(3.0, 4.0));
    Q_EMIT domain.xRangeChanged();
    COMPARE_EXACT(domain.baseXRange(), Span(1.0, 2.0));
}

void tst_TraceDomainBase::baseIsFrozenWhileZoomed()
{
    TraceDomain domain;
    domain.setRangeXY(0.0, 10.0, 0.0, 5.0);
    domain.setZoomed(true);
    DomainSignalLog log(domain);
    domain.setRangeX(1.0, 2.0);
    domain.setRangeY(Span(3.0, 4.0));
    domain.setRangeXY(5.0, 6.0, 7.0, 8.0);
    QCOMPARE(log.take(), signalNames("xRangeChanged yRangeChanged xRangeChanged yRangeChanged"));
    COMPARE_EXACT(domain.xRange(), Span(5.0, 6.0));
    COMPARE_EXACT(domain.yRange(), Span(7.0, 8.0));
    COMPARE_EXACT(domain.baseXRange(), Span(0.0, 10.0));
    COMPARE_EXACT(domain.baseYRange(), Span(0.0, 5.0));
}

void tst_TraceDomainBase::setBaseWhileZoomed()
{
    TraceDomain domain;
    domain.setRangeXY(0.0, 10.0, 0.0, 5.0);
    domain.zoomIn(Span(2.0, 4.0), Span(1.0, 3.0));
    DomainSignalLog log(domain);

    domain.setBaseRangeX(-1.0, 20.0);
    QCOMPARE(log.take(), signalNames("baseXRangeChanged"));
    COMPARE_EXACT(domain.baseXRange(), Span(-1.0, 20.0));
    domain.setBaseRangeY(Span(-2.0, 9.0));
    QCOMPARE(log.take(), signalNames("baseYRangeChanged"));
    COMPARE_EXACT(domain.baseYRange(), Span(-2.0, 9.0));
    domain.setBaseRangeY(9.0, -2.0);
    QCOMPARE(log.take(), signalNames("baseYRangeChanged"));
    COMPARE_EXACT(domain.baseYRange(), Span(9.0, -2.0));

    // Stored and told without a comparison, here a difference below every tolerance and none.
    domain.setBaseRangeX(std::nextafter(-1.0, 0.0), 20.0);
    domain.setBaseRangeX(std::nextafter(-1.0, 0.0), 20.0);
    domain.setBaseRangeY(Span(9.0, -2.0));
    QCOMPARE(log.take(), signalNames("baseXRangeChanged baseXRangeChanged baseYRangeChanged"));
    COMPARE_EXACT(domain.baseXRange(), Span(std::nextafter(-1.0, 0.0), 20.0));

    COMPARE_EXACT(domain.xRange(), Span(2.0, 4.0));
    COMPARE_EXACT(domain.yRange(), Span(1.0, 3.0));
    QVERIFY(domain.isZoomed());
}

void tst_TraceDomainBase::setZoomedMovesNothing()
{
    TraceDomain domain;
    domain.setRangeXY(0.0, 10.0, 0.0, 5.0);
    domain.zoomIn(Span(2.0, 4.0), Span(1.0, 3.0));
    DomainSignalLog log(domain);
    domain.setZoomed(false);
    QCOMPARE(log.take(), signalNames("zoomedChanged(0)"));
    COMPARE_EXACT(domain.xRange(), Span(2.0, 4.0));
    COMPARE_EXACT(domain.yRange(), Span(1.0, 3.0));
    COMPARE_EXACT(domain.baseXRange(), Span(0.0, 10.0));
    COMPARE_EXACT(domain.baseYRange(), Span(0.0, 5.0));

    // The base of an axis catches up with its next signal.
    domain.setRangeX(2.0, 5.0);
    QCOMPARE(log.take(), signalNames("baseXRangeChanged xRangeChanged"));
    COMPARE_EXACT(domain.baseXRange(), Span(2.0, 5.0));
    COMPARE_EXACT(domain.baseYRange(), Span(0.0, 5.0));
}

void tst_TraceDomainBase::shiftYRangeWhileZoomed()
{
    TraceDomain domain;
    domain.setRangeXY(0.0, 10.0, 0.0, 5.0);
    domain.zoomIn(Span(2.0, 4.0), Span(1.0, 3.0));
    DomainSignalLog log(domain);
    domain.shiftYRange(0.5);
    domain.shiftYRange(0.0);
    QCOMPARE(log.take(), signalNames("yRangeChanged yRangeChanged"));
    COMPARE_EXACT(domain.yRange(), Span(1.5, 3.5));
    COMPARE_EXACT(domain.baseYRange(), Span(0.0, 5.0));
}

QTEST_GUILESS_MAIN(tst_TraceDomainBase)
#include "tst_tracedomain_base.moc"
