// SPDX-License-Identifier: MIT
#include "GridContract.h"

#include <ChartsLibrary/XYGrid.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <memory>
#include <utility>

using namespace Charts;
using namespace Qt::StringLiterals;

class tst_XYGridQml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void initialValues();
    void assignments();
    void changes_data();
    void changes();
    void labelsFollowABoundRange();
    void handlerOfTheUnusedSignal();
};

void tst_XYGridQml::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_XYGridQml::initialValues()
{
    const std::unique_ptr<QObject> grid = createInQml(R"(XYGrid {
        property string text: [xLayout === XYGrid.EquidistantGrid, xRange.min, xRange.max, yCount,
            xLabels.length, lineWidth, innerGridLinesColor, outerGridLinesColor].join(" ")
    })");
    QVERIFY(qobject_cast<XYGrid *>(grid.get()));
    QCOMPARE(grid->property("text"), QVariant(u"true 0 0 10 0 1 #808080 #a0a0a4"_s));
}

void tst_XYGridQml::assignments()
{
    const std::unique_ptr<QObject> object = createInQml(R"(XYGrid {
        width: 101; height: 51
        xLayout: XYGrid.LogGrid; xRange: Domain.span(1, 3); yCount: 4
        lineWidth: 2.5; innerGridLinesColor: "red"; outerGridLinesColor: "#80ff0000"
    })");
    const auto *grid = qobject_cast<XYGrid *>(object.get());
    QVERIFY(grid);
    QCOMPARE(grid->xLayout(), XYGrid::LogGrid);
    QVERIFY(grid->xRange() == Span(1.0, 3.0));
    QCOMPARE(grid->yCount(), 4);
    QCOMPARE(grid->lineWidth(), 2.5);
    QCOMPARE(grid->innerGridLinesColor(), QColor(Qt::red));
    QCOMPARE(grid->outerGridLinesColor(), QColor(255, 0, 0, 128));
}

void tst_XYGridQml::changes_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("log");

    const auto row = [](const char *name, const char *statement, const char *log) {
        QTest::newRow(name) << QString::fromLatin1(statement) << QString::fromLatin1(log);
    };
    row("layout", "xLayout = XYGrid.NiceLabelsLinGrid", "xLayout 2;");
    row("same layout", "xLayout = XYGrid.EquidistantGrid", "");
    row("range", "xRange = Domain.span(0, 8)", "xRange 0 8;xLabels 9;");
    row("same range", "xRange = Domain.span(0, 1e-13)", "");
    row("bands", "yCount = 3", "yCount 3;");
    row("same bands", "yCount = 10", "");
    row("line width", "lineWidth = 2", "lineWidth 2;");
    row("same line width", "lineWidth = 1", "");
    row("inner colour", "innerGridLinesColor = 'blue'", "inner #0000ff;");
    row("same inner colour", "innerGridLinesColor = '#808080'", "");
    row("outer colour", "outerGridLinesColor = 'blue'", "outer #0000ff;");
    row("same outer colour", "outerGridLinesColor = '#a0a0a4'", "");
}

// Handlers get the new value under the names of the signals' parameters, once.
void tst_XYGridQml::changes()
{
    QFETCH(QString, statement);

    const std::unique_ptr<QObject> grid = createInQml(R"(XYGrid {
        property string log
        onXLayoutChanged: (layout) => log += "xLayout " + layout + ";"
        onXRangeChanged: (range) => log += "xRange " + range.min + " " + range.max + ";"
        onYCountChanged: (count) => log += "yCount " + count + ";"
        onXLabelsChanged: log += "xLabels " + xLabels.length + ";"
        onLineWidthChanged: (width) => log += "lineWidth " + width + ";"
        onInnerGridLinesColorChanged: (color) => log += "inner " + color + ";"
        onOuterGridLinesColorChanged: (color) => log += "outer " + color + ";"
        function change() { )" + statement.toLatin1() + R"( }
    })");
    QVERIFY(grid);
    QVERIFY(QMetaObject::invokeMethod(grid.get(), "change"));
    QTEST(grid->property("log").toString(), "log");
    QVERIFY(QMetaObject::invokeMethod(grid.get(), "change"));
    QTEST(grid->property("log").toString(), "log");
}

// As an application places its texts.
void tst_XYGridQml::labelsFollowABoundRange()
{
    const std::unique_ptr<QObject> grid = createInQml(R"(XYGrid {
        property real end: 8
        property string texts: xLabels.map(label => label.toFixed(2)).join(" ")
        xLayout: XYGrid.NiceLabelsLinGrid
        xRange: Domain.span(0, end)
    })");
    QVERIFY(grid);
    QCOMPARE(grid->property("texts"), QVariant(u"0.00 1.00 2.00 3.00 4.00 5.00 6.00 7.00"_s));
    QVERIFY(grid->setProperty("end", 2.5));
    QCOMPARE(grid->property("texts"),
            QVariant(u"0.00 0.25 0.50 0.75 1.00 1.25 1.50 1.75 2.00 2.25"_s));
    QVERIFY(grid->setProperty("xLayout", int(XYGrid::EquidistantGrid)));
    QCOMPARE(grid->property("texts"),
            QVariant(u"0.00 0.25 0.50 0.75 1.00 1.25 1.50 1.75 2.00 2.25"_s));
    QVERIFY(grid->setProperty("end", 0.0));
    QCOMPARE(grid->property("texts"), QVariant(u"0.00 0.00 0.00 0.00 0.00 0.00 0.00 0.00 0.00"_s));
}

void tst_XYGridQml::handlerOfTheUnusedSignal()
{
    const std::unique_ptr<QObject> grid = createInQml(R"(XYGrid {
        property int count: 0
        onBlodLineWidthChanged: ++count
    })");
    QVERIFY(grid);
    QVERIFY(grid->setProperty("lineWidth", 4.0));
    QCOMPARE(grid->property("count"), QVariant(0));
}

QTEST_MAIN(tst_XYGridQml)

#include "tst_xygrid_qml.moc"
