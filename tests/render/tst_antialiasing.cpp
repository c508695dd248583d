// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "PixelTrace.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLExtraFunctions>
#include <QtTest/QTest>

#include <algorithm>
#include <array>

using namespace Charts;

using Points = std::vector<QPointF>;
Q_DECLARE_METATYPE(Points)

/*! Smooth edges, and the framebuffers behind them. */
class tst_Antialiasing : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init();
    void cleanup();

    void edges_data();
    void edges();
    void halfCoveredRows();
    void framebuffers();
    void framebuffersWithoutAntialiasing();
    void switchedWhileShown();

private:
    [[nodiscard]] static bool isMultisampled()
    {
        return Graphics::flavour() != Graphics::Flavour::Es2;
    }
    [[nodiscard]] static int count(const QString &kind)
    {
        return static_cast<int>(GlProbe::liveObjects().filter(kind).size());
    }
    [[nodiscard]] static int grantedSamples(ChartWindow &window);

    static constexpr QSize size = {200, 100};
};

void tst_Antialiasing::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_Antialiasing::cleanup()
{
    QCOMPARE(GlProbe::takeErrors(), QStringList());
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

/*! Eight, or as many as the driver has. */
int tst_Antialiasing::grantedSamples(ChartWindow &window)
{
    GLint samples = 0;
    const auto connection = QObject::connect(
            &window, &QQuickWindow::beforeRendering, &window,
            [&samples] {
                QOpenGLContext::currentContext()->functions()->glGetIntegerv(
                        GL_MAX_SAMPLES, &samples);
            },
            Qt::DirectConnection);
    const bool isDrawn = window.plainFrame();
    QObject::disconnect(connection);
    return isDrawn ? std::min(samples, 8) : 0;
}

void tst_Antialiasing::edges_data()
{
    QTest::addColumn<bool>("isEnabled");
    QTest::addColumn<DrawType>("drawType");
    QTest::addColumn<Points>("points");

    const Points zigzag = {{10.5, 20.5}, {90.5, 35.5}, {110.5, 80.5}, {190.5, 60.5}};
    const Points dots = {{30.3, 30.6}, {100.7, 50.2}};
    QTest::newRow("lines, on") << true << DrawType::LineStrip << zigzag;
    QTest::newRow("lines, off") << false << DrawType::LineStrip << zigzag;
    QTest::newRow("points, on") << true << DrawType::Points << dots;
    QTest::newRow("points, off") << false << DrawType::Points << dots;
}

void tst_Antialiasing::edges()
{
    QFETCH(bool, isEnabled);
    QFETCH(DrawType, drawType);
    QFETCH(Points, points);

    // A dark background would show a wrong mixture as a bright fringe.
    const QColor background(20, 30, 40);
    const QColor color(220, 120, 20);
    ChartWindow window(size);
    window.setColor(background);
    window.chart()->setAntialiasing(isEnabled);
    PixelTrace trace(size, drawType, 6.0F, color);
    trace.setPoints(points);
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    const QImage picture = window.picture();

    ExpectedPicture expected(size, background);
    expected.setBlended(isEnabled);
    expected.setSlack(1.2, 4.0);
    if (drawType == DrawType::LineStrip) {
        expected.addLineStrip(points, 6.0, color);
    } else {
        for (const QPointF &point : points)
            expected.addPoint(point, 6.0, color);
    }
    QCOMPARE(expected.compare(picture), QString());

    int mixtures = 0;
    for (int row = 0; row < size.height(); ++row) {
        for (int column = 0; column < size.width(); ++column) {
            const QColor shown(picture.pixel(column, row));
            if (shown != background && shown != color)
                ++mixtures;
        }
    }
    if (isEnabled && isMultisampled())
        QVERIFY2(mixtures > (drawType == DrawType::LineStrip ? 100 : 10),
                qPrintable(QString::number(mixtures)));
    else
        QCOMPARE(mixtures, 0);
}

void tst_Antialiasing::halfCoveredRows()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::LineStrip, 2.0F, Qt::black);
    trace.setPoints(Points{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    QVERIFY(window.chart()->antialiasing());
    const QImage picture = window.picture();

    // From 49.5 to 51.5 above the bottom edge: one whole pixel between two halves.
    QCOMPARE(qGray(picture.pixel(100, 49)), 0);
    for (const int row : {48, 50}) {
        const int gray = qGray(picture.pixel(100, row));
        const bool isMixed = gray > 60 && gray < 195;
        QVERIFY2(isMultisampled() ? isMixed : gray == 0 || gray == 255,
                qPrintable(QString::number(gray)));
    }
    QCOMPARE(qGray(picture.pixel(100, 47)), 255);
    QCOMPARE(qGray(picture.pixel(100, 51)), 255);
}

void tst_Antialiasing::framebuffers()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::LineStrip, 2.0F, Qt::black);
    trace.setPoints(Points{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());

    if (!isMultisampled()) {
        QCOMPARE(count(QStringLiteral("framebuffer")), 2);
        QCOMPARE(count(QStringLiteral("texture")), 2);
        QCOMPARE(log.count("glRenderbufferStorageMultisample"), 0);
        QCOMPARE(log.count("glBlitFramebuffer"), 0);
        return;
    }

    // Drawn into, shown and read by picking; the first one has samples and thus no texture.
    QCOMPARE(count(QStringLiteral("framebuffer")), 3);
    QCOMPARE(count(QStringLiteral("texture")), 2);
    const auto storages = log.calls("glRenderbufferStorageMultisample");
    QCOMPARE(storages.size(), std::size_t(1));
    QCOMPARE(storages[0].integer(1), grantedSamples(window));
    QVERIFY(storages[0].integer(1) > 1);
    QCOMPARE(storages[0].integer(3), 200);
    QCOMPARE(storages[0].integer(4), 100);
    // No depth and no stencil.
    QCOMPARE(log.count("glRenderbufferStorage"), 0);
    QCOMPARE(count(QStringLiteral("renderbuffer")), 1);

    const auto blits = log.calls("glBlitFramebuffer");
    QCOMPARE(blits.size(), std::size_t(1));
    const std::array<double, 10> whole = {
            0, 0, 200, 100, 0, 0, 200, 100, GL_COLOR_BUFFER_BIT, GL_NEAREST};
    QCOMPARE(blits[0].arguments, whole);
}

void tst_Antialiasing::framebuffersWithoutAntialiasing()
{
    ChartWindow window(size);
    window.chart()->setAntialiasing(false);
    PixelTrace trace(size, DrawType::LineStrip, 2.0F, Qt::black);
    trace.setPoints(Points{{20.0, 50.5}, {180.0, 50.5}});
    window.chart()->addTrace(&trace);
    const GlProbe::Log log;
    QVERIFY2(window.start(), window.error());
    QVERIFY2(window.frame(), window.error());

    QCOMPARE(count(QStringLiteral("framebuffer")), 2);
    QCOMPARE(count(QStringLiteral("renderbuffer")), 0);
    QCOMPARE(count(QStringLiteral("texture")), 2);
    QCOMPARE(log.count("glRenderbufferStorageMultisample"), 0);
    QCOMPARE(log.count("glBlitFramebuffer"), 0);
    for (const GlProbe::Call &call : log.calls("glTexImage2D")) {
        QCOMPARE(call.integer(3), 200);
        QCOMPARE(call.integer(4), 100);
    }
}

void tst_Antialiasing::switchedWhileShown()
{
    ChartWindow window(size);
    PixelTrace trace(size, DrawType::LineStrip, 6.0F, Qt::black);
    trace.setPoints(Points{{10.5, 20.5}, {190.5, 60.5}});
    window.chart()->addTrace(&trace);
    QVERIFY2(window.start(), window.error());
    while (trace.data.isDirty())
        QVERIFY2(window.frame(), window.error());

    const auto mixtures = [&window] {
        const QImage picture = window.picture();
        int count = 0;
        for (int row = 0; row < size.height(); ++row) {
            for (int column = 0; column < size.width(); ++column) {
                const int gray = qGray(picture.pixel(column, row));
                count += gray > 0 && gray < 255 ? 1 : 0;
            }
        }
        return count;
    };

    // Nothing else changes: the switch itself asks for a new picture, and only the switch.
    const GlProbe::Log log;
    const int smooth = mixtures();
    QCOMPARE(smooth > 0, isMultisampled());
    QCOMPARE(log.count("glGenFramebuffers"), 0);
    QCOMPARE(log.count("glDrawArrays"), 0);

    window.chart()->setAntialiasing(false);
    QCOMPARE(mixtures(), 0);
    QCOMPARE(log.count("glGenFramebuffers"), 2);
    QCOMPARE(log.count("glDrawArrays"), 1);
    QCOMPARE(count(QStringLiteral("framebuffer")), 2);

    window.chart()->setAntialiasing(true);
    QCOMPARE(mixtures(), smooth);
    QCOMPARE(log.count("glGenFramebuffers"), isMultisampled() ? 5 : 4);
    QCOMPARE(log.count("glDrawArrays"), 2);
    // The vertices stay where they are.
    QCOMPARE(log.count("glBufferSubData"), 0);
}

QTEST_MAIN(tst_Antialiasing)

#include "tst_antialiasing.moc"
