// SPDX-License-Identifier: MIT
#include "LabelText.h"

#include <ChartsLibrary/XYGrid.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();

} // namespace

class tst_XYGridLabels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void labels_data();
    void labels();
    void stale();
    void onDemand();
    void withoutOrder();
};

void tst_XYGridLabels::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_XYGridLabels::labels_data()
{
    QTest::addColumn<XYGrid::GridLayoutMode>("layout");
    QTest::addColumn<Span>("range");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, XYGrid::GridLayoutMode layout, const Span &range,
                             const char *text) {
        QTest::newRow(name) << layout << range << QString::fromLatin1(text);
    };
    row("tenths", XYGrid::EquidistantGrid, {0.0, 10.0}, "1 2 3 4 5 6 7 8 9");
    row("tenths, reversed", XYGrid::EquidistantGrid, {10.0, 0.0}, "1 2 3 4 5 6 7 8 9");
    row("tenths, negative", XYGrid::EquidistantGrid, {-1.0, -2.0},
            "-1.9 -1.8 -1.7 -1.6 -1.5 -1.4 -1.3 -1.2 -1.1");
    row("centred", XYGrid::CenteredLinGrid, {0.0, 10.0}, "1 2 3 4 5 6 7 8 9");
    row("centred, reversed", XYGrid::CenteredLinGrid, {10.0, 0.0}, "1 2 3 4 5 6 7 8 9");
    row("centred, four digits", XYGrid::CenteredLinGrid, {0.0, 123456.0},
            "12328 24678 37028 49378 61728 74078 86428 98778 111128");
    row("nice", XYGrid::NiceLabelsLinGrid, {0.0, 1.0}, "0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9");
    row("nice, around 0", XYGrid::NiceLabelsLinGrid, {-0.5, 0.5},
            "-0.5 -0.4 -0.3 -0.2 -0.1 0 0.1 0.2 0.3 0.4");
    row("nice, reversed", XYGrid::NiceLabelsLinGrid, {1.0, 0.0}, "");
    row("logarithmic, one decade", XYGrid::LogGrid, {0.0, 1.0},
            "0.301029995664 0.47712125472 0.602059991328 0.698970004336 0.778151250384 "
            "0.845098040014 0.903089986992 0.954242509439 1");
    row("logarithmic, next decade", XYGrid::LogGrid, {1.0, 2.0},
            "1.30102999566 1.47712125472 1.60205999133 1.69897000434 1.77815125038 "
            "1.84509804001 1.90308998699 1.95424250944 2");
    row("logarithmic, reversed", XYGrid::LogGrid, {2.0, 1.0}, "");
}

void tst_XYGridLabels::labels()
{
    QFETCH(XYGrid::GridLayoutMode, layout);
    QFETCH(Span, range);

    // They do not depend on the size: a grid without any has them, too.
    for (const QSizeF &size :
            {QSizeF(101.0, 51.0), QSizeF(1.0, 1.0), QSizeF(), QSizeF(-5.0, 3.0)}) {
        XYGrid grid;
        grid.setSize(size);
        grid.setXLayout(layout);
        QCOMPARE(grid.xLabels(), QVariantList());
        grid.setXRange(range);
        QTEST(labelText(grid.xLabels()), "text");
    }
}

void tst_XYGridLabels::stale()
{
    XYGrid grid;
    grid.setSize(QSizeF(101.0, 51.0));
    grid.setXRange({0.0, 2.0});
    const QString tenths = u"0.2 0.4 0.6 0.8 1 1.2 1.4 1.6 1.8"_s;
    QCOMPARE(labelText(grid.xLabels()), tenths);
    QSignalSpy changes(&grid, &XYGrid::xLabelsChanged);

    for (const auto layout : {XYGrid::LogGrid, XYGrid::NiceLabelsLinGrid}) {
        grid.setXLayout(layout);
        QCOMPARE(labelText(grid.xLabels()), tenths);
    }
    grid.setYCount(3);
    grid.setSize(QSizeF(51.0, 51.0));
    grid.updateGeomerty();
    grid.setXRange({1e-14, 2.0}); // no change
    QCOMPARE(labelText(grid.xLabels()), tenths);
    QCOMPARE(changes.size(), 0);

    grid.setXRange({0.0, 4.0});
    QCOMPARE(labelText(grid.xLabels()), u"0 0.4 0.8 1.2 1.6 2 2.4 2.8 3.2 3.6"_s);
    QCOMPARE(changes.size(), 1);
}

void tst_XYGridLabels::onDemand()
{
    XYGrid grid;
    QSignalSpy changes(&grid, &XYGrid::xLabelsChanged);
    grid.updateLabels();
    QCOMPARE(grid.xLabels(), QVariantList());
    QCOMPARE(changes.size(), 1);

    grid.setXRange({0.0, 1.0});
    grid.setXLayout(XYGrid::NiceLabelsLinGrid);
    grid.updateLabels();
    const QString tenths = u"0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9"_s;
    QCOMPARE(labelText(grid.xLabels()), tenths);
    QCOMPARE(changes.size(), 3);
    grid.updateLabels();
    QCOMPARE(labelText(grid.xLabels()), tenths);
    QCOMPARE(changes.size(), 4);
}

// Values that are no numbers have no place among those that are: they come last.
void tst_XYGridLabels::withoutOrder()
{
    XYGrid grid;
    grid.setXLayout(XYGrid::CenteredLinGrid);
    grid.setXRange({0.0, inf});
    const QVariantList labels = grid.xLabels();
    QCOMPARE(labels.size(), 9);
    QCOMPARE(labels.first().toDouble(), inf);
    for (qsizetype i = 1; i < labels.size(); ++i)
        QVERIFY(std::isnan(labels.at(i).toDouble()));
}

QTEST_MAIN(tst_XYGridLabels)

#include "tst_xygrid_labels.moc"
