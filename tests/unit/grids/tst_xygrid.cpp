// SPDX-License-Identifier: MIT
#include "CountedItem.h"
#include "LabelText.h"
#include "MetaObjectText.h"

#include <ChartsLibrary/XYGrid.h>

#include <QtCore/QMetaEnum>
#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>
#include <utility>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

/*! Every signal of a grid, with its argument and the number of labels at that time, in order. */
class SignalLog : public QObject
{
public:
    explicit SignalLog(const XYGrid &grid)
        : m_grid(grid)
    {
        connect(&grid, &XYGrid::xLayoutChanged, this, [this](XYGrid::GridLayoutMode layout) {
            add(u"xLayoutChanged(%1)"_s.arg(int(layout)), layout == m_grid.xLayout());
        });
        connect(&grid, &XYGrid::yCountChanged, this, [this](int count) {
            add(u"yCountChanged(%1)"_s.arg(count), count == m_grid.yCount());
        });
        connect(&grid, &XYGrid::xRangeChanged, this, [this](const Span &range) {
            add(u"xRangeChanged(%1,%2)"_s.arg(range.min).arg(range.max), range == m_grid.xRange());
        });
        connect(&grid, &XYGrid::xLabelsChanged, this, [this] { add(u"xLabelsChanged()"_s, true); });
    }

    QStringList take() { return std::exchange(m_entries, {}); }

private:
    void add(const QString &entry, bool isStored)
    {
        m_entries += entry + u':' + QString::number(m_grid.xLabels().size())
                     + (isStored ? u""_s : u" before it was stored"_s);
    }

    const XYGrid &m_grid;
    QStringList m_entries;
};

} // namespace

class tst_XYGrid : public QObject
{
    Q_OBJECT

public:
    static void initMain() { FrameWindow::setUp(); }

private Q_SLOTS:
    void init();

    void initialState();
    void metaObject();
    void layoutModes();
    void propertiesByName();

    void xLayout();
    void yCount_data();
    void yCount();
    void xRange_data();
    void xRange();
    void order();
    void rebuiltBeforeTheSignal();

    void repaints_data();
    void repaints();
};

void tst_XYGrid::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_XYGrid::initialState()
{
    const XYGrid grid;
    QCOMPARE(grid.xLayout(), XYGrid::EquidistantGrid);
    QVERIFY(grid.xRange().min == 0.0 && grid.xRange().max == 0.0);
    QCOMPARE(grid.yCount(), 10);
    QCOMPARE(grid.xLabels(), QVariantList());
    QVERIFY(grid.antialiasing());

    QQuickItem parent;
    const auto *child = new XYGrid(&parent);
    QCOMPARE(child->parentItem(), &parent);
}

void tst_XYGrid::metaObject()
{
    const QMetaObject &meta = XYGrid::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::XYGrid");
    QCOMPARE(meta.superClass(), &AbstractGrid::staticMetaObject);
    QCOMPARE(propertyTexts(meta),
            QStringList({
                    u"Charts::XYGrid::GridLayoutMode xLayout read write xLayoutChanged"_s,
                    u"Charts::Span xRange read write xRangeChanged"_s,
                    u"int yCount read write yCountChanged"_s,
                    u"QVariantList xLabels read xLabelsChanged"_s,
            }));
    QCOMPARE(methodTexts(meta, true), QStringList({
                                              u"void xLayoutChanged(GridLayoutMode xLayout)"_s,
                                              u"void yCountChanged(int yCount)"_s,
                                              u"void xRangeChanged(Span xRange)"_s,
                                              u"void xLabelsChanged()"_s,
                                      }));
    QCOMPARE(meta.property(meta.propertyOffset() + 1).metaType(), QMetaType::fromType<Span>());
}

void tst_XYGrid::layoutModes()
{
    const auto modes = QMetaEnum::fromType<XYGrid::GridLayoutMode>();
    QCOMPARE(modes.keyCount(), 4);
    const QList<QByteArray> names = {
            "EquidistantGrid", "CenteredLinGrid", "NiceLabelsLinGrid", "LogGrid"};
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(QByteArray(modes.key(i)), names.at(i));
        QCOMPARE(modes.value(i), i);
    }
}

void tst_XYGrid::propertiesByName()
{
    XYGrid grid;
    SignalLog log(grid);
    QVERIFY(grid.setProperty("xLayout", u"NiceLabelsLinGrid"_s));
    QVERIFY(grid.setProperty("yCount", 3));
    QVERIFY(grid.setProperty("xRange", QVariant::fromValue(Span(0.0, 8.0))));
    QVERIFY(!grid.setProperty("xLabels", QVariantList{1.0}));
    QCOMPARE(log.take(), QStringList({u"xLayoutChanged(2):0"_s, u"yCountChanged(3):0"_s,
                                 u"xRangeChanged(0,8):0"_s, u"xLabelsChanged():8"_s}));
    QCOMPARE(grid.property("xLayout").toInt(), 2);
    QCOMPARE(grid.property("yCount"), QVariant(3));
    QVERIFY(grid.property("xRange").value<Span>() == Span(0.0, 8.0));
    QCOMPARE(labelText(grid.property("xLabels").toList()), u"0 1 2 3 4 5 6 7"_s);
}

void tst_XYGrid::xLayout()
{
    XYGrid grid;
    QSignalSpy changes(&grid, &XYGrid::xLayoutChanged);
    grid.setXLayout(XYGrid::EquidistantGrid);
    QCOMPARE(changes.size(), 0);
    int count = 0;
    for (const auto layout : {XYGrid::LogGrid, XYGrid::CenteredLinGrid, XYGrid::NiceLabelsLinGrid,
                 XYGrid::EquidistantGrid}) {
        grid.setXLayout(layout);
        QCOMPARE(grid.xLayout(), layout);
        QCOMPARE(changes.size(), ++count);
        QCOMPARE(changes.last().at(0).value<XYGrid::GridLayoutMode>(), layout);
        grid.setXLayout(layout);
        QCOMPARE(changes.size(), count);
    }
}

void tst_XYGrid::yCount_data()
{
    QTest::addColumn<int>("yCount");
    QTest::addColumn<bool>("isChange");
    QTest::newRow("fewer") << 4 << true;
    QTest::newRow("one") << 1 << true;
    QTest::newRow("none") << 0 << true;
    QTest::newRow("negative") << -5 << true;
    QTest::newRow("lowest") << std::numeric_limits<int>::min() << true;
    QTest::newRow("many") << 5000 << true;
    QTest::newRow("the same") << 10 << false;
}

void tst_XYGrid::yCount()
{
    QFETCH(int, yCount);
    QFETCH(bool, isChange);

    XYGrid grid;
    grid.setSize(QSizeF(40.0, 30.0));
    QSignalSpy changes(&grid, &XYGrid::yCountChanged);
    grid.setYCount(yCount);
    QCOMPARE(grid.yCount(), yCount);
    QCOMPARE(changes.size(), isChange ? 1 : 0);
    if (isChange)
        QCOMPARE(changes.at(0).at(0).toInt(), yCount);
    grid.setYCount(yCount);
    QCOMPARE(changes.size(), isChange ? 1 : 0);
}

void tst_XYGrid::xRange_data()
{
    QTest::addColumn<Span>("from");
    QTest::addColumn<Span>("to");
    QTest::addColumn<bool>("isChange");

    const auto row = [](const char *name, const Span &from, const Span &to, bool isChange) {
        QTest::newRow(name) << from << to << isChange;
    };
    row("another", {1.0, 2.0}, {3.0, 4.0}, true);
    row("another start", {1.0, 2.0}, {1.5, 2.0}, true);
    row("another end", {1.0, 2.0}, {1.0, 2.5}, true);
    row("the same", {1.0, 2.0}, {1.0, 2.0}, false);
    row("reversed", {1.0, 2.0}, {2.0, 1.0}, true);
    row("almost", {1.0, 2.0}, {1.0 + 1e-13, 2.0 - 1e-13}, false);
    row("not quite", {1.0, 2.0}, {1.0, 2.0 + 1e-11}, true);
    row("relatively small", {1e9, 2e9}, {1e9 + 1e-4, 2e9}, false);
    row("relatively large", {1e-9, 2e-9}, {1.00000000001e-9, 2e-9}, true);
    row("almost 0", {0.0, 2.0}, {1e-13, 2.0}, false);
    row("from almost 0", {1e-13, 2.0}, {0.0, 2.0}, false);
    row("not quite 0", {0.0, 2.0}, {2e-12, 2.0}, true);
    row("small, 0 being none of them", {1e-13, 2.0}, {2e-13, 2.0}, true);
    row("to NaN", {1.0, 2.0}, {NaN, 2.0}, true);
    row("NaN again", {NaN, 2.0}, {NaN, 2.0}, true);
    row("to infinity", {1.0, 2.0}, {1.0, inf}, true);
    row("empty", {1.0, 2.0}, {2.0, 2.0}, true);
}

void tst_XYGrid::xRange()
{
    QFETCH(Span, from);
    QFETCH(Span, to);
    QFETCH(bool, isChange);

    XYGrid grid;
    grid.setSize(QSizeF(40.0, 30.0));
    grid.setXRange(from);
    QSignalSpy changes(&grid, &XYGrid::xRangeChanged);
    QSignalSpy labels(&grid, &XYGrid::xLabelsChanged);
    grid.setXRange(to);
    QCOMPARE(changes.size(), isChange ? 1 : 0);
    QCOMPARE(labels.size(), isChange ? 1 : 0);
    const Span expected = isChange ? to : from;
    const auto isSame = [](double a, double b) {
        return a == b || (std::isnan(a) && std::isnan(b));
    };
    QVERIFY(isSame(grid.xRange().min, expected.min) && isSame(grid.xRange().max, expected.max));
    if (isChange) {
        const auto argument = changes.at(0).at(0).value<Span>();
        QVERIFY(isSame(argument.min, to.min) && isSame(argument.max, to.max));
    }
}

void tst_XYGrid::order()
{
    XYGrid grid;
    SignalLog log(grid);
    grid.setSize(QSizeF(101.0, 51.0));
    QCOMPARE(log.take(), QStringList());

    // While listeners hear of the new range the labels are still those of the range before.
    grid.setXRange({0.0, 10.0});
    QCOMPARE(log.take(), QStringList({u"xRangeChanged(0,10):0"_s, u"xLabelsChanged():9"_s}));
    grid.setXLayout(XYGrid::NiceLabelsLinGrid);
    QCOMPARE(log.take(), QStringList({u"xLayoutChanged(2):9"_s}));
    grid.setXRange({0.0, 20.0});
    QCOMPARE(log.take(), QStringList({u"xRangeChanged(0,20):9"_s, u"xLabelsChanged():10"_s}));
    grid.setYCount(2);
    QCOMPARE(log.take(), QStringList({u"yCountChanged(2):10"_s}));
    grid.setSize(QSizeF(11.0, 5.0));
    grid.setPosition(QPointF(3.0, 4.0));
    QCOMPARE(log.take(), QStringList());
    // No lines, no labels, but a signal.
    grid.setXRange({7.0, 7.0});
    QCOMPARE(log.take(), QStringList({u"xRangeChanged(7,7):10"_s, u"xLabelsChanged():0"_s}));
    grid.setXRange({8.0, 8.0});
    QCOMPARE(log.take(), QStringList({u"xRangeChanged(8,8):0"_s, u"xLabelsChanged():0"_s}));
}

// Who takes over the labels on a signal gets those of the new state.
void tst_XYGrid::rebuiltBeforeTheSignal()
{
    XYGrid grid;
    grid.setXRange({0.0, 8.0});
    QStringList seen;
    const auto note = [&] {
        const QSignalBlocker blocker(grid);
        grid.updateLabels();
        seen += labelText(grid.xLabels());
    };
    connect(&grid, &XYGrid::xLayoutChanged, this, note);
    connect(&grid, &XYGrid::xRangeChanged, this, note);
    grid.setXLayout(XYGrid::NiceLabelsLinGrid);
    grid.setXRange({0.0, 2.5});
    QCOMPARE(
            seen, QStringList({u"0 1 2 3 4 5 6 7"_s, u"0 0.25 0.5 0.75 1 1.25 1.5 1.75 2 2.25"_s}));
}

using Action = void (*)(XYGrid &);

void tst_XYGrid::repaints_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("isRepainted");

    const auto row = [](const char *name, bool isRepainted, Action action) {
        QTest::newRow(name) << action << isRepainted;
    };
    row("layout", true, [](XYGrid &grid) { grid.setXLayout(XYGrid::LogGrid); });
    row("same layout", false, [](XYGrid &grid) { grid.setXLayout(XYGrid::EquidistantGrid); });
    row("range", true, [](XYGrid &grid) { grid.setXRange({0.0, 1.0}); });
    row("same range", false, [](XYGrid &grid) { grid.setXRange({0.0, 0.0}); });
    row("bands", true, [](XYGrid &grid) { grid.setYCount(3); });
    row("same bands", false, [](XYGrid &grid) { grid.setYCount(10); });
    row("size", true, [](XYGrid &grid) { grid.setWidth(70.0); });
    row("outer colour", false, [](XYGrid &grid) { grid.setOuterGridLinesColor(Qt::red); });
    row("labels alone", false, [](XYGrid &grid) { grid.updateLabels(); });
    row("lines alone", false, [](XYGrid &grid) { grid.updateGeomerty(); });
}

void tst_XYGrid::repaints()
{
    QFETCH(Action, action);

    FrameWindow window;
    CountedItem<XYGrid> grid;
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

QTEST_MAIN(tst_XYGrid)

#include "tst_xygrid.moc"
