// SPDX-License-Identifier: MIT
#include "ChartWindow.h"
#include "ExpectedPicture.h"
#include "GlBounds.h"
#include "GlProbe.h"
#include "Graphics.h"
#include "MouseInput.h"
#include "MouseLog.h"
#include "PixelTrace.h"
#include "Rounds.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

using Write = std::function<void(TestTrace &)>;
Q_DECLARE_METATYPE(Write)
Q_DECLARE_METATYPE(Charts::ViewPort)

namespace {

constexpr int intMax = std::numeric_limits<int>::max();
constexpr int intMin = std::numeric_limits<int>::min();
constexpr float floatMax = std::numeric_limits<float>::max();
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float tiny = std::numeric_limits<float>::denorm_min();

struct Mode
{
    DrawType drawType = DrawType::Points;
    BoundingMethod bounding = BoundingMethod::Unbounded;
    bool isSquared = false;
};

constexpr Mode modes[] = {
        {DrawType::LineStrip, BoundingMethod::Unbounded},
        {DrawType::Points, BoundingMethod::Unbounded},
        {DrawType::LineStrip, BoundingMethod::Clamp},
        {DrawType::LineStrip, BoundingMethod::ExtraMatrices},
        {DrawType::Points, BoundingMethod::Clamp, true},
        {DrawType::Points, BoundingMethod::ExtraMatrices},
        {DrawType::LineStrip, BoundingMethod::ExtraMatrices, true},
        {static_cast<DrawType>(7), static_cast<BoundingMethod>(-1)},
};

} // namespace

/*!
    A sick trace below a healthy one: what it holds may be anything. No call goes beyond its data,
    OpenGL has nothing to complain about, and the healthy one is drawn and hit as if it were alone.
*/
class tst_HostileData : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void values_data();
    void values();
    void viewPorts_data();
    void viewPorts();
    void widths_data();
    void widths();
    void ranges_data();
    void ranges();
    void attributes();

private:
    static std::vector<TracePoint> zigzag(int count);
    /*! Lets the sick trace be drawn in each mode, or in one that \a turn chooses. */
    void checkModes(int turn);
    /*! A frame with both images; what is wrong with it, or an empty text. */
    QString check();

    static constexpr QSize size = {200, 100};
    static constexpr double healthyHeight = 30.5;

    std::unique_ptr<GlBounds> m_bounds;
    std::unique_ptr<ChartWindow> m_window;
    std::unique_ptr<PixelTrace> m_healthy;
    std::unique_ptr<PixelTrace> m_sick;
    MouseLog m_log;
    int m_presses = 0;
};

void tst_HostileData::initTestCase()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bounds = std::make_unique<GlBounds>();
    m_window = std::make_unique<ChartWindow>(size);
    m_window->chart()->setAntialiasing(false);
    m_healthy = std::make_unique<PixelTrace>(size, DrawType::LineStrip, 3.0F, Qt::red);
    m_healthy->setPoints(std::vector<QPointF>{{20.0, healthyHeight}, {180.0, healthyHeight}});
    m_healthy->setZ(1.0);
    m_window->chart()->addTrace(m_healthy.get());
    m_log.watch(*m_healthy, u"healthy"_s);
    QVERIFY2(m_window->start(), m_window->error());
}

void tst_HostileData::cleanupTestCase()
{
    m_window.reset();
    QCOMPARE(GlProbe::liveObjects(), QStringList());
}

void tst_HostileData::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_sick = std::make_unique<PixelTrace>(size, DrawType::LineStrip, 5.0F, Qt::blue);
    m_sick->TestTrace::setPoints(zigzag(8));
    m_window->chart()->addTrace(m_sick.get());
}

void tst_HostileData::cleanup()
{
    // The sick trace leaves nothing behind.
    m_sick.reset();
    QCOMPARE(check(), QString());
}

std::vector<TracePoint> tst_HostileData::zigzag(int count)
{
    std::vector<TracePoint> points;
    for (int i = 0; i < count; ++i)
        points.push_back({10.5F + 20.0F * float(i), i % 2 == 0 ? 5.5F : 95.5F, 1.0F});
    return points;
}

void tst_HostileData::checkModes(int turn)
{
    const int all = int(std::size(modes));
    const int count = rounds(1, all);
    for (int i = 0; i < count; ++i) {
        const Mode &mode = modes[(turn + i) % all];
        m_sick->data.setDrawType(mode.drawType);
        m_sick->data.setBoundingX(mode.bounding);
        m_sick->data.setBoundingY(mode.bounding);
        m_sick->data.setSquaredViewPort(mode.isSquared);
        const QString wrong = check();
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong + u" in mode "_s + QString::number(turn + i)));
    }
}

QString tst_HostileData::check()
{
    m_healthy->data.dirtyRange().push({0, 2}); // for a new selection image
    MouseInput(QEvent::MouseButtonPress, {50.0 + m_presses++ % 100, size.height() - healthyHeight})
            .sendTo(*m_window->chart());
    // Looked up in the first frame, answered in the second.
    if (!m_window->frame())
        return QString::fromUtf8(m_window->error());
    QImage picture = m_window->picture();
    QCoreApplication::sendPostedEvents();
    // Wherever the sick trace is drawn, it leaves the other one alone.
    for (int y = 0; y < picture.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(picture.scanLine(y));
        std::replace(line, line + picture.width(), QRgb(0xFF0000FF), QRgb(0xFFFFFFFF));
    }
    ExpectedPicture expected(size);
    expected.addLine({20.0, healthyHeight}, {180.0, healthyHeight}, 3.0, Qt::red);
    QStringList wrong = m_bounds->takeViolations() + GlProbe::takeErrors();
    if (const QStringList log = m_log.take(); log != QStringList{u"healthy pressed"_s})
        wrong.append(u"heard instead of a press: "_s + log.join(u", "_s));
    wrong.append(expected.compare(picture));
    wrong.removeAll(QString());
    return wrong.join(u"; "_s);
}

void tst_HostileData::values_data()
{
    QTest::addColumn<float>("value");
    QTest::newRow("NaN") << notANumber;
    QTest::newRow("infinity") << infinity;
    QTest::newRow("-infinity") << -infinity;
    QTest::newRow("denormal") << tiny;
    QTest::newRow("largest") << floatMax;
    QTest::newRow("-largest") << -floatMax;
    QTest::newRow("1e9") << 1e9F;
    QTest::newRow("-0") << -0.0F;
}

void tst_HostileData::values()
{
    QFETCH(float, value);

    using Fields = std::vector<float TracePoint::*>;
    const Fields fields[] = {{&TracePoint::x}, {&TracePoint::y}, {&TracePoint::opacity},
            {&TracePoint::x, &TracePoint::y},
            {&TracePoint::x, &TracePoint::y, &TracePoint::opacity}};
    int turn = 0;
    for (const Fields &group : fields) {
        for (const bool everywhere : {false, true}) {
            auto points = zigzag(8);
            for (std::size_t i = 0; i < points.size(); ++i) {
                for (const auto field : group) {
                    if (everywhere || i == 3)
                        points[i].*field = value;
                }
            }
            m_sick->TestTrace::setPoints(points);
            checkModes(turn++);
            if (QTest::currentTestFailed())
                return;
        }
    }
}

void tst_HostileData::viewPorts_data()
{
    QTest::addColumn<ViewPort>("viewPort");
    QTest::newRow("nothing") << ViewPort{0.0F, 0.0F, 0.0F, 0.0F};
    QTest::newRow("no width") << ViewPort{0.0F, 0.0F, 0.0F, 100.0F};
    QTest::newRow("no height") << ViewPort{0.0F, 0.0F, 200.0F, 0.0F};
    QTest::newRow("negative") << ViewPort{200.0F, 100.0F, -200.0F, -100.0F};
    QTest::newRow("denormal") << ViewPort{0.0F, 0.0F, tiny, tiny};
    QTest::newRow("largest") << ViewPort{-floatMax, -floatMax, floatMax, floatMax};
    QTest::newRow("overflowing") << ViewPort{floatMax, floatMax, floatMax, floatMax};
    QTest::newRow("NaN") << ViewPort{notANumber, notANumber, notANumber, notANumber};
    QTest::newRow("NaN as origin") << ViewPort{notANumber, notANumber, 200.0F, 100.0F};
    QTest::newRow("NaN as size") << ViewPort{0.0F, 0.0F, notANumber, notANumber};
    QTest::newRow("NaN as width") << ViewPort{0.0F, 0.0F, notANumber, 100.0F};
    QTest::newRow("infinite") << ViewPort{0.0F, 0.0F, infinity, infinity};
    QTest::newRow("infinite in all directions")
            << ViewPort{-infinity, -infinity, infinity, infinity};
    QTest::newRow("infinitely far") << ViewPort{infinity, -infinity, 200.0F, 100.0F};
}

void tst_HostileData::viewPorts()
{
    QFETCH(ViewPort, viewPort);

    m_sick->data.setViewPort(viewPort);
    for (int turn = 0; turn < rounds(2, 1); ++turn) {
        checkModes(turn * 3);
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_HostileData::widths_data()
{
    QTest::addColumn<float>("width");
    QTest::newRow("0") << 0.0F;
    QTest::newRow("-0") << -0.0F;
    QTest::newRow("-1") << -1.0F;
    QTest::newRow("-5") << -5.0F; // what the selection image adds makes it 0
    QTest::newRow("-10") << -10.0F;
    QTest::newRow("denormal") << tiny;
    QTest::newRow("1e30") << 1e30F;
    QTest::newRow("infinity") << infinity;
    QTest::newRow("-infinity") << -infinity;
    QTest::newRow("NaN") << notANumber;
}

void tst_HostileData::widths()
{
    QFETCH(float, width);

    m_sick->data.setWidth(width);
    for (int turn = 0; turn < rounds(2, 1); ++turn) {
        checkModes(turn);
        if (QTest::currentTestFailed())
            return;
    }
}

void tst_HostileData::ranges_data()
{
    QTest::addColumn<Write>("write");

    const auto row = [](const char *name, const Write &write) { QTest::newRow(name) << write; };
    // Both sets get the same.
    const auto both = [](int points, const std::function<void(BoundRange &)> &change) {
        return [points, change](TestTrace &trace) {
            trace.data.array() = zigzag(points);
            change(trace.data.dirtyRange());
            change(trace.data.filledRange());
        };
    };
    const auto marked = [&both](int points, int stated, QList<Range<int>> ranges) {
        return both(points, [stated, ranges](BoundRange &set) {
            set.setSize(stated);
            for (const Range<int> &range : ranges)
                set.push(range);
        });
    };
    row("no points", marked(0, 0, {}));
    row("no points, marked", marked(0, 8, {{0, 8}}));
    row("no points, the rest left", both(0, [](BoundRange &) {}));
    row("the array shrinks, the ranges do not", both(2, [](BoundRange &) {}));
    row("the array grows, the ranges do not", both(100, [](BoundRange &) {}));
    row("beyond the array", marked(8, 100, {{0, 100}}));
    row("begins beyond the array", marked(8, 100, {{90, 10}}));
    row("begins at the end", marked(8, 100, {{8, 1}}));
    row("begins far before the array", marked(8, 8, {{-1000, 1008}}));
    row("lies before the array", marked(8, 8, {{-1000, 900}}));
    row("begins before the array", marked(8, 8, {{-3, 5}}));
    row("all integers from 0", marked(8, intMax, {{0, intMax}}));
    row("all integers", marked(8, intMax, {{intMin, intMax}, {0, intMax}}));
    row("as long as can be, from the end", marked(8, intMax, {{7, intMax}, {intMax, intMax}}));
    row("last integer", marked(8, intMax, {{intMax - 1, 1}}));
    row("first integer", marked(8, intMax, {{intMin, 1}}));
    row("from first integer", marked(8, 8, {{intMin, intMax}}));
    row("negative length", marked(8, 8, {{5, -3}, {0, -1}, {8, -8}}));
    row("first integer as length", marked(8, 8, {{5, intMin}, {intMin, intMin}}));
    row("negative length, united with others", marked(8, 8, {{5, -3}, {4, 2}, {0, 5}}));
    row("negative size", marked(8, -1, {{0, 1}, {-8, 4}}));
    row("smallest size", marked(8, intMin, {{intMin, 0}, {intMin, -1}}));
    row("dirty and filled differ", [](TestTrace &trace) {
        trace.data.dirtyRange().setSize(3);
        trace.data.dirtyRange().push({0, 3});
        trace.data.filledRange().setSize(20);
        trace.data.filledRange().push({15, 5});
        trace.data.array() = zigzag(5);
    });
    row("thousands of ranges", both(8, [](BoundRange &set) {
        set.setSize(100000);
        for (int i = 0; i < 5000; ++i)
            set.push({(i * 7919) % 99990 - 20, 3});
    }));
    row("another size in each frame", [](TestTrace &trace) {
        trace.onUpdate = [&trace, count = 0]() mutable {
            count = (count + 5) % 13;
            trace.data.array() = zigzag(count); // smaller than the ranges, then larger
            trace.data.dirtyRange().push({0, 8});
        };
    });
}

void tst_HostileData::ranges()
{
    QFETCH(Write, write);

    QCOMPARE(check(), QString());
    for (int turn = 0; turn < rounds(2, 1); ++turn) {
        write(*m_sick);
        QVERIFY(m_sick->data.array().size() <= 100);
        checkModes(turn * 3);
        if (QTest::currentTestFailed())
            return;
        // Everything that was marked has been taken.
        QVERIFY(m_sick->onUpdate || m_sick->data.dirtyRange().isEmpty());
    }
    m_sick->onUpdate = {};
}

void tst_HostileData::attributes()
{
    const QColor colors[] = {QColor(), QColor::fromRgbF(2.0F, -1.0F, 100.0F),
            QColor::fromHsvF(-1.0F, 0.0F, 0.0F), QColor(0, 0, 255, 0)};
    for (const QColor &color : colors) {
        m_sick->data.setColor(color);
        m_sick->data.setVisible(false);
        QCOMPARE(check(), QString());
        m_sick->data.setVisible(true);
        QVERIFY2(m_window->answerEvents(), m_window->error());
        QCOMPARE(GlProbe::takeErrors(), QStringList());
    }
    m_sick->data.setColor(Qt::blue);
    for (const double z : {double(notANumber), double(-infinity), -1e308}) {
        m_sick->setZ(z);
        if (!std::isnan(z)) // a NaN stands above all others
            QCOMPARE(check(), QString());
    }
    m_sick->setZ(0.0);
}

QTEST_MAIN(tst_HostileData)

#include "tst_hostiledata.moc"
