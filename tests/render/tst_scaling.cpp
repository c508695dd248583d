// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;

/*! On a screen with two device pixels for each pixel of an item; run with QT_SCALE_FACTOR=2. */
class tst_Scaling : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void imageHasTheSizeOfTheItem();
    void imageIsStretched();

private:
    static constexpr QSize size = {200, 100};
};

void tst_Scaling::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Scaling::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_Scaling::imageHasTheSizeOfTheItem()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 4.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.0}, {180.0, 50.0}});
    window.chart()->addTrace(&trace);
    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());
    QCOMPARE(window.effectiveDevicePixelRatio(), 2.0);

    QCOMPARE(log.count("glTexImage2D"), 2);
    for (const GlProbe::Call &image : log.calls("glTexImage2D"))
        QCOMPARE(QSize(image.integer(3), image.integer(4)), size);
    QCOMPARE(log.calls("glViewport").at(0).integer(2), 200);
    QCOMPARE(log.calls("glLineWidth").at(0).argument(0), 4.0);
}

void tst_Scaling::imageIsStretched()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 4.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.0}, {180.0, 50.0}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());

    // Stretched with linear filtering: the edges are mixtures over one pixel of the image.
    ExpectedPicture expected(size * 2);
    expected.setBlended(true);
    expected.setSlack(1.2, 3.0);
    expected.addLine({40.0, 100.0}, {360.0, 100.0}, 8.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

QTEST_MAIN(tst_Scaling)

#include "tst_scaling.moc"
