// SPDX-License-Identifier: MIT
#include "GalleryScene.h"
#include "LargeSignal.h"

#include <ChartsLibrary/TraceData.h>

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtGui/QWheelEvent>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

using namespace Charts;

namespace {

/*! The page Large with its samples. */
struct LargeScene
{
    explicit LargeScene(std::unique_ptr<Scene> opened)
        : scene(std::move(opened))
        , signal(scene->page()->findChild<Gallery::LargeSignal *>())
    {
        QVERIFY(QTest::qWaitFor([this] { return signal->isReady(); }, 4 * patience));
    }

    [[nodiscard]] TraceDomain &domain() const { return *signal->trace()->domain(); }
    [[nodiscard]] Span range() const { return domain().xRange(); }
    [[nodiscard]] QRect chartArea() const
    {
        return scene->chart()->mapRectToScene(scene->chart()->boundingRect()).toRect();
    }
    void show(double first, double last) const
    {
        const double pixel = range().length() / scene->chart()->width();
        scene->chart()->zoomIn(QRectF((first - range().min) / pixel, 0.0, (last - first) / pixel,
                scene->chart()->height()));
    }
    void turnWheel(const QPoint &pixel, int angle) const
    {
        QWheelEvent event(pixel, scene->window()->mapToGlobal(pixel), {}, {0, angle}, Qt::NoButton,
                Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(scene->window(), &event);
    }
    /*! The columns of the chart that have the trace's colour in a row at a level. */
    [[nodiscard]] std::vector<int> columnsAt(double level) const
    {
        const QImage picture = scene->window()->grabWindow();
        const QRect area = chartArea();
        const QColor color = signal->trace()->color();
        const Span levels = domain().yRange();
        const int y = area.top()
                      + static_cast<int>((levels.max - level) / levels.length() * area.height());
        std::vector<int> columns;
        for (int x = 0; x < area.width(); ++x) {
            const QColor pixel = picture.pixelColor(area.left() + x, y);
            if (std::abs(pixel.blue() - color.blue()) < 60
                    && std::abs(pixel.green() - color.green()) < 60)
                columns.push_back(x);
        }
        return columns;
    }

    std::unique_ptr<Scene> scene;
    Gallery::LargeSignal *signal;
};

} // namespace

/*! The gallery's page of ten million samples: what is to be seen, and how it is moved. */
class tst_LargePage : public QObject
{
    Q_OBJECT

public:
    static void initMain() { setUpGallery(); }

private Q_SLOTS:
    void initTestCase() { prepare(m_engine); }
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void spikeAtItsPixel();
    void samplesThatStandAlone();
    void drawsNothingAtRest();
    void wheel();
    void rightDrag();
    void keys();

private:
    QQmlEngine m_engine;
};

void tst_LargePage::spikeAtItsPixel()
{
    const LargeScene large(openPage(m_engine, QStringLiteral("Large")));
    // Quiet at the end, but for one sample.
    constexpr std::size_t place = 1'234'567;
    std::vector<float> samples(2'000'000, 0.0F);
    samples[place] = 5.0F;
    large.signal->append(samples);
    const double spike = 1e7 + static_cast<double>(place);
    const double width = large.chartArea().width();

    for (const double visible : {1e7, 1e6, 1e5, 2e3, 300.0, 20.0}) {
        const double first =
                visible == 1e7 ? large.domain().baseXRange().min : spike - 0.3 * visible;
        if (visible != 1e7)
            large.show(first, first + visible);
        const double pixel = (spike - first) / visible * width;
        // At half of its height: in columns it stands in its own, as a line between samples it is
        // as wide there as a sample.
        const double spread = std::max(2.5, width / visible / 2.0 + 2.0);
        const QString name = QStringLiteral("%1 visible: ").arg(visible);
        std::vector<int> columns;
        QTRY_VERIFY_WITH_TIMEOUT(
                (columns = large.columnsAt(3.0),
                        std::any_of(columns.begin(), columns.end(),
                                [&](int x) { return std::abs(x + 0.5 - pixel) <= spread; })),
                patience);
        for (const int x : columns) {
            // In the widest views the old samples' own spikes are there, too.
            const double sample = first + (x + 0.5) / width * visible;
            if (sample > 1e7 + visible / 100.0)
                QVERIFY2(
                        std::abs(x + 0.5 - pixel) <= spread, qPrintable(name + QString::number(x)));
        }
    }
}

void tst_LargePage::samplesThatStandAlone()
{
    const LargeScene large(openPage(m_engine, QStringLiteral("Large")));
    // One value now and then, and nothing between.
    constexpr std::size_t count = 200'000;
    constexpr std::size_t distance = 10'007;
    std::vector<float> samples(count, std::numeric_limits<float>::quiet_NaN());
    for (std::size_t i = 0; i < count; i += distance)
        samples[i] = 3.0F;
    large.signal->append(samples);
    const double width = large.chartArea().width();

    for (const double visible : {190'000.0, 50'000.0, 15'000.0}) {
        const double first = 1e7 + 5000.0;
        large.show(first, first + visible);
        std::vector<int> columns;
        QTRY_VERIFY_WITH_TIMEOUT(!(columns = large.columnsAt(3.0)).empty(), patience);
        for (std::size_t i = 0; i < count; i += distance) {
            const double pixel = (1e7 + static_cast<double>(i) - first) / visible * width;
            if (pixel < 1.0 || pixel > width - 1.0)
                continue;
            QVERIFY2(std::any_of(columns.begin(), columns.end(),
                             [&](int x) { return std::abs(x + 0.5 - pixel) <= 1.5; }),
                    qPrintable(QStringLiteral("%1 visible: none at %2").arg(visible).arg(pixel)));
        }
    }
}

void tst_LargePage::drawsNothingAtRest()
{
    const LargeScene large(openPage(m_engine, QStringLiteral("Large")));
    QTRY_VERIFY_WITH_TIMEOUT(large.signal->trace()->vertexCount() > 0, patience);
    QTest::qWait(200);
    int frames = 0;
    int redrawn = 0;
    const TraceData &data = *large.signal->trace()->traceData();
    // The GUI thread waits meanwhile, and the renderer has not looked yet.
    connect(
            large.scene->window(), &QQuickWindow::beforeSynchronizing, this,
            [&] {
                ++frames;
                redrawn += !data.dirtyRange().isEmpty() || data.isDirty() ? 1 : 0;
            },
            Qt::DirectConnection);
    QTRY_VERIFY_WITH_TIMEOUT(frames > 8, patience);
    QCOMPARE(redrawn, 0);
    large.show(1000.0, 2000.0);
    QTRY_COMPARE_WITH_TIMEOUT(redrawn, 1, patience);
    // Samples that cannot be seen change nothing either.
    large.signal->append(std::vector<float>(100, 1.0F));
    const int framesBefore = frames;
    QTRY_VERIFY_WITH_TIMEOUT(frames > framesBefore + 4, patience);
    QCOMPARE(redrawn, 1);
}

void tst_LargePage::wheel()
{
    const LargeScene large(openPage(m_engine, QStringLiteral("Large")));
    const QRect area = large.chartArea();
    const QPoint pointer = area.topLeft() + QPoint(area.width() / 4, area.height() / 2);
    const auto pointed = [&] {
        const double share = (pointer.x() - area.left()) / static_cast<double>(area.width());
        return large.range().min + share * large.range().length();
    };
    const double before = pointed();
    for (int i = 1; i <= 10; ++i) {
        const double length = large.range().length();
        large.turnWheel(pointer, 120);
        QVERIFY(std::abs(large.range().length() / length - 0.8) < 1e-6);
        QVERIFY(std::abs(pointed() - before) < length / area.width());
    }
    QVERIFY(large.scene->chart()->isZoomed());
    QCOMPARE(large.domain().yRange(), Span(-4.0, 6.0));
    for (int i = 0; i < 100; ++i)
        large.turnWheel(pointer, 240);
    // Up to single samples.
    QVERIFY(std::abs(large.range().length() - 8.0) < 1e-6);
    QVERIFY(std::abs(pointed() - before) < 1.0);
    for (int i = 0; i < 60; ++i)
        large.turnWheel(pointer, -240);
    QCOMPARE(large.range(), Span(0.0, 1e7));
    QVERIFY(!large.scene->chart()->isZoomed());
}

void tst_LargePage::rightDrag()
{
    const LargeScene large(openPage(m_engine, QStringLiteral("Large")));
    const double width = large.chartArea().width();
    large.show(4e6, 5e6);
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        const Span before = large.range();
        const QPoint from = large.scene->pixelAt(0.8, 0.5);
        QWindow *window = large.scene->window();
        QTest::mousePress(window, button, Qt::NoModifier, from);
        for (int x = 0; x <= 300; x += 20)
            QTest::mouseMove(window, from - QPoint(x, 0));
        QTest::mouseRelease(window, button, Qt::NoModifier, from - QPoint(300, 0));
        const double moved = large.range().min - before.min;
        QVERIFY2(std::abs(moved - 1e6 * 300.0 / width) < 1e6 / width,
                qPrintable(QString::number(moved)));
        QVERIFY(std::abs(large.range().length() - 1e6) < 1e-3);
    }
    // A rubber band narrower than some samples, and back.
    large.show(5e6, 5e6 + 100.0);
    large.scene->drag(large.scene->pixelAt(0.5, 0.2), large.scene->pixelAt(0.51, 0.8));
    QVERIFY(std::abs(large.range().length() - 8.0) < 1e-3);
    QVERIFY(std::abs(large.range().min - (5e6 + 50.5 - 4.0)) < 0.5);
    QTest::mouseDClick(
            large.scene->window(), Qt::LeftButton, Qt::NoModifier, large.scene->pixelAt(0.5, 0.05));
    QTRY_COMPARE_WITH_TIMEOUT(large.range(), Span(0.0, 1e7), patience);
}

void tst_LargePage::keys()
{
    const LargeScene large(openPage(m_engine, QStringLiteral("Large")));
    QQuickWindow *window = large.scene->window();
    window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(window));
    large.scene->chart()->forceActiveFocus();
    const auto press = [&](Qt::Key key) { QTest::keyClick(window, key); };
    const auto shows = [&](double first, double last) {
        return std::abs(large.range().min - first) < 1.0
               && std::abs(large.range().max - last) < 1.0;
    };
    press(Qt::Key_Left); // cannot
    QVERIFY(shows(0.0, 1e7));
    press(Qt::Key_Plus);
    QVERIFY(shows(2.5e6, 7.5e6));
    press(Qt::Key_Up);
    QVERIFY(shows(3.75e6, 6.25e6));
    press(Qt::Key_Right);
    QVERIFY(shows(4e6, 6.5e6));
    press(Qt::Key_Left);
    QVERIFY(shows(3.75e6, 6.25e6));
    press(Qt::Key_PageDown);
    QVERIFY(shows(6e6, 8.5e6));
    press(Qt::Key_PageUp);
    QVERIFY(shows(3.75e6, 6.25e6));
    press(Qt::Key_End);
    QVERIFY(shows(7.5e6, 1e7));
    press(Qt::Key_Right);
    QVERIFY(shows(7.5e6, 1e7));
    press(Qt::Key_Home);
    QVERIFY(shows(0.0, 2.5e6));
    press(Qt::Key_Minus);
    QVERIFY(shows(0.0, 5e6));
    press(Qt::Key_Down);
    QCOMPARE(large.range(), Span(0.0, 1e7));
    press(Qt::Key_Plus);
    press(Qt::Key_Escape);
    QTRY_COMPARE_WITH_TIMEOUT(large.range(), Span(0.0, 1e7), patience);
}

QTEST_MAIN(tst_LargePage)

#include "tst_largepage.moc"
