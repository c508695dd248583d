// SPDX-License-Identifier: MIT
#include "MetaObjectText.h"

#include <ChartsLibrary/FillRectProvider.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>

using namespace Charts;

namespace {

using Points = QList<QPointF>;
using Heights = QList<double>;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

/*! Points at equal distances in x. */
Points pointsAt(const Heights &ys)
{
    Points points;
    for (qsizetype i = 0; i < ys.size(); ++i)
        points += QPointF(10.0 * double(i), ys.at(i));
    return points;
}

} // namespace

class tst_FillRectProvider : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void heights_data();
    void heights();
    void heightsOfTooFewPoints();
    void heightsNotNumbers();
    void provider();
};

void tst_FillRectProvider::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_FillRectProvider::heights_data()
{
    QTest::addColumn<Points>("points");
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<Heights>("above");
    QTest::addColumn<Heights>("below");

    const QRect item(0, 0, 200, 100);
    const auto row = [&](const char *name, const Heights &ys, const Heights &above,
                             const Heights &below, const QRect &rect = QRect(0, 0, 200, 100)) {
        QTest::newRow(name) << pointsAt(ys) << rect << above << below;
    };
    row("down", {10, 30}, {30, 30}, {90, 90});
    row("up", {30, 10}, {30, 30}, {90, 90});
    row("level", {40, 40}, {40, 40}, {60, 60});
    // Each point has the height of the segment after it, the last one that of the segment before it.
    row("down and up", {10, 30, 20}, {30, 30, 30}, {90, 80, 80});
    row("up and down", {50, 10, 80}, {50, 80, 80}, {90, 90, 90});
    row("stairs down", {10, 20, 30, 40}, {20, 30, 40, 40}, {90, 80, 70, 70});
    row("stairs up", {40, 30, 20, 10}, {40, 30, 20, 20}, {70, 80, 90, 90});
    row("peak", {50, 50, 20, 50, 50}, {50, 50, 50, 50, 50}, {50, 80, 80, 50, 50});
    row("edge to edge", {0, 100}, {100, 100}, {100, 100});
    row("on the edges", {0, 0, 100, 100}, {0, 100, 100, 100}, {100, 100, 0, 0});
    row("above", {-10, -20, 5}, {0, 5, 5}, {120, 120, 120});
    row("below", {110, 130, 90}, {130, 130, 130}, {0, 10, 10});
    row("fractions", {0.25, 0.75, 0.5}, {0.75, 0.75, 0.75}, {99.75, 99.5, 99.5});
    row("infinitely low", {10, inf, 20}, {inf, inf, inf}, {90, 80, 80});
    row("infinitely high", {10, -inf, 20}, {10, 20, 20}, {inf, inf, inf});
    row("huge", {-1e300, 1e300, 0}, {1e300, 1e300, 1e300}, {1e300, 100, 100});
    // Only the height of the rectangle counts.
    row("lower rectangle", {10, 20}, {20, 20}, {40, 40}, {7, 30, 10, 50});
    row("higher rectangle", {10, 20}, {20, 20}, {40, 40}, {0, -200, 0, 50});
    row("no rectangle", {10, -5, -8}, {10, 0, 0}, {5, 8, 8}, {});
    row("negative rectangle", {-50, -60, 0}, {0, 0, 0}, {40, 40, 40}, {0, 0, 10, -20});
    row("largest rectangle", {0, 1}, {1, 1}, {2147483647, 2147483647}, {0, 0, 1, 2147483647});

    QTest::newRow("any x") << Points{{NaN, 10.0}, {-inf, 30.0}, {5.0, 20.0}, {5.0, 5.0}} << item
                           << Heights{30, 30, 20, 20} << Heights{90, 80, 95, 95};
    QTest::newRow("many points") << Points(10000, {3.0, 25.0}) << item << Heights(10000, 25.0)
                                 << Heights(10000, 75.0);
}

void tst_FillRectProvider::heights()
{
    QFETCH(Points, points);
    QFETCH(QRect, rect);

    FillRectProvider fillRect;
    GradientProvider &provider = fillRect;
    QTEST(provider.gradientHeights(points, rect, true), "above");
    QTEST(provider.gradientHeights(points, rect, false), "below");
}

void tst_FillRectProvider::heightsOfTooFewPoints()
{
    FillRectProvider provider;
    for (const bool isUp : {true, false}) {
        QCOMPARE(provider.gradientHeights({}, {0, 0, 10, 10}, isUp), Heights());
        QCOMPARE(provider.gradientHeights({{5.0, 5.0}}, {0, 0, 10, 10}, isUp), Heights());
    }
}

// Spoils no more than what it is part of.
void tst_FillRectProvider::heightsNotNumbers()
{
    FillRectProvider provider;
    const Points points = pointsAt({10, 20, NaN, 30, 40, 50});
    const Heights above = provider.gradientHeights(points, {0, 0, 100, 100}, true);
    QCOMPARE(above.size(), 6);
    QCOMPARE(above.at(0), 20.0);
    QCOMPARE(above.last(3), Heights({40, 50, 50}));
    const Heights below = provider.gradientHeights(points, {0, 0, 100, 100}, false);
    QCOMPARE(below.size(), 6);
    QCOMPARE(below.at(0), 90.0);
    QCOMPARE(below.last(3), Heights({70, 60, 60}));
}

void tst_FillRectProvider::provider()
{
    QObject owner;
    const auto *provider = new FillRectProvider(&owner);
    QCOMPARE(provider->parent(), &owner);

    const QMetaObject &base = GradientProvider::staticMetaObject;
    QCOMPARE(base.className(), "Charts::GradientProvider");
    QCOMPARE(base.superClass(), &QObject::staticMetaObject);
    const QMetaObject &meta = FillRectProvider::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::FillRectProvider");
    QCOMPARE(meta.superClass(), &base);
    for (const QMetaObject *each : {&base, &meta}) {
        QCOMPARE(propertyTexts(*each), QStringList());
        QCOMPARE(methodTexts(*each, true), QStringList());
        QCOMPARE(methodTexts(*each, false), QStringList());
    }
}

QTEST_GUILESS_MAIN(tst_FillRectProvider)

#include "tst_fillrectprovider.moc"
