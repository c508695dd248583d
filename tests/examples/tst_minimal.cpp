// SPDX-License-Identifier: MIT
#include "DrawnLine.h"
#include "Graphics.h"
#include "WaveTrace.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QImage>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>

#include <cmath>

// The minimal example's document and trace, in a window whose pixels can be read.
class tst_Minimal : public QObject
{
    Q_OBJECT

public:
    static void initMain() { Graphics::setUp(); }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void traceData();
    void picture();
};

namespace {

/*! Whether the line covers at least a quarter of a pixel: it is #4fc3f7 on #0b0f14. Where the line
    is almost flat it can lie on two rows, and rasterisers draw short segments thinner, so that half
    a pixel is not always covered. */
bool isLine(QRgb pixel)
{
    return qBlue(pixel) >= 0x14 + (0xf7 - 0x14) / 4 && qRed(pixel) < 0x80;
}

/*! The middle of the pixels in the trace's colour in a column, in data units, and the outermost. */
struct Column
{
    bool isEmpty = true;
    double middle = 0.0;
    double highest = -10.0;
    double lowest = 10.0;
};

Column columnAt(const QImage &picture, int x)
{
    Column column;
    int count = 0;
    double sum = 0.0;
    for (int row = 0; row < picture.height(); ++row) {
        if (!isLine(picture.pixel(x, row)))
            continue;
        // The chart shows 1.2 at its top and -1.2 at its bottom.
        const double y = 1.2 - 2.4 * (row + 0.5) / picture.height();
        column.highest = std::max(column.highest, y);
        column.lowest = std::min(column.lowest, y);
        sum += y;
        ++count;
    }
    if (count > 0) {
        column.isEmpty = false;
        column.middle = sum / count;
    }
    return column;
}

} // namespace

void tst_Minimal::traceData()
{
    WaveTrace trace;
    trace.setColor(Qt::red);
    trace.setLineWidth(3.0);
    Charts::TraceData &data = *trace.traceData();
    QCOMPARE(data.drawType(), Charts::DrawType::LineStrip);
    const auto count = static_cast<int>(data.array().size());
    QCOMPARE_GT(count, 100);
    // Nothing has been computed yet, so there is nothing to draw.
    QVERIFY(data.filledRange().isEmpty());

    trace.updateData();
    QCOMPARE(data.color(), QColor(Qt::red));
    QCOMPARE(data.width(), 3.0F);
    QCOMPARE(data.dirtyRange().size(), count);
    QCOMPARE(data.filledRange().size(), count);
    QVERIFY(!data.filledRange().isEmpty());
    QCOMPARE(static_cast<int>(DrawnLine::takeIndices(data.dirtyRange()).size()), count);
    const std::vector<Charts::TracePoint> first = data.array();
    QCOMPARE(first.front().x, 0.0F);
    QCOMPARE(first.back().x, static_cast<float>(count - 1));

    trace.updateData();
    const std::set<int> changed = DrawnLine::differences(first, data.array());
    QCOMPARE_GT(static_cast<int>(changed.size()), count / 2);
    const std::set<int> dirty = DrawnLine::takeIndices(data.dirtyRange());
    QVERIFY(std::includes(dirty.begin(), dirty.end(), changed.begin(), changed.end()));
}

void tst_Minimal::picture()
{
    // In the example the build registers the trace under this name.
    qmlRegisterType<WaveTrace>("Minimal", 1, 0, "WaveTrace");
    QQmlApplicationEngine engine;
    engine.load(QUrl::fromLocalFile(QStringLiteral(MINIMAL_SOURCES "/Main.qml")));
    QCOMPARE(engine.rootObjects().size(), 1);
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    QVERIFY(window);
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QTest::qWait(200);
    const QImage picture = window->grabWindow();
    QCOMPARE(picture.size(), window->size());

    // A sine under an arch: sin(0.003 u) * sin(0.05 u - phase), with u from 0 to 999.
    double highest = -10.0;
    double lowest = 10.0;
    int signChanges = 0;
    double lastMiddle = 0.0;
    for (int x = 0; x < picture.width(); ++x) {
        const Column column = columnAt(picture, x);
        if (column.isEmpty) {
            QVERIFY2(x < 2 || x >= picture.width() - 2, qPrintable(QString::number(x)));
            continue;
        }
        // The line is 2 px wide, a row is 2.4 / 320 high, and a pixel may be covered in part.
        const double arch = std::sin(0.003 * 999.0 * (x + 0.5) / picture.width());
        const double room = 4.0 * 2.4 / picture.height();
        QVERIFY2(column.highest <= arch + room && column.lowest >= -arch - room,
                qPrintable(QString::number(x)));
        highest = std::max(highest, column.highest);
        lowest = std::min(lowest, column.lowest);
        if (std::abs(column.middle) > 0.03) {
            signChanges += column.middle * lastMiddle < 0.0 ? 1 : 0;
            lastMiddle = column.middle;
        }
    }
    QVERIFY(highest > 0.9 && lowest < -0.9);
    // 50 radians across: 15.9 half periods.
    QVERIFY2(signChanges >= 14 && signChanges <= 16, qPrintable(QString::number(signChanges)));

    // It moves.
    QTRY_VERIFY_WITH_TIMEOUT(window->grabWindow() != picture, 5000);
}

QTEST_MAIN(tst_Minimal)

#include "tst_minimal.moc"
