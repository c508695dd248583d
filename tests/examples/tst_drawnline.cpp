// SPDX-License-Identifier: MIT
#include "DrawnLine.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using Charts::TracePoint;
using DrawnLine::Piece;

Q_DECLARE_METATYPE(std::vector<TracePoint>)
Q_DECLARE_METATYPE(std::vector<Piece>)

// The other tests of this folder lean on this model of what is drawn.
class tst_DrawnLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void pieces_data();
    void pieces();
    void sorting();
    void bookkeeping();
};

void tst_DrawnLine::pieces_data()
{
    QTest::addColumn<std::vector<TracePoint>>("vertices");
    QTest::addColumn<std::vector<Piece>>("expected");

    using Vertices = std::vector<TracePoint>;
    using Pieces = std::vector<Piece>;
    QTest::newRow("nothing") << Vertices{} << Pieces{};
    QTest::newRow("one vertex") << Vertices{{1, 2, 1}} << Pieces{};
    QTest::newRow("a line") << Vertices{{1, 2, 1}, {3, 5, 1}} << Pieces{{1, 2, 3, 5}};
    QTest::newRow("two lines") << Vertices{{0, 0, 1}, {1, 1, 1}, {2, 0, 1}}
                               << Pieces{{0, 0, 1, 1}, {1, 1, 2, 0}};
    QTest::newRow("backwards") << Vertices{{5, 0, 1}, {1, 0, 1}} << Pieces{{5, 0, 1, 0}};
    QTest::newRow("no length") << Vertices{{1, 2, 1}, {1, 2, 0}} << Pieces{};
    QTest::newRow("upright") << Vertices{{1, 2, 1}, {1, 3, 1}} << Pieces{{1, 2, 1, 3}};
    QTest::newRow("both masked") << Vertices{{0, 0, 0}, {1, 1, 0}} << Pieces{};
    QTest::newRow("far below 0") << Vertices{{0, 0, 1}, {1, 1, -1e6F}, {2, 2, 1}} << Pieces{};
    QTest::newRow("half opaque") << Vertices{{0, 0, 0.5F}, {1, 1, 0.25F}} << Pieces{{0, 0, 1, 1}};
}

void tst_DrawnLine::pieces()
{
    QFETCH(std::vector<TracePoint>, vertices);
    QFETCH(std::vector<Piece>, expected);

    const QString difference = DrawnLine::compare(DrawnLine::pieces(vertices), expected);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_DrawnLine::sorting()
{
    // Opacity falls from 1 at the left to 0 at the right and reaches 0.1 after nine tenths.
    const std::vector<Piece> pieces =
            DrawnLine::sortedPieces({{10, 0, 1}, {20, 100, 0}, {0, 50, 0}, {10, 0, 1}});
    QCOMPARE(pieces.size(), 2U);
    QCOMPARE(pieces[0].x1, 1.0);
    QCOMPARE(pieces[0].y1, 45.0);
    QCOMPARE(pieces[0].x2, 10.0);
    QCOMPARE(pieces[1].x1, 10.0);
    QCOMPARE(pieces[1].x2, 19.0);
    QCOMPARE(pieces[1].y2, 90.0);
}

void tst_DrawnLine::bookkeeping()
{
    Charts::BoundRange ranges;
    ranges.setSize(20);
    ranges.push({3, 2});
    ranges.push({10, 1});
    QCOMPARE(DrawnLine::takeIndices(ranges), (std::set<int>{3, 4, 10}));
    QVERIFY(ranges.isEmpty());
    QCOMPARE(DrawnLine::differences(
                     {{0, 0, 1}, {1, 1, 1}, {2, 2, 1}}, {{0, 0, 1}, {1, 5, 1}, {2, 2, 0}}),
            (std::set<int>{1, 2}));
    QVERIFY(!DrawnLine::compare({}, {{0, 0, 1, 1}}).isEmpty());
    QVERIFY(!DrawnLine::compare({{0, 0, 1, 1}}, {}).isEmpty());
    QVERIFY(!DrawnLine::compare({{0, 0, 1, 1}}, {{0, 0, 1, 2}}).isEmpty());
}

QTEST_GUILESS_MAIN(tst_DrawnLine)

#include "tst_drawnline.moc"
