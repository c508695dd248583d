// SPDX-License-Identifier: MIT
#include <ChartsLibrary/ChartItem.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

using namespace Charts;
using namespace Qt::StringLiterals;

namespace {

struct Update
{
    QRectF newGeometry;
    QRectF oldGeometry;

    friend bool operator==(const Update &a, const Update &b) = default;
};

/*! Notes what arrives at the hook. */
class HookedItem : public ChartItem
{
public:
    using ChartItem::ChartItem;

    std::vector<Update> updates;
    QStringList *log = nullptr;

protected:
    void geometryUpdate(const QRectF &newGeometry, const QRectF &oldGeometry) override
    {
        updates.push_back({newGeometry, oldGeometry});
        if (log)
            *log += u"geometryUpdate"_s;
        ChartItem::geometryUpdate(newGeometry, oldGeometry);
    }
};

} // namespace

class tst_ChartItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void initialState();
    void parentItem();
    void metaObject();
    void geometries();
    void hookComesFirst();
    void baseIsReached();
    void anchoredChildFollows();
};

void tst_ChartItem::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_ChartItem::initialState()
{
    // Nothing but the hook: everything else is as in a plain item.
    const ChartItem item;
    const QQuickItem plain;
    QCOMPARE(item.flags(), plain.flags());
    QCOMPARE(item.antialiasing(), plain.antialiasing());
    QCOMPARE(item.acceptedMouseButtons(), plain.acceptedMouseButtons());
    QCOMPARE(item.acceptHoverEvents(), plain.acceptHoverEvents());
    QVERIFY(item.children().isEmpty());
}

void tst_ChartItem::parentItem()
{
    QQuickItem parent;
    const auto *item = new ChartItem(&parent);
    QCOMPARE(item->parentItem(), &parent);
    QCOMPARE(item->parent(), &parent);
}

void tst_ChartItem::metaObject()
{
    const QMetaObject &meta = ChartItem::staticMetaObject;
    QCOMPARE(meta.className(), "Charts::ChartItem");
    QCOMPARE(meta.superClass(), &QQuickItem::staticMetaObject);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QCOMPARE(meta.methodCount(), meta.methodOffset());
}

void tst_ChartItem::geometries()
{
    HookedItem item;
    item.setSize(QSizeF(40.0, 30.0));
    item.setX(5.0);
    item.setPosition(QPointF(-6.0, 7.5));
    item.setWidth(-1.0);
    item.setWidth(-1.0); // no change
    const std::vector<Update> expected{
            {{0.0, 0.0, 40.0, 30.0}, {0.0, 0.0, 0.0, 0.0}},
            {{5.0, 0.0, 40.0, 30.0}, {0.0, 0.0, 40.0, 30.0}},
            {{-6.0, 7.5, 40.0, 30.0}, {5.0, 0.0, 40.0, 30.0}},
            {{-6.0, 7.5, -1.0, 30.0}, {-6.0, 7.5, 40.0, 30.0}},
    };
    QVERIFY(item.updates == expected);
}

void tst_ChartItem::hookComesFirst()
{
    HookedItem item;
    QStringList log;
    item.log = &log;
    connect(&item, &QQuickItem::xChanged, &item, [&] { log += u"xChanged"_s; });
    connect(&item, &QQuickItem::widthChanged, &item, [&] { log += u"widthChanged"_s; });
    connect(&item, &QQuickItem::heightChanged, &item, [&] { log += u"heightChanged"_s; });

    item.setX(1.0);
    QCOMPARE(log, QStringList({u"geometryUpdate"_s, u"xChanged"_s}));
    log.clear();
    item.setSize(QSizeF(2.0, 3.0));
    QCOMPARE(log, QStringList({u"geometryUpdate"_s, u"widthChanged"_s, u"heightChanged"_s}));
}

void tst_ChartItem::baseIsReached()
{
    ChartItem item;
    QSignalSpy widths(&item, &QQuickItem::widthChanged);
    QSignalSpy heights(&item, &QQuickItem::heightChanged);
    item.setSize(QSizeF(2.0, 3.0));
    QCOMPARE(widths.size(), 1);
    QCOMPARE(heights.size(), 1);
    QCOMPARE(item.boundingRect(), QRectF(0.0, 0.0, 2.0, 3.0));
}

void tst_ChartItem::anchoredChildFollows()
{
    HookedItem item;
    HookedItem child(&item);
    connect(&item, &QQuickItem::widthChanged, &child, [&] { child.setWidth(item.width() / 2.0); });
    item.setWidth(10.0);
    const std::vector<Update> expected{{{0.0, 0.0, 5.0, 0.0}, {0.0, 0.0, 0.0, 0.0}}};
    QVERIFY(child.updates == expected);
}

QTEST_MAIN(tst_ChartItem)

#include "tst_chartitem.moc"
