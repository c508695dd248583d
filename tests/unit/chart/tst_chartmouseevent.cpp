// SPDX-License-Identifier: MIT
#include <ChartsLibrary/ChartMouseEvent.h>

#include <QtCore/QMetaProperty>
#include <QtCore/QRegularExpression>
#include <QtGui/QMouseEvent>
#include <QtTest/QTest>

#include <cmath>
#include <limits>
#include <type_traits>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

/*! A mouse event that can say that it is the second press of a double click. */
class Input : public QMouseEvent
{
public:
    explicit Input(const QPointF &position, Qt::MouseButton button = Qt::NoButton,
            Qt::MouseButtons buttons = Qt::NoButton,
            Qt::KeyboardModifiers modifiers = Qt::NoModifier)
        // The scene's and the screen's position are other ones: they must not be taken.
        : QMouseEvent(QEvent::MouseButtonPress, position, position + QPointF(1000.0, 2000.0),
                position + QPointF(3000.0, 4000.0), button, buttons, modifiers)
    {
    }

    void setCreatedDoubleClick() { m_doubleClick = true; }
};

} // namespace

class tst_ChartMouseEvent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void rounding_data();
    void rounding();
    void beyondIntegers_data();
    void beyondIntegers();
    void buttonsAndModifiers();
    void flags();
    void parent();
    void accepted();
    void reset();

    void properties_data();
    void properties();
    void nothingElsePublished();
    void notDefaultConstructible();
};

void tst_ChartMouseEvent::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_ChartMouseEvent::rounding_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<double>("rounded");

    QTest::newRow("zero") << 0.0 << 0.0;
    QTest::newRow("whole") << 17.0 << 17.0;
    QTest::newRow("below a half") << 1.499 << 1.0;
    QTest::newRow("half") << 0.5 << 1.0;
    QTest::newRow("half after an even number") << 2.5 << 3.0;
    QTest::newRow("half after an odd number") << 3.5 << 4.0;
    QTest::newRow("above a half") << 99.51 << 100.0;
    QTest::newRow("negative below a half") << -1.25 << -1.0;
    QTest::newRow("negative half") << -0.5 << -1.0;
    QTest::newRow("negative half after an even number") << -2.5 << -3.0;
    // The largest double below a half: adding 0.5 to it gives 1.
    QTest::newRow("just below a half") << std::nextafter(0.5, 0.0) << 0.0;
    QTest::newRow("large") << 2000000000.5 << 2000000001.0;
    QTest::newRow("large and negative") << -2000000000.5 << -2000000001.0;
}

void tst_ChartMouseEvent::rounding()
{
    QFETCH(double, position);
    QFETCH(double, rounded);

    Input atX(QPointF(position, 3.0));
    const ChartMouseEvent x(&atX, nullptr);
    QVERIFY2(x.x() == rounded, QByteArray::number(x.x(), 'g', 17).constData());
    QCOMPARE(x.y(), 3.0);

    Input atY(QPointF(4.0, position));
    const ChartMouseEvent y(&atY, nullptr);
    QCOMPARE(y.x(), 4.0);
    QVERIFY2(y.y() == rounded, QByteArray::number(y.y(), 'g', 17).constData());
}

void tst_ChartMouseEvent::beyondIntegers_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<int>("sign");
    QTest::newRow("huge") << 1e18 << 1;
    QTest::newRow("huge and negative") << -1e18 << -1;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 1;
    QTest::newRow("negative infinity") << -std::numeric_limits<double>::infinity() << -1;
    QTest::newRow("NaN") << std::numeric_limits<double>::quiet_NaN() << 0;
}

// No integer is near these. Whatever comes out is a number on the same side.
void tst_ChartMouseEvent::beyondIntegers()
{
    QFETCH(double, position);
    QFETCH(int, sign);

    Input input(QPointF(position, position));
    const ChartMouseEvent event(&input, nullptr);
    for (const double coordinate : {event.x(), event.y()}) {
        QVERIFY(std::isfinite(coordinate));
        QCOMPARE(coordinate, std::trunc(coordinate));
        if (sign != 0)
            QVERIFY(coordinate * sign > 2e9);
    }
}

void tst_ChartMouseEvent::buttonsAndModifiers()
{
    Input input(QPointF(1.0, 2.0), Qt::RightButton, Qt::LeftButton | Qt::RightButton,
            Qt::ShiftModifier | Qt::KeypadModifier);
    const ChartMouseEvent event(&input, nullptr);
    QCOMPARE(event.button(), 0x2);
    QCOMPARE(event.buttons(), 0x1 | 0x2);
    QCOMPARE(event.modifiers(), 0x02000000 | 0x20000000);
    QCOMPARE(event.source(), 0);
    QCOMPARE(event.flags(), 0);
    QVERIFY(event.isAccepted());

    Input last(QPointF(1.0, 2.0), Qt::MaxMouseButton, Qt::AllButtons);
    const ChartMouseEvent lastEvent(&last, nullptr);
    QCOMPARE(lastEvent.button(), 0x04000000);
    QCOMPARE(lastEvent.buttons(), 0x07ffffff);
    QCOMPARE(lastEvent.modifiers(), 0);
}

void tst_ChartMouseEvent::flags()
{
    Input input(QPointF(1.0, 2.0), Qt::LeftButton, Qt::LeftButton);
    input.setCreatedDoubleClick();
    const ChartMouseEvent event(&input, nullptr);
    QCOMPARE(event.flags(), 1);
}

void tst_ChartMouseEvent::parent()
{
    QObject parent;
    Input input(QPointF(1.0, 2.0));
    const auto *event = new ChartMouseEvent(&input, &parent);
    QCOMPARE(event->parent(), &parent);
}

void tst_ChartMouseEvent::accepted()
{
    Input input(QPointF(1.0, 2.0));
    input.setAccepted(false); // a matter of its own
    ChartMouseEvent event(&input, nullptr);
    QVERIFY(event.isAccepted());
    event.setAccepted(false);
    QVERIFY(!event.isAccepted());
    QVERIFY(event.setProperty("accepted", true));
    QVERIFY(event.isAccepted());
    QVERIFY(!input.isAccepted());
}

void tst_ChartMouseEvent::reset()
{
    Input input(QPointF(1.0, 2.0), Qt::LeftButton, Qt::LeftButton, Qt::ControlModifier);
    ChartMouseEvent event(&input, nullptr);
    event.setAccepted(false);
    event.reset(3.25, -4.75, Qt::MiddleButton, Qt::MiddleButton | Qt::BackButton, Qt::AltModifier,
            Qt::MouseEventCreatedDoubleClick);
    // Positions are stored as they are given; only those of an event are rounded.
    QCOMPARE(event.x(), 3.25);
    QCOMPARE(event.y(), -4.75);
    QCOMPARE(event.button(), 0x4);
    QCOMPARE(event.buttons(), 0x4 | 0x8);
    QCOMPARE(event.modifiers(), 0x08000000);
    QCOMPARE(event.source(), 0);
    QCOMPARE(event.flags(), 1);
    QVERIFY(event.isAccepted());

    event.reset(0.0, 0.0, Qt::NoButton, Qt::NoButton, Qt::NoModifier, {});
    for (const char *name : {"x", "y", "button", "buttons", "modifiers", "flags"})
        QCOMPARE(event.property(name).toDouble(), 0.0);
    QVERIFY(event.isAccepted());
}

void tst_ChartMouseEvent::properties_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QMetaType>("type");
    QTest::addColumn<bool>("constant");

    const QMetaType real = QMetaType::fromType<double>();
    const QMetaType integer = QMetaType::fromType<int>();
    QTest::newRow("x") << 0 << real << true;
    QTest::newRow("y") << 1 << real << true;
    QTest::newRow("button") << 2 << integer << true;
    QTest::newRow("buttons") << 3 << integer << true;
    QTest::newRow("modifiers") << 4 << integer << true;
    QTest::newRow("accepted") << 5 << QMetaType::fromType<bool>() << false;
    QTest::newRow("flags") << 6 << integer << true;
}

void tst_ChartMouseEvent::properties()
{
    QFETCH(int, index);
    QFETCH(QMetaType, type);
    QFETCH(bool, constant);

    const QMetaObject &meta = ChartMouseEvent::staticMetaObject;
    const QMetaProperty property = meta.property(meta.propertyOffset() + index);
    QCOMPARE(property.name(), QTest::currentDataTag());
    QCOMPARE(property.metaType(), type);
    QCOMPARE(property.isConstant(), constant);
    QCOMPARE(property.isWritable(), !constant);
    QVERIFY(!property.hasNotifySignal());
}

void tst_ChartMouseEvent::nothingElsePublished()
{
    const QMetaObject &meta = ChartMouseEvent::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::ChartMouseEvent");
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 7);
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 0);
}

void tst_ChartMouseEvent::notDefaultConstructible()
{
    QVERIFY(!std::is_default_constructible_v<ChartMouseEvent>);
}

QTEST_MAIN(tst_ChartMouseEvent)

#include "tst_chartmouseevent.moc"
