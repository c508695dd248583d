// SPDX-License-Identifier: MIT
#include "CountedItem.h"
#include "MetaObjectText.h"

#include <ChartsLibrary/AbstractGrid.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <limits>
#include <utility>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

/*! Tells whether its lines have to be rebuilt. */
class TestGrid : public CountedItem<AbstractGrid>
{
public:
    using AbstractGrid::takeDirty;
};

/*! Every signal of a grid, with its argument, in order. */
class SignalLog : public QObject
{
public:
    explicit SignalLog(const AbstractGrid &grid)
    {
        connect(&grid, &AbstractGrid::lineWidthChanged, this,
                [this](double width) { m_entries += u"lineWidthChanged(%1)"_s.arg(width); });
        connect(&grid, &AbstractGrid::blodLineWidthChanged, this,
                [this](double width) { m_entries += u"blodLineWidthChanged(%1)"_s.arg(width); });
        connect(&grid, &AbstractGrid::innerGridLinesColorChanged, this,
                [this](const QColor &color) {
                    m_entries +=
                            u"innerGridLinesColorChanged(%1)"_s.arg(color.name(QColor::HexArgb));
                });
        connect(&grid, &AbstractGrid::outerGridLinesColorChanged, this,
                [this](const QColor &color) {
                    m_entries +=
                            u"outerGridLinesColorChanged(%1)"_s.arg(color.name(QColor::HexArgb));
                });
    }

    QStringList take() { return std::exchange(m_entries, {}); }

private:
    QStringList m_entries;
};

} // namespace

class tst_AbstractGrid : public QObject
{
    Q_OBJECT

public:
    static void initMain() { FrameWindow::setUp(); }

private Q_SLOTS:
    void init();

    void initialState();
    void parentItem();
    void metaObject();
    void propertiesByName();

    void colors_data();
    void colors();
    void colorsAreStoredFirst();
    void lineWidths_data();
    void lineWidths();
    void lineWidthIsStoredFirst();
    void everySignal();

    void dirtyAtFirst();
    void dirtyAfter_data();
    void dirtyAfter();
    void repaints_data();
    void repaints();
    void geometryReachesTheBase();
};

void tst_AbstractGrid::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_AbstractGrid::initialState()
{
    const AbstractGrid grid;
    QCOMPARE(grid.innerGridLinesColor(), QColor(Qt::darkGray));
    QCOMPARE(grid.outerGridLinesColor(), QColor(Qt::gray));
    QCOMPARE(grid.lineWidth(), 1.0);
    QVERIFY(grid.antialiasing());
    QVERIFY(grid.flags() & QQuickItem::ItemHasContents);
    QVERIFY(!grid.parentItem());

    // Nothing else differs from a plain item.
    QQuickItem plain;
    plain.setFlag(QQuickItem::ItemHasContents);
    QCOMPARE(grid.flags(), plain.flags());
    QCOMPARE(grid.acceptedMouseButtons(), plain.acceptedMouseButtons());
    QCOMPARE(grid.acceptHoverEvents(), plain.acceptHoverEvents());
    QVERIFY(grid.children().isEmpty());
}

void tst_AbstractGrid::parentItem()
{
    QQuickItem parent;
    const auto *grid = new AbstractGrid(&parent);
    QCOMPARE(grid->parentItem(), &parent);
    QCOMPARE(grid->parent(), &parent);
}

void tst_AbstractGrid::metaObject()
{
    const QMetaObject &meta = AbstractGrid::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::AbstractGrid");
    QCOMPARE(meta.superClass(), &ChartItem::staticMetaObject);
    QCOMPARE(propertyTexts(meta),
            QStringList({
                    u"QColor innerGridLinesColor read write innerGridLinesColorChanged"_s,
                    u"QColor outerGridLinesColor read write outerGridLinesColorChanged"_s,
                    u"double lineWidth read write lineWidthChanged"_s,
            }));
    QCOMPARE(methodTexts(meta, true),
            QStringList({
                    u"void lineWidthChanged(double lineWidth)"_s,
                    u"void innerGridLinesColorChanged(QColor innerGridLinesColor)"_s,
                    u"void blodLineWidthChanged(double blodLineWidth)"_s,
                    u"void outerGridLinesColorChanged(QColor outerGridLinesColor)"_s,
            }));
    QCOMPARE(methodTexts(meta, false), QStringList());
}

void tst_AbstractGrid::propertiesByName()
{
    AbstractGrid grid;
    SignalLog log(grid);
    QVERIFY(grid.setProperty("innerGridLinesColor", u"red"_s));
    QVERIFY(grid.setProperty("outerGridLinesColor", QColor(0, 0, 255, 128)));
    QVERIFY(grid.setProperty("lineWidth", 2.5));
    QCOMPARE(log.take(),
            QStringList({u"innerGridLinesColorChanged(#ffff0000)"_s,
                    u"outerGridLinesColorChanged(#800000ff)"_s, u"lineWidthChanged(2.5)"_s}));
    QCOMPARE(grid.property("innerGridLinesColor"), QVariant(QColor(Qt::red)));
    QCOMPARE(grid.property("outerGridLinesColor"), QVariant(QColor(0, 0, 255, 128)));
    QCOMPARE(grid.property("lineWidth"), QVariant(2.5));

    QVERIFY(grid.setProperty("innerGridLinesColor", QColor(Qt::red)));
    QVERIFY(grid.setProperty("outerGridLinesColor", QColor(0, 0, 255, 128)));
    QVERIFY(grid.setProperty("lineWidth", 2.5));
    QCOMPARE(log.take(), QStringList());
}

void tst_AbstractGrid::colors_data()
{
    QTest::addColumn<QColor>("from");
    QTest::addColumn<QColor>("to");
    QTest::addColumn<bool>("isChange");

    QTest::newRow("another") << QColor(Qt::red) << QColor(Qt::blue) << true;
    QTest::newRow("the same") << QColor(Qt::red) << QColor(255, 0, 0) << false;
    QTest::newRow("one step") << QColor(10, 20, 30) << QColor(10, 20, 31) << true;
    QTest::newRow("alpha") << QColor(10, 20, 30) << QColor(10, 20, 30, 254) << true;
    QTest::newRow("transparent") << QColor(Qt::red) << QColor(Qt::transparent) << true;
    QTest::newRow("invalid") << QColor(Qt::red) << QColor() << true;
    QTest::newRow("invalid again") << QColor() << QColor() << false;
    // Shown alike, but QColor tells them apart.
    QTest::newRow("black instead of invalid") << QColor() << QColor(Qt::black) << true;
    QTest::newRow("model") << QColor::fromRgb(255, 0, 0) << QColor::fromHsv(0, 255, 255) << true;
}

void tst_AbstractGrid::colors()
{
    QFETCH(QColor, from);
    QFETCH(QColor, to);
    QFETCH(bool, isChange);

    AbstractGrid grid;
    grid.setInnerGridLinesColor(from);
    grid.setOuterGridLinesColor(from);
    QSignalSpy inner(&grid, &AbstractGrid::innerGridLinesColorChanged);
    QSignalSpy outer(&grid, &AbstractGrid::outerGridLinesColorChanged);

    grid.setInnerGridLinesColor(to);
    QCOMPARE(grid.innerGridLinesColor(), to);
    QCOMPARE(grid.outerGridLinesColor(), from);
    QCOMPARE(inner.size(), isChange ? 1 : 0);
    QCOMPARE(outer.size(), 0);
    if (isChange)
        QCOMPARE(inner.at(0).at(0).value<QColor>(), to);

    grid.setOuterGridLinesColor(to);
    QCOMPARE(grid.innerGridLinesColor(), to);
    QCOMPARE(grid.outerGridLinesColor(), to);
    QCOMPARE(inner.size(), isChange ? 1 : 0);
    QCOMPARE(outer.size(), isChange ? 1 : 0);
    if (isChange)
        QCOMPARE(outer.at(0).at(0).value<QColor>(), to);
}

void tst_AbstractGrid::colorsAreStoredFirst()
{
    TestGrid grid;
    QList<QColor> seen;
    bool isDirty = false;
    QVERIFY(grid.takeDirty());
    connect(&grid, &AbstractGrid::innerGridLinesColorChanged, this, [&] {
        seen += grid.innerGridLinesColor();
        isDirty = grid.takeDirty();
    });
    connect(&grid, &AbstractGrid::outerGridLinesColorChanged, this,
            [&] { seen += grid.outerGridLinesColor(); });
    grid.setInnerGridLinesColor(Qt::red);
    grid.setOuterGridLinesColor(Qt::blue);
    QCOMPARE(seen, QList<QColor>({Qt::red, Qt::blue}));
    QVERIFY(isDirty);
}

void tst_AbstractGrid::lineWidths_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<bool>("isChange");

    const auto row = [](const char *name, double from, double to, bool isChange) {
        QTest::newRow(name) << from << to << isChange;
    };
    row("wider", 1.0, 2.0, true);
    row("the same", 2.0, 2.0, false);
    row("negative", 1.0, -1.0, true);
    row("relatively small", 1.0, 1.0000000000001, false);
    row("relatively small, smaller", 1.0, 0.9999999999999, false);
    row("relatively larger", 1.0, 1.00000000001, true);
    row("relatively larger, large", 1e9, 1e9 + 0.01, true);
    row("relatively small, large", 1e9, 1e9 + 0.0001, false);
    row("relatively larger, small", 1e-9, 1.00000000001e-9, true);
    row("relatively small, small", 1e-9, 1.0000000000001e-9, false);
    row("absolutely small", 1e-15, 2e-15, true);
    // There is no tolerance around 0.
    row("to 0", 1.0, 0.0, true);
    row("0 to almost 0", 0.0, 1e-20, true);
    row("almost 0 to 0", 1e-20, 0.0, true);
    row("0 to the smallest", 0.0, std::numeric_limits<double>::denorm_min(), true);
    row("0 to 0", 0.0, 0.0, false);
    row("0 to -0", 0.0, -0.0, false);
    row("to infinity", 1.0, inf, true);
    row("from infinity", inf, 1.0, true);
    row("infinity again", inf, inf, false);
    row("NaN", 1.0, NaN, false);
    row("0 to NaN", 0.0, NaN, false);
    row("infinity to NaN", inf, NaN, false);
}

void tst_AbstractGrid::lineWidths()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(bool, isChange);

    TestGrid grid;
    grid.setLineWidth(from);
    QVERIFY(grid.lineWidth() == from);
    QVERIFY(grid.takeDirty());
    QSignalSpy changes(&grid, &AbstractGrid::lineWidthChanged);
    grid.setLineWidth(to);
    QCOMPARE(changes.size(), isChange ? 1 : 0);
    QVERIFY(grid.lineWidth() == (isChange ? to : from));
    QCOMPARE(grid.takeDirty(), isChange);
    if (isChange)
        QVERIFY(changes.at(0).at(0).toDouble() == to);
    grid.setLineWidth(to);
    QCOMPARE(changes.size(), isChange ? 1 : 0);
}

void tst_AbstractGrid::lineWidthIsStoredFirst()
{
    TestGrid grid;
    QVERIFY(grid.takeDirty());
    double seen = 0.0;
    bool isDirty = false;
    connect(&grid, &AbstractGrid::lineWidthChanged, this, [&] {
        seen = grid.lineWidth();
        isDirty = grid.takeDirty();
    });
    grid.setLineWidth(3.0);
    QCOMPARE(seen, 3.0);
    QVERIFY(isDirty);
}

// One signal belongs to nothing.
void tst_AbstractGrid::everySignal()
{
    AbstractGrid grid;
    SignalLog log(grid);
    grid.setSize(QSizeF(100.0, 50.0));
    grid.setAntialiasing(false);
    grid.setLineWidth(3.0);
    grid.setInnerGridLinesColor(Qt::green);
    grid.setOuterGridLinesColor(Qt::yellow);
    QCOMPARE(log.take(),
            QStringList({u"lineWidthChanged(3)"_s, u"innerGridLinesColorChanged(#ff00ff00)"_s,
                    u"outerGridLinesColorChanged(#ffffff00)"_s}));
}

void tst_AbstractGrid::dirtyAtFirst()
{
    TestGrid grid;
    QVERIFY(grid.takeDirty());
    QVERIFY(!grid.takeDirty());
}

using Action = void (*)(AbstractGrid &);

void tst_AbstractGrid::dirtyAfter_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("isDirty");
    QTest::addColumn<bool>("isRepainted");

    // What makes the lines anew asks for the frame that shows them.
    const auto row = [](const char *name, bool isDirty, Action action) {
        QTest::newRow(name) << action << isDirty << isDirty;
    };
    row("inner colour", true, [](AbstractGrid &grid) { grid.setInnerGridLinesColor(Qt::red); });
    row("same inner colour", false,
            [](AbstractGrid &grid) { grid.setInnerGridLinesColor(Qt::darkGray); });
    row("outer colour", false, [](AbstractGrid &grid) { grid.setOuterGridLinesColor(Qt::red); });
    row("line width", true, [](AbstractGrid &grid) { grid.setLineWidth(2.0); });
    row("same line width", false, [](AbstractGrid &grid) { grid.setLineWidth(1.0); });
    row("width", true, [](AbstractGrid &grid) { grid.setWidth(60.0); });
    row("height", true, [](AbstractGrid &grid) { grid.setHeight(60.0); });
    row("no width", true, [](AbstractGrid &grid) { grid.setWidth(0.0); });
    row("position", true, [](AbstractGrid &grid) { grid.setX(7.0); });
    row("same size", false, [](AbstractGrid &grid) { grid.setSize(QSizeF(50.0, 40.0)); });
    // Every item asks for a frame here.
    QTest::newRow("update") << Action([](AbstractGrid &grid) { grid.update(); }) << false << true;
    QTest::newRow("antialiasing") << Action([](AbstractGrid &grid) { grid.setAntialiasing(false); })
                                  << false << true;
}

void tst_AbstractGrid::dirtyAfter()
{
    QFETCH(Action, action);
    QFETCH(bool, isDirty);

    TestGrid grid;
    grid.setSize(QSizeF(50.0, 40.0));
    QVERIFY(grid.takeDirty());
    action(grid);
    QCOMPARE(grid.takeDirty(), isDirty);
    QVERIFY(!grid.takeDirty());
}

void tst_AbstractGrid::repaints_data()
{
    dirtyAfter_data();
}

void tst_AbstractGrid::repaints()
{
    QFETCH(Action, action);

    FrameWindow window;
    TestGrid grid;
    grid.setParentItem(window.contentItem());
    grid.setSize(QSizeF(50.0, 40.0));
    QVERIFY(window.start());
    QCOMPARE(grid.takeCount(), 1);
    QVERIFY(window.frame());
    QCOMPARE(grid.takeCount(), 0);

    action(grid);
    QVERIFY(window.frame());
    QTEST(grid.takeCount() == 1, "isRepainted");
    QVERIFY(window.frame());
    QCOMPARE(grid.takeCount(), 0);
}

void tst_AbstractGrid::geometryReachesTheBase()
{
    AbstractGrid grid;
    QSignalSpy widths(&grid, &QQuickItem::widthChanged);
    grid.setSize(QSizeF(20.0, 10.0));
    QCOMPARE(widths.size(), 1);
    QCOMPARE(grid.boundingRect(), QRectF(0.0, 0.0, 20.0, 10.0));
}

QTEST_MAIN(tst_AbstractGrid)

#include "tst_abstractgrid.moc"
