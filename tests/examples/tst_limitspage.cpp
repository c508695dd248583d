// SPDX-License-Identifier: MIT
#include "GalleryScene.h"
#include "SpectrumAnalyzer.h"

#include <ChartsLibrary/TraceData.h>

#include <QtGui/QImage>

#include <cmath>
#include <utility>

using namespace Charts;

namespace {

constexpr double middleFrequency = (98.4 + 107.0) / 2.0; // of the limit
constexpr double tolerance = 0.5;                        // dB; a pixel is 0.25 dB high

/*! The page Limits at rest, with a limit far above the spectrum. */
struct LimitScene
{
    explicit LimitScene(std::unique_ptr<Scene> opened)
        : scene(std::move(opened))
    {
        set("start", -20.0);
        set("end", -40.0);
        auto *analyzer = scene->page()->findChild<Gallery::SpectrumAnalyzer *>();
        analyzer->setPaused(true);
    }

    void set(const char *slider, double value) const
    {
        QVERIFY(scene->object(slider)->setProperty("value", value));
    }
    [[nodiscard]] bool isLit() const { return scene->object("mask")->property("isLit").toBool(); }
    [[nodiscard]] QString verdict() const { return scene->text("verdict"); }
    /*! Where a frequency and a level are in the window. */
    [[nodiscard]] QPoint pixelOf(double frequency, double level) const
    {
        return scene->pixelOf(*scene->traces().constFirst(), {frequency, level});
    }
    /*! The level at which the limit's line, which is brighter than the mask that is not lit, crosses
        a frequency in the picture; 0 if it does not. */
    [[nodiscard]] double drawnLimitAt(double frequency) const
    {
        const QImage picture = scene->window()->grabWindow();
        const Span levels = scene->traces().constFirst()->domain()->yRange();
        const QPoint top = pixelOf(frequency, levels.max);
        const double height = pixelOf(frequency, levels.min).y() - top.y();
        double sum = 0.0;
        int count = 0;
        for (int y = 0; y < height; ++y) {
            const QColor color = picture.pixelColor(top + QPoint(0, y));
            if (color.red() > 140 && color.green() * 2 < color.red()) {
                sum += y + 0.5;
                ++count;
            }
        }
        return count > 0 ? levels.max - sum / count / height * levels.length() : 0.0;
    }

    std::unique_ptr<Scene> scene;
};

} // namespace

/*! The gallery's page of limits: its mask lights up, and the sliders move what is drawn. */
class tst_LimitsPage : public QObject
{
    Q_OBJECT

public:
    static void initMain() { setUpGallery(); }

private Q_SLOTS:
    void initTestCase() { prepare(m_engine); }
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void maskUnderPointer();
    void maskAndTraceUnderPointer();
    void maskCrossed();
    void floorCrossed();
    void slidersBendLimit_data();
    void slidersBendLimit();
    void sameShapeInEveryWindow();

private:
    QQmlEngine m_engine;
};

void tst_LimitsPage::maskUnderPointer()
{
    const LimitScene limits(openPage(m_engine, QStringLiteral("Limits")));
    QTRY_VERIFY_WITH_TIMEOUT(limits.verdict().startsWith(QStringLiteral("Passed by ")), patience);
    QVERIFY(!limits.isLit());
    auto *mask = qobject_cast<QQuickItem *>(limits.scene->object("mask"));
    const double opacity = mask->opacity();
    const double lineWidth = mask->property("lineWidth").toDouble();
    const QColor color = mask->property("color").value<QColor>();
    // In the mask, 10 dB above the limit's beginning.
    const QPoint inside = limits.pixelOf(98.6, -10.0);
    const QImage before = limits.scene->window()->grabWindow();

    // Its ends and 5 px beside it.
    const QPoint end = limits.pixelOf(107.0, -40.0) - QPoint(1, 0);
    for (const QPoint place : {limits.pixelOf(98.4, -20.0), end, end + QPoint(0, 5)}) {
        limits.scene->moveTo(place);
        QTRY_VERIFY_WITH_TIMEOUT(limits.isLit(), patience);
        QVERIFY(mask->opacity() > opacity);
        QVERIFY(mask->property("lineWidth").toDouble() > lineWidth);
        QVERIFY(mask->property("color").value<QColor>() != color);
        const QImage lit = limits.scene->window()->grabWindow();
        QVERIFY(lit.pixelColor(inside).red() > before.pixelColor(inside).red() + 20);

        // In the mask, but far from its line.
        limits.scene->moveTo(limits.pixelOf(103.0, -5.0));
        QTRY_VERIFY_WITH_TIMEOUT(!limits.isLit(), patience);
        QCOMPARE(
                limits.scene->window()->grabWindow().pixelColor(inside), before.pixelColor(inside));
        QCOMPARE(limits.scene->text("pointedLevel"), QString());
    }

    limits.scene->moveTo(end);
    QTRY_VERIFY_WITH_TIMEOUT(limits.isLit(), patience);
    // A pixel is 0.01 MHz wide.
    static const QRegularExpression numbers(QStringLiteral("^Limit at (\\S+)\\sMHz: (\\S+)\\sdBm$"),
            QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch match = numbers.match(limits.scene->text("pointedLevel"));
    QVERIFY2(match.hasMatch(), qPrintable(limits.scene->text("pointedLevel")));
    QVERIFY(std::abs(match.captured(1).toDouble() - 107.0) < 0.03);
    QCOMPARE(match.captured(2), QStringLiteral("\u221240.0"));
}

void tst_LimitsPage::maskAndTraceUnderPointer()
{
    const LimitScene limits(openPage(m_engine, QStringLiteral("Limits")));
    AbstractTrace *trace = limits.scene->traces().constFirst();
    // The flat top of the line at 99.2 MHz.
    const TracePoint point = trace->traceData()->array()[220];
    limits.set("bend", 0.0);
    limits.set("start", point.y);
    limits.set("end", point.y);
    const QPoint place = limits.pixelOf(point.x, point.y);
    limits.scene->moveTo(place);
    QTRY_COMPARE_WITH_TIMEOUT(limits.scene->hoveredTrace(), trace, patience);
    QVERIFY(!limits.scene->text("pointedLevel").isEmpty());
    limits.scene->click(place);
    QTRY_VERIFY_WITH_TIMEOUT(limits.scene->text("readout").startsWith(trace->name()), patience);
}

void tst_LimitsPage::maskCrossed()
{
    const LimitScene limits(openPage(m_engine, QStringLiteral("Limits")));
    QTRY_VERIFY_WITH_TIMEOUT(limits.verdict().startsWith(QStringLiteral("Passed by ")), patience);
    QVERIFY(!limits.isLit());

    // A flat limit about the highest point within its range.
    const auto &array = limits.scene->traces().constFirst()->traceData()->array();
    TracePoint highest = {.x = 0.0F, .y = -1000.0F, .opacity = 1.0F};
    for (const TracePoint &point : array) {
        if (point.x > 98.5F && point.y > highest.y)
            highest = point;
    }
    const double level = std::round(highest.y) - 10.0;
    limits.set("bend", 0.0);
    limits.set("start", level);
    limits.set("end", level);
    QTRY_VERIFY_WITH_TIMEOUT(limits.isLit(), patience);
    const auto number = [](double value, int decimals) {
        return QString::number(value, 'f', decimals);
    };
    QCOMPARE(limits.verdict(), QStringLiteral("Limit exceeded at %1\u00a0MHz by %2\u00a0dB")
                                       .arg(number(highest.x, 2), number(highest.y - level, 1)));

    limits.set("start", std::round(highest.y) + 4.0);
    limits.set("end", std::round(highest.y) + 4.0);
    QTRY_VERIFY_WITH_TIMEOUT(!limits.isLit(), patience);
    QCOMPARE(limits.verdict(),
            QStringLiteral("Only %1\u00a0dB left at %2\u00a0MHz")
                    .arg(number(std::round(highest.y) + 4.0 - highest.y, 1), number(highest.x, 2)));
    limits.set("alert", 3.0);
    QVERIFY(limits.verdict().startsWith(QStringLiteral("Passed by ")));
}

void tst_LimitsPage::floorCrossed()
{
    const LimitScene limits(openPage(m_engine, QStringLiteral("Limits")));
    limits.set("floor", -80.0);
    QTRY_VERIFY_WITH_TIMEOUT(
            limits.verdict().startsWith(QStringLiteral("Below the floor at ")), patience);
    QVERIFY(!limits.isLit());
    limits.set("floor", -100.0);
    QTRY_VERIFY_WITH_TIMEOUT(limits.verdict().startsWith(QStringLiteral("Passed by ")), patience);
}

void tst_LimitsPage::slidersBendLimit_data()
{
    QTest::addColumn<QString>("slider");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("middle"); // the level in the middle of the limit
    // From -20 to -40 dBm: of these 20 dB, 1 / (10^(bend / 2) + 1) are behind it in the middle.
    QTest::newRow("as it begins") << QStringLiteral("bend") << -1.5 << -36.980;
    QTest::newRow("bent less") << QStringLiteral("bend") << -0.5 << -32.801;
    QTest::newRow("bent the other way") << QStringLiteral("bend") << 1.5 << -23.020;
    QTest::newRow("hardly bent") << QStringLiteral("bend") << 0.1 << -29.426;
    QTest::newRow("straight") << QStringLiteral("bend") << 0.0 << -30.0;
    QTest::newRow("as good as straight") << QStringLiteral("bend") << -4e-16 << -30.0;
    QTest::newRow("only the ends") << QStringLiteral("point") << 2.0 << -30.0;
    QTest::newRow("one point between") << QStringLiteral("point") << 3.0 << -36.980;
    QTest::newRow("higher start") << QStringLiteral("start") << -8.0 << -35.168;
    QTest::newRow("lower end") << QStringLiteral("end") << -50.0 << -45.470;
}

void tst_LimitsPage::slidersBendLimit()
{
    QFETCH(const QString, slider);
    QFETCH(const double, value);
    QFETCH(const double, middle);
    const LimitScene limits(openPage(m_engine, QStringLiteral("Limits")));
    const double before = limits.drawnLimitAt(middleFrequency);
    QVERIFY2(std::abs(before - -36.980) < tolerance, qPrintable(QString::number(before)));
    limits.set(qPrintable(slider), value);
    const double after = limits.drawnLimitAt(middleFrequency);
    QVERIFY2(std::abs(after - middle) < tolerance, qPrintable(QString::number(after)));
}

void tst_LimitsPage::sameShapeInEveryWindow()
{
    const LimitScene limits(openPage(m_engine, QStringLiteral("Limits")));
    limits.scene->window()->resize(700, 560);
    QTRY_VERIFY_WITH_TIMEOUT(limits.scene->chart()->width() < 620, patience);
    // The layout settles within some frames.
    QTRY_VERIFY_WITH_TIMEOUT(
            std::abs(limits.drawnLimitAt(middleFrequency) - -36.980) < 2.0 * tolerance, patience);

    // Nor does a zoom change it.
    limits.scene->traces().constFirst()->domain()->zoomIn(Span(102.0, 104.0), Span(-50.0, -20.0));
    const double zoomed = limits.drawnLimitAt(middleFrequency);
    QVERIFY2(std::abs(zoomed - -36.980) < tolerance, qPrintable(QString::number(zoomed)));
}

QTEST_MAIN(tst_LimitsPage)

#include "tst_limitspage.moc"
