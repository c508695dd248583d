// SPDX-License-Identifier: MIT
#include <ChartsLibrary/TraceData.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <type_traits>

using namespace Charts;

namespace {

using Float = std::numeric_limits<float>;
constexpr float inf = Float::infinity();
constexpr float NaN = Float::quiet_NaN();

// The vertex as the GPU reads it.
static_assert(sizeof(TracePoint) == 12 && alignof(TracePoint) == 4);
static_assert(std::is_trivially_copyable_v<TracePoint> && std::is_standard_layout_v<TracePoint>);
static_assert(offsetof(TracePoint, x) == 0);
static_assert(offsetof(TracePoint, y) == 4);
static_assert(offsetof(TracePoint, opacity) == 8);
static_assert(std::is_same_v<decltype(TracePoint::opacity), float>);

static_assert(sizeof(ViewPort) == 16);
static_assert(offsetof(ViewPort, x) == 0 && offsetof(ViewPort, y) == 4);
static_assert(offsetof(ViewPort, width) == 8 && offsetof(ViewPort, height) == 12);
static_assert(std::is_same_v<decltype(ViewPort::height), float>);

static_assert(sizeof(DrawType) == 4 && sizeof(BoundingMethod) == 4);
static_assert(static_cast<int>(DrawType::Points) == 0);
static_assert(static_cast<int>(DrawType::LineStrip) == 1);
static_assert(static_cast<int>(BoundingMethod::Clamp) == 0);
static_assert(static_cast<int>(BoundingMethod::ExtraMatrices) == 1);
static_assert(static_cast<int>(BoundingMethod::Unbounded) > 1);

static_assert(!std::is_base_of_v<QObject, TraceData>);
static_assert(
        std::is_same_v<decltype(std::declval<TraceData &>().array()), std::vector<TracePoint> &>);
static_assert(std::is_same_v<decltype(std::declval<const TraceData &>().array()),
        const std::vector<TracePoint> &>);

using Change = std::function<void(TraceData &)>;
using Check = std::function<bool(const TraceData &)>;

bool isSame(float a, float b)
{
    if (std::isnan(a) || std::isnan(b))
        return std::isnan(a) && std::isnan(b);
    return a == b && std::signbit(a) == std::signbit(b);
}

bool isSame(const ViewPort &a, const ViewPort &b)
{
    return isSame(a.x, b.x) && isSame(a.y, b.y) && isSame(a.width, b.width)
           && isSame(a.height, b.height);
}

} // namespace

class tst_TraceData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void defaults();
    void arrayInPlace();
    void rangesInPlace();
    void attribute_data();
    void attribute();
    void color_data();
    void color();
    void width_data();
    void width();
    void widthDoesNotDrift();
    void viewPort_data();
    void viewPort();
    void drawType_data();
    void drawType();
    void dataDoesNotMakeDirty();
};

void tst_TraceData::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TraceData::defaults()
{
    const TraceData data;
    QVERIFY(data.array().empty());
    QVERIFY(data.dirtyRange().isEmpty());
    QCOMPARE(data.dirtyRange().size(), 0);
    QVERIFY(data.filledRange().isEmpty());
    QCOMPARE(data.filledRange().size(), 0);
    QCOMPARE(data.drawType(), DrawType::Points);
    QVERIFY(!data.color().isValid());
    QVERIFY(data.width() == 1.5F);
    QVERIFY(data.visible());
    QVERIFY(!data.squaredViewPort());
    QVERIFY(isSame(data.viewPort(), ViewPort{0.0F, 0.0F, 1.0F, 1.0F}));
    QCOMPARE(data.boundingX(), BoundingMethod::Unbounded);
    QCOMPARE(data.boundingY(), BoundingMethod::Unbounded);
    QVERIFY(!data.isDirty());
}

void tst_TraceData::arrayInPlace()
{
    TraceData data;
    data.array().resize(3);
    data.array()[1] = {2.0F, 3.0F, 0.5F};
    const TraceData &reader = data;
    QCOMPARE(&reader.array(), &data.array());
    QCOMPARE(reader.array().size(), 3U);

    // Three points as nine floats, one behind the other.
    float raw[9] = {};
    static_assert(sizeof raw == 3 * sizeof(TracePoint));
    std::memcpy(raw, reader.array().data(), sizeof raw);
    QVERIFY(raw[3] == 2.0F && raw[4] == 3.0F && raw[5] == 0.5F);
}

void tst_TraceData::rangesInPlace()
{
    TraceData data;
    data.dirtyRange().setSize(10);
    data.filledRange().setSize(20);
    data.dirtyRange().push({1, 2});
    data.filledRange().push({3, 4});
    const TraceData &reader = data;
    QCOMPARE(reader.dirtyRange().size(), 10);
    QCOMPARE(reader.filledRange().size(), 20);
    QVERIFY(reader.dirtyRange().contain(2) && !reader.dirtyRange().contain(3));
    QVERIFY(reader.filledRange().contain(3) && !reader.filledRange().contain(2));
    QCOMPARE(data.dirtyRange().pop(false), (Range<int>{1, 2}));
    QVERIFY(reader.dirtyRange().isEmpty());
    QVERIFY(!reader.filledRange().isEmpty());
}

void tst_TraceData::attribute_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<Check>("isChanged");

    const auto row = [](const char *name, const Change &change, const Check &isChanged) {
        QTest::newRow(name) << change << isChanged;
    };
    row(
            "color", [](TraceData &d) { d.setColor(Qt::red); },
            [](const TraceData &d) { return d.color() == QColor(Qt::red); });
    row(
            "width", [](TraceData &d) { d.setWidth(4.0F); },
            [](const TraceData &d) { return d.width() == 4.0F; });
    row(
            "visible", [](TraceData &d) { d.setVisible(false); },
            [](const TraceData &d) { return !d.visible(); });
    row(
            "squaredViewPort", [](TraceData &d) { d.setSquaredViewPort(true); },
            [](const TraceData &d) { return d.squaredViewPort(); });
    row(
            "viewPort",
            [](TraceData &d) {
                d.setViewPort({1.0F, 2.0F, 3.0F, 4.0F});
            },
            [](const TraceData &d) {
                return isSame(d.viewPort(), {1.0F, 2.0F, 3.0F, 4.0F});
            });
    row(
            "boundingX", [](TraceData &d) { d.setBoundingX(BoundingMethod::Clamp); },
            [](const TraceData &d) {
                return d.boundingX() == BoundingMethod::Clamp
                       && d.boundingY() == BoundingMethod::Unbounded;
            });
    row(
            "boundingY", [](TraceData &d) { d.setBoundingY(BoundingMethod::ExtraMatrices); },
            [](const TraceData &d) {
                return d.boundingY() == BoundingMethod::ExtraMatrices
                       && d.boundingX() == BoundingMethod::Unbounded;
            });
    row(
            "boundingX, no method", [](TraceData &d) { d.setBoundingX(BoundingMethod(-7)); },
            [](const TraceData &d) { return d.boundingX() == BoundingMethod(-7); });
}

void tst_TraceData::attribute()
{
    QFETCH(Change, change);
    QFETCH(Check, isChanged);

    TraceData data;
    QVERIFY(!isChanged(data));
    change(data);
    QVERIFY(isChanged(data));
    QVERIFY(data.isDirty());
    // The same value does not take the mark away, and does not set it again.
    change(data);
    QVERIFY(data.isDirty());
    data.clearDirty();
    QVERIFY(!data.isDirty());
    QVERIFY(isChanged(data));
    change(data);
    QVERIFY(!data.isDirty());
    data.clearDirty();
    QVERIFY(!data.isDirty());
}

void tst_TraceData::color_data()
{
    QTest::addColumn<QColor>("before");
    QTest::addColumn<QColor>("after");
    QTest::addColumn<bool>("isChange");

    const QColor red(255, 0, 0);
    QTest::newRow("another") << red << QColor(0, 0, 255) << true;
    QTest::newRow("the same") << red << QColor(Qt::red) << false;
    QTest::newRow("another alpha") << red << QColor(255, 0, 0, 128) << true;
    QTest::newRow("another component by one") << red << QColor(255, 1, 0) << true;
    QTest::newRow("to invalid") << red << QColor() << true;
    QTest::newRow("invalid again") << QColor() << QColor() << false;
    QTest::newRow("black for invalid") << QColor() << QColor(0, 0, 0) << true;
    // Colours of different models are never equal.
    QTest::newRow("the same colour in HSV") << red << red.toHsv() << true;
}

void tst_TraceData::color()
{
    QFETCH(QColor, before);
    QFETCH(QColor, after);
    QFETCH(bool, isChange);

    TraceData data;
    data.setColor(before);
    data.clearDirty();
    data.setColor(after);
    QCOMPARE(data.isDirty(), isChange);
    QCOMPARE(data.color(), isChange ? after : before);
}

void tst_TraceData::width_data()
{
    QTest::addColumn<float>("before");
    QTest::addColumn<float>("after");
    QTest::addColumn<bool>("isChange");

    const auto row = [](const char *name, float before, float after, bool isChange) {
        QTest::newRow(name) << before << after << isChange;
    };
    row("another", 1.0F, 2.0F, true);
    row("the same", 1.0F, 1.0F, false);
    row("a millionth more", 1.0F, 1.000001F, false);
    // The floats next to 1 at which the decision falls, in steps of 2 to the -23rd.
    row("83 steps up", 1.0F, 0x1.0000A6p0F, false);
    row("84 steps up", 1.0F, 0x1.0000A8p0F, true);
    row("84 steps down", 0x1.0000A8p0F, 1.0F, true);
    row("83 steps down", 0x1.0000A6p0F, 1.0F, false);
    row("exactly one part in 100000", 100000.0F, 100001.0F, false);
    row("one part in 100000 and a step", 100000.0F, 100001.0078125F, true);
    row("negative, a millionth", -1.0F, -1.000001F, false);
    row("negative, more", -1.0F, -1.1F, true);
    row("the other sign", 1.0F, -1.0F, true);
    row("zero again", 0.0F, 0.0F, false);
    row("from zero", 0.0F, 1.0F, true);
    row("to zero", 1.0F, 0.0F, true);
    row("from zero by the smallest step", 0.0F, Float::denorm_min(), true);
    row("to zero by the smallest step", Float::denorm_min(), 0.0F, true);
    row("denormal again", Float::denorm_min(), Float::denorm_min(), false);
    row("denormal neighbours", Float::denorm_min(), 2.0F * Float::denorm_min(), true);
    row("largest again", Float::max(), Float::max(), false);
    row("largest, and the scaled distance overflows", Float::max(), 1e38F, true);
    row("largest, a step down", Float::max(), std::nextafter(Float::max(), 0.0F), false);
    row("to infinity", 1.0F, inf, true);
    row("from infinity", inf, 1.0F, true);
    // The distance is no number, or no more infinite than the two are.
    row("infinity again", inf, inf, false);
    row("the opposite infinity", inf, -inf, false);
    row("NaN exceeds nothing", 1.0F, NaN, false);
    row("NaN after infinity", inf, NaN, false);
    row("NaN after zero", 0.0F, NaN, false);
}

void tst_TraceData::width()
{
    QFETCH(float, before);
    QFETCH(float, after);
    QFETCH(bool, isChange);

    TraceData data;
    // From a width that neither is near to.
    data.setWidth(77.0F);
    data.setWidth(before);
    QVERIFY(data.width() == before);
    data.clearDirty();
    data.setWidth(after);
    QCOMPARE(data.isDirty(), isChange);
    const QByteArray stored = QByteArray::number(double(data.width()), 'g', 9);
    QVERIFY2(isSame(data.width(), isChange ? after : before), stored.constData());
}

void tst_TraceData::widthDoesNotDrift()
{
    // Steps that are ignored one by one count from the stored width.
    TraceData data;
    data.setWidth(1.0F);
    data.clearDirty();
    float width = 1.0F;
    int steps = 0;
    while (!data.isDirty() && steps < 100) {
        width += 0x1p-20F;
        data.setWidth(width);
        ++steps;
    }
    // 1e-5 is 10.5 steps.
    QCOMPARE(steps, 11);
    QVERIFY(data.width() == width);
}

void tst_TraceData::viewPort_data()
{
    QTest::addColumn<ViewPort>("before");
    QTest::addColumn<ViewPort>("after");
    QTest::addColumn<bool>("isChange");

    const auto row = [](const char *name, const ViewPort &before, const ViewPort &after,
                             bool isChange) { QTest::newRow(name) << before << after << isChange; };
    const ViewPort plain{1.0F, 2.0F, 3.0F, 4.0F};
    const float next = std::nextafter(1.0F, 2.0F);
    row("the same", plain, plain, false);
    row("x by one step", plain, {next, 2.0F, 3.0F, 4.0F}, true);
    row("y by one step", plain, {1.0F, std::nextafter(2.0F, 3.0F), 3.0F, 4.0F}, true);
    row("width by one step", plain, {1.0F, 2.0F, std::nextafter(3.0F, 4.0F), 4.0F}, true);
    row("height by one step", plain, {1.0F, 2.0F, 3.0F, std::nextafter(4.0F, 5.0F)}, true);
    row("all", plain, {-1.0F, -2.0F, -3.0F, -4.0F}, true);
    row("the smallest step from zero", {}, {Float::denorm_min(), 0.0F, 1.0F, 1.0F}, true);
    row("minus zero is zero", {0.0F, 0.0F, 1.0F, 1.0F}, {-0.0F, -0.0F, 1.0F, 1.0F}, false);
    row("minus zero beside a change", {0.0F, 0.0F, 1.0F, 1.0F}, {-0.0F, 0.0F, 2.0F, 1.0F}, true);
    row("infinity again", {0.0F, 0.0F, inf, inf}, {0.0F, 0.0F, inf, inf}, false);
    row("NaN", plain, {NaN, 2.0F, 3.0F, 4.0F}, true);
    row("NaN again", {1.0F, 2.0F, 3.0F, NaN}, {1.0F, 2.0F, 3.0F, NaN}, true);
}

void tst_TraceData::viewPort()
{
    QFETCH(ViewPort, before);
    QFETCH(ViewPort, after);
    QFETCH(bool, isChange);

    TraceData data;
    data.setViewPort({9.0F, 9.0F, 9.0F, 9.0F});
    data.setViewPort(before);
    data.clearDirty();
    data.setViewPort(after);
    QCOMPARE(data.isDirty(), isChange);
    QVERIFY(isSame(data.viewPort(), isChange ? after : before));
}

void tst_TraceData::drawType_data()
{
    QTest::addColumn<DrawType>("drawType");

    QTest::newRow("points") << DrawType::Points;
    QTest::newRow("line strip") << DrawType::LineStrip;
    QTest::newRow("no draw type") << DrawType(2);
    QTest::newRow("negative") << DrawType(-1);
    QTest::newRow("largest") << DrawType(std::numeric_limits<int>::max());
}

void tst_TraceData::drawType()
{
    QFETCH(DrawType, drawType);

    TraceData data;
    data.setDrawType(DrawType::LineStrip);
    data.setDrawType(drawType);
    QCOMPARE(data.drawType(), drawType);
    QVERIFY(!data.isDirty());

    data.setVisible(false);
    data.setDrawType(DrawType::Points);
    data.setDrawType(drawType);
    QVERIFY(data.isDirty());
}

void tst_TraceData::dataDoesNotMakeDirty()
{
    TraceData data;
    data.array().resize(10);
    data.dirtyRange().setSize(10);
    data.filledRange().setSize(10);
    data.dirtyRange().push({0, 10});
    data.filledRange().push({0, 10});
    QVERIFY(!data.isDirty());

    data.setVisible(false);
    data.clearDirty();
    QVERIFY(!data.dirtyRange().isEmpty());
    QVERIFY(!data.filledRange().isEmpty());
    QCOMPARE(data.array().size(), 10U);
    QVERIFY(!data.visible());
}

QTEST_APPLESS_MAIN(tst_TraceData)
#include "tst_tracedata.moc"
