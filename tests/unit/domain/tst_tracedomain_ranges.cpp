// SPDX-License-Identifier: MIT
#include "DomainSignalLog.h"
#include "ExactCompare.h"

#include <ChartsLibrary/TraceDomain.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <functional>

using namespace Charts;

namespace {

// The ways to set one visible range while no zoom is in force. All obey the same rules.
struct RangeSetter
{
    const char *name;
    Qt::Orientation axis;
    std::function<void(TraceDomain &, Span)> set;
};

const std::vector<RangeSetter> &rangeSetters()
{
    static const std::vector<RangeSetter> setters{
            {"setRangeX(span)", Qt::Horizontal, [](TraceDomain &d, Span s) { d.setRangeX(s); }},
            {"setRangeX(min, max)", Qt::Horizontal,
                    [](TraceDomain &d, Span s) { d.setRangeX(s.min, s.max); }},
            {"setRangeXY(spans), x", Qt::Horizontal,
                    [](TraceDomain &d, Span s) { d.setRangeXY(s, d.yRange()); }},
            {"setRangeXY(numbers), x", Qt::Horizontal,
                    [](TraceDomain &d, Span s) { d.setRangeXY(s.min, s.max, d.minY(), d.maxY()); }},
            {"setBaseRangeX(min, max)", Qt::Horizontal,
                    [](TraceDomain &d, Span s) { d.setBaseRangeX(s.min, s.max); }},
            {"setRangeY(span)", Qt::Vertical, [](TraceDomain &d, Span s) { d.setRangeY(s); }},
            {"setRangeY(min, max)", Qt::Vertical,
                    [](TraceDomain &d, Span s) { d.setRangeY(s.min, s.max); }},
            {"setRangeXY(spans), y", Qt::Vertical,
                    [](TraceDomain &d, Span s) { d.setRangeXY(d.xRange(), s); }},
            {"setRangeXY(numbers), y", Qt::Vertical,
                    [](TraceDomain &d, Span s) { d.setRangeXY(d.minX(), d.maxX(), s.min, s.max); }},
            {"setBaseRangeY(span)", Qt::Vertical,
                    [](TraceDomain &d, Span s) { d.setBaseRangeY(s); }},
            {"setBaseRangeY(min, max)", Qt::Vertical,
                    [](TraceDomain &d, Span s) { d.setBaseRangeY(s.min, s.max); }},
    };
    return setters;
}

Span spanProperty(const TraceDomain &domain, const char *name)
{
    return domain.property(name).value<Span>();
}

} // namespace

class tst_TraceDomainRanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void setRange_data();
    void setRange();
    void setBothRanges();
    void getters_data();
    void getters();
    void argRange_data();
    void argRange();
    void shiftYRange_data();
    void shiftYRange();
};

void tst_TraceDomainRanges::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TraceDomainRanges::setRange_data()
{
    QTest::addColumn<RangeSetter>("setter");
    QTest::addColumn<Span>("before");
    QTest::addColumn<Span>("after");
    QTest::addColumn<bool>("isChange");

    const double next = std::nextafter(1.0, 2.0);
    const struct
    {
        const char *name;
        Span before;
        Span after;
        bool isChange;
    } rows[] = {
            {"another range", Span(0.0, 1.0), Span(2.0, 3.0), true},
            {"another min", Span(0.5, 1.0), Span(0.25, 1.0), true},
            {"another max", Span(0.5, 1.0), Span(0.5, 2.0), true},
            {"the same", Span(0.5, 1.0), Span(0.5, 1.0), false},
            {"the default", Span(0.0, 0.0), Span(0.0, 0.0), false},
            {"zero for a tiny min", Span(1e-13, 1.0), Span(0.0, 1.0), false},
            {"a tiny min for zero", Span(0.0, 1.0), Span(-1e-12, 1.0), false},
            {"a tiny max for zero", Span(-1.0, 0.0), Span(-1.0, 1e-13), false},
            {"beyond the tolerance around zero", Span(0.0, 1.0), Span(2e-12, 1.0), true},
            {"max beyond the tolerance around zero", Span(-1.0, 0.0), Span(-1.0, 2e-12), true},
            {"tiny for tiny", Span(1e-13, 1.0), Span(2e-13, 1.0), true},
            {"the next double", Span(1.0, 5.0), Span(next, 5.0), false},
            {"within the relative tolerance", Span(1e9, 2e9), Span(1e9 + 5e-4, 2e9 - 1e-3), false},
            {"beyond the relative tolerance", Span(1e9, 2e9), Span(1e9 + 2e-3, 2e9), true},
            {"reversed", Span(0.0, 10.0), Span(10.0, 0.0), true},
            {"empty", Span(0.0, 10.0), Span(5.0, 5.0), true},
            {"denormal instead of zero", Span(0.0, 1.0), Span(smallest, 1.0), false},
            {"denormal", Span(1.0, 2.0), Span(smallest, 2.0 * smallest), true},
            {"huge", Span(0.0, 1.0), Span(-largest, largest), true},
            {"the same huge one", Span(-largest, largest), Span(-largest, largest), false},
            {"infinite", Span(0.0, 1.0), Span(-inf, inf), true},
            {"infinite again", Span(0.0, inf), Span(0.0, inf), true},
            {"NaN", Span(0.0, 1.0), Span(NaN, NaN), true},
            {"NaN again", Span(NaN, 1.0), Span(NaN, 1.0), true},
            {"a number for NaN", Span(1.0, NaN), Span(1.0, 2.0), true},
    };
    for (const RangeSetter &setter : rangeSetters()) {
        for (const auto &row : rows) {
            QTest::addRow("%s: %s", setter.name, row.name)
                    << setter << row.before << row.after << row.isChange;
        }
    }
}

void tst_TraceDomainRanges::setRange()
{
    QFETCH(RangeSetter, setter);
    QFETCH(Span, before);
    QFETCH(Span, after);
    QFETCH(bool, isChange);

    const bool isX = setter.axis == Qt::Horizontal;
    TraceDomain domain;
    const Span other(-7.0, 7.0);
    domain.setRangeXY(isX ? before : other, isX ? other : before);
    DomainSignalLog log(domain);

    setter.set(domain, after);
    const QStringList change = signalNames(
            isX ? "baseXRangeChanged xRangeChanged" : "baseYRangeChanged yRangeChanged");
    QCOMPARE(log.take(), isChange ? change : QStringList());

    const Span expected = isChange ? after : before;
    COMPARE_EXACT(isX ? domain.xRange() : domain.yRange(), expected);
    COMPARE_EXACT(isX ? domain.baseXRange() : domain.baseYRange(), expected);
    COMPARE_EXACT(spanProperty(domain, isX ? "xRange" : "yRange"), expected);
    COMPARE_EXACT(spanProperty(domain, isX ? "baseXRange" : "baseYRange"), expected);
    COMPARE_EXACT(isX ? domain.yRange() : domain.xRange(), other);
    COMPARE_EXACT(isX ? domain.baseYRange() : domain.baseXRange(), other);
    QVERIFY(!domain.isZoomed());
}

void tst_TraceDomainRanges::setBothRanges()
{
    TraceDomain domain;
    DomainSignalLog log(domain);
    domain.setRangeXY(Span(0.0, 10.0), Span(0.0, 5.0));
    QCOMPARE(log.take(),
            signalNames("baseXRangeChanged xRangeChanged baseYRangeChanged yRangeChanged"));
    COMPARE_EXACT(domain.xRange(), Span(0.0, 10.0));
    COMPARE_EXACT(domain.yRange(), Span(0.0, 5.0));

    domain.setRangeXY(1.0, 2.0, 3.0, 4.0);
    QCOMPARE(log.take(),
            signalNames("baseXRangeChanged xRangeChanged baseYRangeChanged yRangeChanged"));
    COMPARE_EXACT(domain.xRange(), Span(1.0, 2.0));
    COMPARE_EXACT(domain.yRange(), Span(3.0, 4.0));

    // X is through before Y changes.
    connect(&domain, &TraceDomain::xRangeChanged, &domain, [&domain] {
        COMPARE_EXACT(domain.xRange(), Span(5.0, 6.0));
        COMPARE_EXACT(domain.baseXRange(), Span(5.0, 6.0));
        COMPARE_EXACT(domain.yRange(), Span(3.0, 4.0));
    });
    domain.setRangeXY(Span(5.0, 6.0), Span(7.0, 8.0));
    COMPARE_EXACT(domain.yRange(), Span(7.0, 8.0));
}

void tst_TraceDomainRanges::getters_data()
{
    QTest::addColumn<Span>("x");
    QTest::addColumn<Span>("y");
    QTest::addColumn<double>("spanX");
    QTest::addColumn<double>("spanY");

    QTest::newRow("plain") << Span(-1.0, 3.0) << Span(2.0, 2.5) << 4.0 << 0.5;
    QTest::newRow("reversed x") << Span(3.0, -1.0) << Span(0.0, 5.0) << 0.0 << 5.0;
    QTest::newRow("reversed y") << Span(0.0, 5.0) << Span(3.0, -1.0) << 5.0 << 0.0;
    QTest::newRow("empty") << Span(2.0, 2.0) << Span(3.0, 3.0) << 0.0 << 0.0;
    QTest::newRow("overflow") << Span(-largest, largest) << Span(largest, -largest) << inf << 0.0;
}

void tst_TraceDomainRanges::getters()
{
    QFETCH(Span, x);
    QFETCH(Span, y);
    QFETCH(double, spanX);
    QFETCH(double, spanY);

    TraceDomain domain;
    domain.setRangeXY(x, y);
    COMPARE_EXACT(domain.minX(), x.min);
    COMPARE_EXACT(domain.maxX(), x.max);
    COMPARE_EXACT(domain.minY(), y.min);
    COMPARE_EXACT(domain.maxY(), y.max);
    COMPARE_EXACT(domain.spanX(), spanX);
    COMPARE_EXACT(domain.spanY(), spanY);
    COMPARE_EXACT(domain.geometry().x(), x.min);
    COMPARE_EXACT(domain.geometry().y(), y.min);
    COMPARE_EXACT(domain.geometry().width(), spanX);
    COMPARE_EXACT(domain.geometry().height(), spanY);
}

void tst_TraceDomainRanges::argRange_data()
{
    QTest::addColumn<Span>("before");
    QTest::addColumn<Span>("after");
    QTest::addColumn<bool>("isChange");

    const auto row = [](const char *name, Span before, Span after, bool isChange) {
        QTest::newRow(name) << before << after << isChange;
    };
    row("another range", Span(1.0, 2.0), Span(3.0, 4.0), true);
    row("another min", Span(1.0, 2.0), Span(1.5, 2.0), true);
    row("another max", Span(1.0, 2.0), Span(1.0, 2.5), true);
    row("the same", Span(1.0, 2.0), Span(1.0, 2.0), false);
    row("the default", Span(0.0, 0.0), Span(0.0, 0.0), false);
    row("minus zero for zero", Span(0.0, 0.0), Span(-0.0, -0.0), false);
    row("within the relative tolerance", Span(1e9, 2e9), Span(1e9 + 5e-4, 2e9 - 1e-3), false);
    row("beyond the relative tolerance", Span(1e9, 2e9), Span(1e9, 2e9 + 4e-3), true);
    // There is no tolerance around zero.
    row("zero for a tiny min", Span(1e-13, 1.0), Span(0.0, 1.0), true);
    row("a tiny min for zero", Span(0.0, 1.0), Span(1e-13, 1.0), true);
    row("a tiny max for zero", Span(-1.0, 0.0), Span(-1.0, 1e-13), true);
    row("the smallest number for zero", Span(0.0, 1.0), Span(smallest, 1.0), true);
    row("reversed", Span(1.0, 2.0), Span(2.0, 1.0), true);
    row("huge", Span(1.0, 2.0), Span(-largest, largest), true);
    row("the same huge one", Span(-largest, largest), Span(-largest, largest), false);
    row("infinite again", Span(1.0, inf), Span(1.0, inf), true);
    row("NaN", Span(1.0, 2.0), Span(NaN, 2.0), true);
    row("NaN again", Span(1.0, NaN), Span(1.0, NaN), true);
}

void tst_TraceDomainRanges::argRange()
{
    QFETCH(Span, before);
    QFETCH(Span, after);
    QFETCH(bool, isChange);

    TraceDomain domain;
    domain.setRangeArg(before.min, before.max);
    COMPARE_EXACT(domain.argRange(), before);
    DomainSignalLog log(domain);
    domain.setRangeArg(after.min, after.max);
    QCOMPARE(log.take(), isChange ? signalNames("argRangeChanged") : QStringList());
    COMPARE_EXACT(domain.argRange(), isChange ? after : before);
    COMPARE_EXACT(spanProperty(domain, "argRange"), isChange ? after : before);
    COMPARE_EXACT(domain.xRange(), Span());
    COMPARE_EXACT(domain.yRange(), Span());
}

void tst_TraceDomainRanges::shiftYRange_data()
{
    QTest::addColumn<Span>("before");
    QTest::addColumn<double>("shift");
    QTest::addColumn<Span>("after");

    QTest::newRow("up") << Span(-1.0, 3.0) << 1.5 << Span(0.5, 4.5);
    QTest::newRow("down") << Span(-1.0, 3.0) << -4.0 << Span(-5.0, -1.0);
    QTest::newRow("by nothing") << Span(-1.0, 3.0) << 0.0 << Span(-1.0, 3.0);
    QTest::newRow("below every tolerance")
            << Span(1.0, 2.0) << 0x1p-52 << Span(std::nextafter(1.0, 2.0), 2.0);
    QTest::newRow("absorbed") << Span(1e300, 2e300) << 1.0 << Span(1e300, 2e300);
    QTest::newRow("reversed") << Span(3.0, -1.0) << 2.0 << Span(5.0, 1.0);
    QTest::newRow("overflow") << Span(0.0, largest) << largest << Span(largest, inf);
    QTest::newRow("infinite") << Span(0.0, 1.0) << -inf << Span(-inf, -inf);
    QTest::newRow("NaN") << Span(0.0, 1.0) << NaN << Span(NaN, NaN);
}

void tst_TraceDomainRanges::shiftYRange()
{
    QFETCH(Span, before);
    QFETCH(double, shift);
    QFETCH(Span, after);

    TraceDomain domain;
    domain.setRangeXY(Span(0.0, 10.0), before);
    DomainSignalLog log(domain);
    // The name under which QML calls it.
    QVERIFY(QMetaObject::invokeMethod(&domain, "shiftYRange", Q_ARG(double, shift)));
    QCOMPARE(log.take(), signalNames("baseYRangeChanged yRangeChanged"));
    COMPARE_EXACT(domain.yRange(), after);
    COMPARE_EXACT(domain.baseYRange(), after);
    COMPARE_EXACT(domain.xRange(), Span(0.0, 10.0));
}

QTEST_GUILESS_MAIN(tst_TraceDomainRanges)
#include "tst_tracedomain_ranges.moc"
