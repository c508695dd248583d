// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "FixedPlace.h"
#include "GlProbe.h"
#include "Graphics.h"

#include <ChartsLibrary/FillRectProvider.h>
#include <ChartsLibrary/GradientCurve.h>
#include <ChartsLibrary/LinearCurveTransform.h>
#include <ChartsLibrary/LogarithmicCurveTransform.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

/*! Curves whose transforms and gradient providers end while they are set. */
class tst_DanglingCurves : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void transform();
    void provider();
    void both_data();
    void both();

private:
    std::unique_ptr<GradientCurve> makeCurve();
    /*! Changes everything that makes a curve draw anew, and draws. */
    void drawAnew(GradientCurve &curve);

    std::unique_ptr<ChartWindow> m_window;
};

void tst_DanglingCurves::initTestCase()
{
    m_window = std::make_unique<ChartWindow>(QSize(200, 100), ChartWindow::Content::Nothing);
    QVERIFY2(m_window->start(), m_window->error());
}

void tst_DanglingCurves::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_DanglingCurves::cleanupTestCase()
{
    m_window.reset();
}

std::unique_ptr<GradientCurve> tst_DanglingCurves::makeCurve()
{
    auto curve = std::make_unique<GradientCurve>(m_window->contentItem());
    curve->setSize(m_window->size());
    curve->setP1({10.0, 60.0});
    curve->setP2({190.0, 60.0});
    curve->setLineWidth(5.0);
    curve->setColor(Qt::red);
    return curve;
}

void tst_DanglingCurves::drawAnew(GradientCurve &curve)
{
    curve.setUpDirection(!curve.upDirection());
    curve.setUpDirection(!curve.upDirection());
    curve.setWidth(curve.width() - 1.0);
    curve.setWidth(curve.width() + 1.0);
    static_cast<void>(curve.contains({50.0, 60.0}));
    QVERIFY2(m_window->frame(), m_window->error());
}

void tst_DanglingCurves::transform()
{
    const auto curve = makeCurve();
    FillRectProvider provider;
    FixedPlace<LinearCurveTransform> place;
    curve->setShape(&provider);
    AbstractCurveTransform *address = &place.make();
    curve->setGeometryTransform(address);
    const QImage straight = m_window->picture();
    QVERIFY(curve->contains({50.0, 60.0}));

    for (int i = 0; i < 3; ++i) {
        place.destroy();
        QCOMPARE(curve->geometryTransform(), nullptr);
        QVERIFY(!curve->contains({50.0, 60.0}));
        drawAnew(*curve);
        if (i == 1)
            curve->setGeometryTransform(nullptr);
        // Moved meanwhile, so that only the new one can bring it back.
        curve->setP1({10.0, 20.0});
        drawAnew(*curve);

        QSignalSpy changes(curve.get(), &Curve::geometryTransformChanged);
        QCOMPARE(&place.make(), address);
        curve->setGeometryTransform(address);
        QCOMPARE(changes.size(), 1);
        QVERIFY(m_window->picture() != straight);
        curve->setP1({10.0, 60.0});
        QVERIFY(m_window->picture() == straight);
    }
}

void tst_DanglingCurves::provider()
{
    const auto curve = makeCurve();
    LinearCurveTransform transform;
    FixedPlace<FillRectProvider> place;
    curve->setGeometryTransform(&transform);
    GradientProvider *address = &place.make();
    curve->setShape(address);
    const QImage filled = m_window->picture();

    for (int i = 0; i < 3; ++i) {
        place.destroy();
        QCOMPARE(curve->shape(), nullptr);
        drawAnew(*curve);
        if (i == 1)
            curve->setShape(nullptr);
        curve->setP1({10.0, 20.0});
        drawAnew(*curve);

        QSignalSpy changes(curve.get(), &GradientCurve::shapeChanged);
        QCOMPARE(&place.make(), address);
        curve->setShape(address);
        QCOMPARE(changes.size(), 1);
        QVERIFY(m_window->picture() != filled);
        curve->setP1({10.0, 60.0});
        QVERIFY(m_window->picture() == filled);
    }
}

void tst_DanglingCurves::both_data()
{
    QTest::addColumn<bool>("curveFirst");
    QTest::newRow("curve first") << true;
    QTest::newRow("shapes first") << false;
}

// All at once, in either order, before and after the first frame.
void tst_DanglingCurves::both()
{
    QFETCH(bool, curveFirst);

    for (const bool drawn : {false, true}) {
        auto curve = makeCurve();
        auto transform = std::make_unique<LogarithmicCurveTransform>();
        auto provider = std::make_unique<FillRectProvider>();
        curve->setGeometryTransform(transform.get());
        curve->setShape(provider.get());
        if (drawn)
            drawAnew(*curve);
        if (curveFirst)
            curve.reset();
        provider.reset();
        if (curve)
            drawAnew(*curve);
        transform.reset();
        if (curve)
            drawAnew(*curve);
        curve.reset();
        QVERIFY2(m_window->frame(), m_window->error());
    }
}

QTEST_MAIN(tst_DanglingCurves)

#include "tst_danglingcurves.moc"
