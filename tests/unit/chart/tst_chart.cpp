// SPDX-License-Identifier: MIT
#include <ChartsLibrary/Chart.h>
#include <ChartsLibrary/ZoomDelegate.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QRegularExpression>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

// The chart without traces: what it is like when new, its published interface, and its properties
// as far as they need no zoom.
class tst_Chart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void initialState();
    void updateTimer();
    void timerGoesOnWithoutTraces();
    void parentItem();

    void className();
    void properties_data();
    void properties();
    void propertyCount();
    void signalsInOrder();
    void invokables();

    void isZoomEnabled();
    void isZoomedIsReadOnly();
    void rubberBand();
    void rubberBandIsNotOwned();
    void rubberBandThatIsDestroyed();
};

void tst_Chart::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_Chart::initialState()
{
    Chart chart;
    QVERIFY(chart.flags().testFlag(QQuickItem::ItemHasContents));
    QVERIFY(chart.antialiasing());
    QCOMPARE(chart.acceptedMouseButtons(), Qt::MouseButtons(Qt::AllButtons));
    QVERIFY(chart.acceptHoverEvents());
    QVERIFY(!chart.isZoomed());
    QVERIFY(!chart.isZoomEnabled());
    QCOMPARE(chart.rubberBand(), nullptr);
    QCOMPARE(chart.parentItem(), nullptr);
    QCOMPARE(chart.size(), QSizeF(0.0, 0.0));
    QVERIFY(chart.isVisible());
    QVERIFY(!chart.includes(nullptr));
}

void tst_Chart::updateTimer()
{
    Chart chart;
    const auto timers = chart.findChildren<QTimer *>(Qt::FindDirectChildrenOnly);
    QCOMPARE(timers.size(), 1);
    const QTimer *timer = timers.first();
    QCOMPARE(timer->interval(), 33);
    QCOMPARE(timer->timerType(), Qt::PreciseTimer);
    QVERIFY(!timer->isSingleShot());
    QVERIFY(timer->isActive());
}

void tst_Chart::timerGoesOnWithoutTraces()
{
    Chart chart;
    chart.setVisible(false);
    const auto *timer = chart.findChild<QTimer *>();
    QSignalSpy timeouts(timer, &QTimer::timeout);
    QTRY_VERIFY(timeouts.size() >= 2);
    QVERIFY(timer->isActive());
}

void tst_Chart::parentItem()
{
    QQuickItem parent;
    auto *chart = new Chart(&parent);
    QCOMPARE(chart->parentItem(), &parent);
    QCOMPARE(chart->parent(), &parent);
}

void tst_Chart::className()
{
    QCOMPARE(Chart::staticMetaObject.className(), "Charts::Chart");
}

void tst_Chart::properties_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<bool>("writable");
    QTest::addColumn<QByteArray>("notify");

    QTest::newRow("isZoomed") << QByteArray("bool") << false << QByteArray("isZoomedChanged(bool)");
    QTest::newRow("isZoomEnabled")
            << QByteArray("bool") << true << QByteArray("isZoomEnabledChanged()");
    QTest::newRow("rubberBand") << QByteArray("Charts::ZoomDelegate*") << true
                                << QByteArray("rubberBandChanged(QQuickItem*)");
}

void tst_Chart::properties()
{
    QFETCH(QByteArray, type);
    QFETCH(bool, writable);
    QFETCH(QByteArray, notify);

    const QMetaObject &meta = Chart::staticMetaObject;
    const int index = meta.indexOfProperty(QTest::currentDataTag());
    QVERIFY(index >= meta.propertyOffset());
    const QMetaProperty property = meta.property(index);
    QCOMPARE(QByteArray(property.typeName()), type);
    QVERIFY(property.isReadable());
    QCOMPARE(property.isWritable(), writable);
    QVERIFY(!property.isResettable());
    QVERIFY(!property.isConstant());
    QCOMPARE(property.notifySignal().methodSignature(), notify);
}

void tst_Chart::propertyCount()
{
    const QMetaObject &meta = Chart::staticMetaObject;
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 3);
}

namespace {

// The methods that the chart itself adds, each as "type name(type argument, ...)".
QStringList methods(QMetaMethod::MethodType type)
{
    const QMetaObject &meta = Chart::staticMetaObject;
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() != type)
            continue;
        QStringList arguments;
        for (int p = 0; p < method.parameterCount(); ++p) {
            arguments += QString::fromLatin1(
                    method.parameterTypes().at(p) + ' ' + method.parameterNames().at(p));
        }
        found += u"%1 %2(%3)"_s.arg(QString::fromLatin1(method.typeName()),
                QString::fromLatin1(method.name()), arguments.join(u", "_s));
    }
    return found;
}

} // namespace

void tst_Chart::signalsInOrder()
{
    const QStringList expected{
            u"void mouseEventResponsesReceived()"_s,
            u"void rubberBandChanged(QQuickItem* rubberBand)"_s,
            u"void isZoomedChanged(bool isZoomed)"_s,
            u"void isZoomEnabledChanged()"_s,
            u"void zoomedIn()"_s,
            u"void clicked(Charts::ChartMouseEvent* event)"_s,
            u"void hovered(Charts::ChartMouseEvent* event, bool state)"_s,
            u"void pressed(Charts::ChartMouseEvent* event)"_s,
            u"void released(Charts::ChartMouseEvent* event)"_s,
            u"void doubleClicked(Charts::ChartMouseEvent* event)"_s,
    };
    QCOMPARE(methods(QMetaMethod::Signal), expected);
}

void tst_Chart::invokables()
{
    const QStringList expected{
            u"void addTrace(Charts::AbstractTrace* trace)"_s,
            u"void removeTrace(Charts::AbstractTrace* trace)"_s,
            u"void zoomIn(QRectF rect)"_s,
            u"void zoomReset()"_s,
    };
    QCOMPARE(methods(QMetaMethod::Method), expected);
    QCOMPARE(methods(QMetaMethod::Slot), QStringList());
}

void tst_Chart::isZoomEnabled()
{
    Chart chart;
    QSignalSpy changes(&chart, &Chart::isZoomEnabledChanged);
    chart.setIsZoomEnabled(false);
    QCOMPARE(changes.size(), 0);
    chart.setIsZoomEnabled(true);
    QVERIFY(chart.isZoomEnabled());
    QCOMPARE(changes.size(), 1);
    chart.setIsZoomEnabled(true);
    QCOMPARE(changes.size(), 1);
    QVERIFY(chart.setProperty("isZoomEnabled", false));
    QVERIFY(!chart.isZoomEnabled());
    QCOMPARE(changes.size(), 2);
}

void tst_Chart::isZoomedIsReadOnly()
{
    Chart chart;
    QSignalSpy changes(&chart, &Chart::isZoomedChanged);
    QVERIFY(!chart.setProperty("isZoomed", true));
    QVERIFY(!chart.isZoomed());
    QCOMPARE(changes.size(), 0);
}

void tst_Chart::rubberBand()
{
    Chart chart;
    ZoomDelegate first;
    ZoomDelegate second;
    QSignalSpy changes(&chart, &Chart::rubberBandChanged);

    chart.setRubberBand(nullptr);
    QCOMPARE(changes.size(), 0);

    chart.setRubberBand(&first);
    QCOMPARE(chart.rubberBand(), &first);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.last().first().value<QQuickItem *>(), &first);
    chart.setRubberBand(&first);
    QCOMPARE(changes.size(), 1);

    chart.setRubberBand(&second);
    QCOMPARE(changes.size(), 2);
    QCOMPARE(changes.last().first().value<QQuickItem *>(), &second);

    chart.setRubberBand(nullptr);
    QCOMPARE(chart.rubberBand(), nullptr);
    QCOMPARE(changes.size(), 3);
    QCOMPARE(changes.last().first().value<QQuickItem *>(), nullptr);
}

void tst_Chart::rubberBandIsNotOwned()
{
    ZoomDelegate rubberBand;
    auto chart = std::make_unique<Chart>();
    chart->setRubberBand(&rubberBand);
    QCOMPARE(rubberBand.parent(), nullptr);
    QCOMPARE(rubberBand.parentItem(), nullptr);
    QVERIFY2(rubberBand.isVisible(), "only a drag shows or hides the rubber band");
    QSignalSpy destructions(&rubberBand, &QObject::destroyed);
    chart.reset();
    QCOMPARE(destructions.size(), 0);
}

void tst_Chart::rubberBandThatIsDestroyed()
{
    Chart chart;
    auto rubberBand = std::make_unique<ZoomDelegate>();
    chart.setRubberBand(rubberBand.get());
    rubberBand.reset();
    QCOMPARE(chart.rubberBand(), nullptr);
    ZoomDelegate next;
    chart.setRubberBand(&next);
    QCOMPARE(chart.rubberBand(), &next);
}

QTEST_MAIN(tst_Chart)

#include "tst_chart.moc"
