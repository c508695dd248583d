// SPDX-License-Identifier: MIT
#include "FigureTable.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <tuple>

using Charts::TracePoint;
using Gallery::FigureTable;
using Gallery::StaticTrace;

class tst_FigureTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void threeHundredNames();
    void figuresStayInTheirCells();
    void shapes_data();
    void shapes();
    void takesOverAttributes();

private:
    static StaticTrace *named(const FigureTable &table, const QString &name)
    {
        for (StaticTrace *trace : table.traces()) {
            if (trace->name() == name)
                return trace;
        }
        return nullptr;
    }
};

void tst_FigureTable::threeHundredNames()
{
    const FigureTable table;
    QCOMPARE(table.traces().size(), 300);
    QCOMPARE(table.ratios().size(), 15);
    QSet<QString> names;
    QSet<QRgb> colors;
    for (const StaticTrace *trace : table.traces()) {
        names.insert(trace->name());
        colors.insert(trace->color().rgb());
    }
    QCOMPARE(names.size(), 300);
    QVERIFY(colors.size() > 200);
}

void tst_FigureTable::figuresStayInTheirCells()
{
    const FigureTable table;
    for (qsizetype i = 0; i < table.traces().size(); ++i) {
        StaticTrace *trace = table.traces()[i];
        const double phase = 9.0 * static_cast<double>(i % 20);
        const auto row = static_cast<double>(i / 20);
        const Charts::TraceData &data = *trace->traceData();
        QVERIFY(!data.filledRange().isEmpty());
        QCOMPARE(static_cast<std::size_t>(data.filledRange().size()), data.array().size());
        for (const TracePoint &point : data.array()) {
            QVERIFY(std::abs(point.x - phase) < 4.0);
            QVERIFY(std::abs(point.y - row) < 0.45);
            QCOMPARE(point.opacity, 1.0F);
            QVERIFY(trace->domain()->geometry().contains(point.x, point.y));
        }
        // Closed.
        QVERIFY(std::abs(data.array().front().x - data.array().back().x) < 1e-4F);
        QVERIFY(std::abs(data.array().front().y - data.array().back().y) < 1e-4F);
    }
}

void tst_FigureTable::shapes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("crossingsOfX");
    QTest::addColumn<int>("crossingsOfY");

    // A figure crosses its centre lines twice an oscillation.
    QTest::newRow("ellipse") << QStringLiteral("1 : 1 at 90°") << 2 << 2;
    QTest::newRow("eight") << QStringLiteral("1 : 2 at 9°") << 2 << 4;
    QTest::newRow("2 : 3") << QStringLiteral("2 : 3 at 45°") << 4 << 6;
    QTest::newRow("5 : 6") << QStringLiteral("5 : 6 at 171°") << 10 << 12;
}

void tst_FigureTable::shapes()
{
    QFETCH(const QString, name);
    QFETCH(const int, crossingsOfX);
    QFETCH(const int, crossingsOfY);
    const FigureTable table;
    StaticTrace *trace = named(table, name);
    QVERIFY(trace);
    const auto index = table.traces().indexOf(trace);
    const double phase = 9.0 * static_cast<double>(index % 20);
    const auto row = static_cast<double>(index / 20);

    // Samples that lie on a centre line count with those above it.
    const auto crossings = [trace](auto side) {
        const auto &array = trace->traceData()->array();
        int count = 0;
        for (std::size_t i = 1; i < array.size(); ++i)
            count += side(array[i - 1]) != side(array[i]) ? 1 : 0;
        return count;
    };
    QCOMPARE(crossings([phase](const TracePoint &p) { return p.x > phase - 1e-4; }), crossingsOfX);
    QCOMPARE(crossings([row](const TracePoint &p) { return p.y > row - 1e-4; }), crossingsOfY);
}

void tst_FigureTable::takesOverAttributes()
{
    const FigureTable table;
    StaticTrace *trace = table.traces().constFirst();
    Charts::TraceData &data = *trace->traceData();
    trace->setColor(QColor(1, 2, 3));
    trace->setLineWidth(4.5);
    trace->domain()->zoomIn({10.0, 12.0}, {3.0, 3.5});
    trace->updateData();
    QCOMPARE(data.color(), QColor(1, 2, 3));
    QCOMPARE(data.width(), 4.5F);
    const Charts::ViewPort zoomed = {.x = 10.0F, .y = 3.0F, .width = 2.0F, .height = 0.5F};
    QVERIFY(data.viewPort() == zoomed);

    // At rest: an update that changes nothing marks nothing.
    data.clearDirty();
    while (!data.dirtyRange().isEmpty())
        std::ignore = data.dirtyRange().pop(true);
    trace->updateData();
    QVERIFY(!data.isDirty());
    QVERIFY(data.dirtyRange().isEmpty());

    trace->setVisible(false);
    trace->updateData();
    QVERIFY(!data.visible());
}

QTEST_GUILESS_MAIN(tst_FigureTable)

#include "tst_figuretable.moc"
