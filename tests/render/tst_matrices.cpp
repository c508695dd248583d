// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "Graphics.h"
#include "RenderNodeItem.h"

#include <ChartsLibrary/ViewPort.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QVector3D>
#include <QtGui/QVector4D>
#include <QtTest/QTest>

#include <array>
#include <cmath>
#include <memory>

using namespace Charts;

Q_DECLARE_METATYPE(Charts::ViewPort)

namespace {

/*! Homogeneous coordinates in more digits than the matrices have. */
struct ClipPosition
{
    long double x = 0.0L;
    long double y = 0.0L;
    long double z = 0.0L;
};

long double onAxis(long double value, long double start, long double extent)
{
    return 2.0L * (value - start) / extent - 1.0L;
}

} // namespace

/*! The transformations from data to the clip volume. */
class tst_Matrices : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void main_data();
    void main();
    void boundingX_data() { main_data(); }
    void boundingX();
    void boundingY_data() { main_data(); }
    void boundingY();
    void notInvertible();

private:
    void compare(const QMatrix4x4 &matrix, const QVector2D &point, const ClipPosition &expected,
            const ViewPort &viewPort);
    /*! Inside, on the edges and well beyond them, at fractions of the view port. */
    [[nodiscard]] static std::vector<QVector2D> places(const ViewPort &viewPort);

    std::unique_ptr<ChartWindow> m_window;
    RenderNodeItem *m_item = nullptr;
};

void tst_Matrices::initTestCase()
{
    m_window = std::make_unique<ChartWindow>(QSize(200, 100), ChartWindow::Content::Nothing);
    QVERIFY2(m_window->start(), m_window->error());
    m_item = new RenderNodeItem(*m_window);
}

void tst_Matrices::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Matrices::cleanupTestCase()
{
    m_window.reset();
}

std::vector<QVector2D> tst_Matrices::places(const ViewPort &viewPort)
{
    std::vector<QVector2D> result;
    for (const float right : {-3.0F, -0.5F, 0.0F, 0.25F, 0.5F, 1.0F, 1.5F, 10.0F}) {
        for (const float up : {-3.0F, 0.0F, 0.25F, 1.0F, 7.0F}) {
            result.push_back(
                    {viewPort.x + right * viewPort.width, viewPort.y + up * viewPort.height});
        }
    }
    return result;
}

void tst_Matrices::compare(const QMatrix4x4 &matrix, const QVector2D &point,
        const ClipPosition &expected, const ViewPort &viewPort)
{
    const QVector4D position = matrix * QVector4D(point.x(), point.y(), 0.0F, 1.0F);
    QCOMPARE(position.w(), 1.0F);
    // The terms of the sum are as large as the data's distance from zero in view ports.
    const auto tolerance = [](float value, float extent, long double result) {
        return 4e-7L
               * (4.0L + 4.0L * std::abs(static_cast<long double>(value / extent))
                       + std::abs(result));
    };
    const long double toleranceX =
            tolerance(std::abs(viewPort.x) + std::abs(point.x()), viewPort.width, expected.x);
    const long double toleranceY =
            tolerance(std::abs(viewPort.y) + std::abs(point.y()), viewPort.height, expected.y);
    const long double toleranceZ =
            4e-7L * (2.0L + std::abs(expected.z))
            + 1e-9L
                      * (std::abs(viewPort.x) + std::abs(viewPort.y) + std::abs(viewPort.width)
                              + std::abs(viewPort.height));
    const auto isNear = [](float actual, long double wanted, long double slack) {
        return std::abs(static_cast<long double>(actual) - wanted) <= slack;
    };
    const QByteArray text = QStringLiteral("(%1, %2) goes to (%3, %4, %5), not (%6, %7, %8)")
                                    .arg(point.x())
                                    .arg(point.y())
                                    .arg(position.x())
                                    .arg(position.y())
                                    .arg(position.z())
                                    .arg(static_cast<double>(expected.x))
                                    .arg(static_cast<double>(expected.y))
                                    .arg(static_cast<double>(expected.z))
                                    .toUtf8();
    QVERIFY2(isNear(position.x(), expected.x, toleranceX), text.constData());
    QVERIFY2(isNear(position.y(), expected.y, toleranceY), text.constData());
    QVERIFY2(isNear(position.z(), expected.z, toleranceZ), text.constData());
}

void tst_Matrices::main_data()
{
    QTest::addColumn<ViewPort>("viewPort");
    QTest::addColumn<float>("pixel");

    QTest::newRow("unit") << ViewPort{0.0F, 0.0F, 1.0F, 1.0F} << 0.01F;
    QTest::newRow("pixels") << ViewPort{0.0F, 0.0F, 200.0F, 100.0F} << 1.0F;
    QTest::newRow("round zero") << ViewPort{-1.0F, -1.0F, 2.0F, 2.0F} << 0.02F;
    QTest::newRow("offset") << ViewPort{10.0F, -5.0F, 20.0F, 10.0F} << 0.25F;
    QTest::newRow("far from zero") << ViewPort{3000.0F, -2000.0F, 10.0F, 40.0F} << 0.5F;
    QTest::newRow("large") << ViewPort{-1e6F, 0.0F, 2e6F, 1e6F} << 1e4F;
    QTest::newRow("small") << ViewPort{0.0F, 0.0F, 1e-6F, 1e-6F} << 1e-8F;
    QTest::newRow("uneven") << ViewPort{0.0F, -1e-3F, 1e6F, 2e-3F} << 1e-5F;
    QTest::newRow("no pixel") << ViewPort{0.0F, 0.0F, 1.0F, 1.0F} << 0.0F;
    QTest::newRow("mirrored") << ViewPort{1.0F, 1.0F, -1.0F, -1.0F} << -0.01F;
}

void tst_Matrices::main()
{
    QFETCH(ViewPort, viewPort);

    QMatrix4x4 matrix;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) { matrix = node.mainMatrix(viewPort); }));
    for (const QVector2D &place : places(viewPort)) {
        compare(matrix, place,
                {onAxis(place.x(), viewPort.x, viewPort.width),
                        onAxis(place.y(), viewPort.y, viewPort.height), -1.0L},
                viewPort);
    }
    // A depth of 1 would be on the far plane.
    QCOMPARE(matrix.map(QVector3D(viewPort.x, viewPort.y, 1.0F)).z(), 1.0F);
}

void tst_Matrices::boundingX()
{
    QFETCH(ViewPort, viewPort);
    QFETCH(float, pixel);

    std::array<QMatrix4x4, 2> matrices;
    QVERIFY(m_item->run(
            [&](OpenGLRenderNode &node) { matrices = node.boundingXMatricies(viewPort, pixel); }));
    const long double right = static_cast<long double>(viewPort.x) + viewPort.width - pixel;
    const long double left = static_cast<long double>(viewPort.x) + pixel;
    for (const QVector2D &place : places(viewPort)) {
        const long double y = onAxis(place.y(), viewPort.y, viewPort.height);
        compare(matrices[0], place,
                {onAxis(right, viewPort.x, viewPort.width), y, 0.002L * (place.x() - right) - 1.0L},
                viewPort);
        compare(matrices[1], place,
                {onAxis(left, viewPort.x, viewPort.width), y, 0.002L * (left - place.x()) - 1.0L},
                viewPort);
    }
}

void tst_Matrices::boundingY()
{
    QFETCH(ViewPort, viewPort);
    QFETCH(float, pixel);

    std::array<QMatrix4x4, 2> matrices;
    QVERIFY(m_item->run(
            [&](OpenGLRenderNode &node) { matrices = node.boundingYMatricies(viewPort, pixel); }));
    const long double top = static_cast<long double>(viewPort.y) + viewPort.height - pixel;
    const long double bottom = static_cast<long double>(viewPort.y) + pixel;
    for (const QVector2D &place : places(viewPort)) {
        const long double x = onAxis(place.x(), viewPort.x, viewPort.width);
        compare(matrices[0], place,
                {x, onAxis(top, viewPort.y, viewPort.height), 0.002L * (place.y() - top) - 1.0L},
                viewPort);
        compare(matrices[1], place,
                {x, onAxis(bottom, viewPort.y, viewPort.height),
                        0.002L * (bottom - place.y()) - 1.0L},
                viewPort);
    }
}

void tst_Matrices::notInvertible()
{
    // There is no rectangle to map; there is still a matrix.
    QMatrix4x4 matrix;
    QVERIFY(m_item->run([&](OpenGLRenderNode &node) {
        matrix = node.mainMatrix({1.0F, 2.0F, 0.0F, 0.0F});
        (void)node.boundingXMatricies({1.0F, 2.0F, 0.0F, 0.0F}, 0.0F);
        (void)node.boundingYMatricies({1.0F, 2.0F, 0.0F, 0.0F}, 0.0F);
    }));
    QCOMPARE(matrix, QMatrix4x4());
}

QTEST_MAIN(tst_Matrices)

#include "tst_matrices.moc"
