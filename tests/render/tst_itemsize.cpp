// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Charts;

/*! Charts of odd, tiny, huge and no size. */
class tst_ItemSize : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void rounded_data();
    void rounded();
    void notDrawable_data();
    void notDrawable();
    void notDrawableFromTheBeginning_data();
    void notDrawableFromTheBeginning();
    void nothing_data();
    void nothing();
    void traceAddedWhileThereIsNothing();
    void manySizes();

private:
    static constexpr QSize size = {200, 100};
};

void tst_ItemSize::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_ItemSize::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_ItemSize::rounded_data()
{
    QTest::addColumn<QSizeF>("itemSize");
    QTest::addColumn<QSize>("textureSize");

    QTest::newRow("whole") << QSizeF(120.0, 80.0) << QSize(120, 80);
    QTest::newRow("halves go up") << QSizeF(100.5, 80.5) << QSize(101, 81);
    QTest::newRow("up and down") << QSizeF(100.5, 200.4) << QSize(101, 200);
    QTest::newRow("just below a half") << QSizeF(100.499999, 0.999999) << QSize(100, 1);
    QTest::newRow("half a pixel") << QSizeF(0.5, 0.5) << QSize(1, 1);
    QTest::newRow("one pixel") << QSizeF(1.0, 1.0) << QSize(1, 1);
    QTest::newRow("thin") << QSizeF(1.4, 100.0) << QSize(1, 100);
    QTest::newRow("larger than the window") << QSizeF(1500.0, 900.0) << QSize(1500, 900);
}

void tst_ItemSize::rounded()
{
    QFETCH(QSizeF, itemSize);
    QFETCH(QSize, textureSize);

    ChartWindow window(size);
    window.chart()->setSize(itemSize);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{-20.0, 50.5}, {220.0, 50.5}});
    window.chart()->addTrace(&trace);
    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());

    const auto images = log.calls("glTexImage2D");
    QCOMPARE(images.size(), std::size_t(2));
    for (const GlProbe::Call &image : images)
        QCOMPARE(QSize(image.integer(3), image.integer(4)), textureSize);
    const auto viewports = log.calls("glViewport");
    QCOMPARE(QSize(viewports.at(0).integer(2), viewports.at(0).integer(3)), textureSize);
    QVERIFY2(window.frame(), window.error());
    QCOMPARE(log.count("glTexImage2D"), 2);
}

void tst_ItemSize::notDrawable_data()
{
    QTest::addColumn<QSizeF>("itemSize");

    QTest::newRow("less than half a pixel wide") << QSizeF(0.3, 100.0);
    QTest::newRow("less than half a pixel high") << QSizeF(200.0, 0.49);
    QTest::newRow("less than half a pixel") << QSizeF(0.3, 0.3);
    QTest::newRow("next to nothing") << QSizeF(1e-300, 1e-300);
    QTest::newRow("wider than any texture") << QSizeF(100000.0, 2.0);
    QTest::newRow("higher than any texture") << QSizeF(2.0, 100000.0);
    QTest::newRow("larger than any memory") << QSizeF(1e9, 1e9);
    QTest::newRow("larger than any number of pixels") << QSizeF(1e300, 1e300);
    QTest::newRow("infinite") << QSizeF(qInf(), qInf());
}

void tst_ItemSize::notDrawable()
{
    QFETCH(QSizeF, itemSize);

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    // A neighbour in the same window, which goes on as if nothing had happened.
    Chart neighbour(window.contentItem());
    neighbour.setAntialiasing(false);
    neighbour.setSize(size);
    PixelTrace other(size, DrawType::LineStrip, 5.0F, Qt::blue);
    other.setPoints(std::vector<QPointF>{{20.0, 20.5}, {180.0, 20.5}});
    neighbour.addTrace(&other);
    QVERIFY2(window.start(), window.error());

    const GlProbe::Log log;
    window.chart()->setSize(itemSize);
    for (const QColor &color : {QColor(Qt::red), QColor(Qt::green)}) {
        trace.data.setColor(color);
        QVERIFY2(window.frame(), window.error());
    }
    // Where there is no image to draw into, nothing is drawn into the window instead.
    bool isWindowBound = true;
    for (const GlProbe::Call &call : log.everything()) {
        if (!call.inSection)
            continue;
        if (call.function == "glBindFramebuffer")
            isWindowBound = call.integer(1) == 0;
        QVERIFY(!isWindowBound || (call.function != "glDrawArrays" && call.function != "glClear"));
    }
    // That the driver refuses such a size is no error of ours.
    (void)GlProbe::takeErrors();

    window.chart()->setSize(size);
    ExpectedPicture expected(size);
    expected.addLine({20.0, 50.5}, {180.0, 50.5}, 5.0, Qt::green);
    expected.addLine({20.0, 20.5}, {180.0, 20.5}, 5.0, Qt::blue);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_ItemSize::notDrawableFromTheBeginning_data()
{
    notDrawable_data();
}

void tst_ItemSize::notDrawableFromTheBeginning()
{
    QFETCH(QSizeF, itemSize);

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    window.chart()->setSize(itemSize);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QVERIFY2(window.frame(), window.error());
    (void)GlProbe::takeErrors();

    // An image is never shown that was not drawn.
    const QColor shown(window.picture().pixel(100, 99));
    QCOMPARE(shown, QColor(Qt::white));
    window.chart()->setSize(size);
    ExpectedPicture expected(size);
    expected.addLine({20.0, 50.5}, {180.0, 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());
}

void tst_ItemSize::nothing_data()
{
    QTest::addColumn<QSizeF>("itemSize");

    QTest::newRow("no width") << QSizeF(0.0, 100.0);
    QTest::newRow("no height") << QSizeF(200.0, 0.0);
    QTest::newRow("nothing") << QSizeF(0.0, 0.0);
    QTest::newRow("negative") << QSizeF(-200.0, 100.0);
    QTest::newRow("not a number") << QSizeF(qQNaN(), qQNaN());
}

void tst_ItemSize::nothing()
{
    QFETCH(QSizeF, itemSize);

    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QVERIFY(!GlProbe::liveObjects().isEmpty());
    ExpectedPicture expected(size);
    expected.addLine({20.0, 50.5}, {180.0, 50.5}, 5.0, Qt::red);

    // The renderer goes, with all that it made; another one comes later.
    for (int i = 0; i < 3; ++i) {
        window.chart()->setSize(itemSize);
        QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
        QCOMPARE(GlProbe::liveObjects(), QStringList());
        QVERIFY2(window.frame(), window.error());
        window.chart()->setSize(size);
        QCOMPARE(expected.compare(window.picture()), QString());
    }
}

void tst_ItemSize::traceAddedWhileThereIsNothing()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    window.chart()->setSize({0.0, 0.0});
    QVERIFY2(window.start(), window.error());
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());

    window.chart()->setSize(size);
    ExpectedPicture expected(size);
    expected.addLine({20.0, 50.5}, {180.0, 50.5}, 5.0, Qt::red);
    QCOMPARE(expected.compare(window.picture()), QString());

    // Removed meanwhile, it is not there when the chart comes back.
    window.chart()->setSize({0.0, 0.0});
    QVERIFY2(window.frame(), window.error());
    window.chart()->removeTrace(&trace);
    QVERIFY2(window.frame(), window.error());
    window.chart()->setSize(size);
    QCOMPARE(ExpectedPicture(size).compare(window.picture()), QString());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_ItemSize::manySizes()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::LineStrip, 5.0F, Qt::red);
    trace.setPoints(std::vector<QPointF>{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    const auto alive = GlProbe::liveObjects().size();
    for (int i = 1; i <= 100; ++i) {
        window.chart()->setSize({2.5 * i, 101.0 - i});
        QVERIFY2(window.frame(), window.error());
        QCOMPARE(GlProbe::liveObjects().size(), alive);
    }
}

QTEST_MAIN(tst_ItemSize)

#include "tst_itemsize.moc"
