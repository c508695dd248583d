// SPDX-License-Identifier: MIT
#include <ChartsLibrary/AllocateChildren.h>
#include <ChartsLibrary/ArcNode.h>
#include <ChartsLibrary/LineNode.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <limits>

using namespace Charts;

namespace {

QList<int> deleted;

/*! Tells when it is deleted. Where the number of children shrinks, any node will do. */
class NumberedNode : public QSGNode
{
public:
    explicit NumberedNode(int number)
        : m_number(number)
    {
    }
    ~NumberedNode() override { deleted += m_number; }

private:
    int m_number;
};

QList<QSGNode *> childrenOf(const QSGNode &parent)
{
    QList<QSGNode *> children;
    for (QSGNode *child = parent.firstChild(); child; child = child->nextSibling())
        children += child;
    return children;
}

/*! Appends nodes numbered from 0. */
QList<QSGNode *> appendNumbered(QSGNode &parent, int count)
{
    for (int i = 0; i < count; ++i)
        parent.appendChildNode(new NumberedNode(i));
    return childrenOf(parent);
}

using Allocate = void (*)(QSGNode *, int);
using IsNew = bool (*)(const QSGNode *);

/*! A node of exactly this class, as it is constructed. */
template<typename Node>
bool isNew(const QSGNode *node)
{
    const auto *geometryNode = dynamic_cast<const Node *>(node);
    return geometryNode && typeid(*geometryNode) == typeid(Node)
           && geometryNode->geometry()->vertexCount() == 0;
}

constexpr int lowest = std::numeric_limits<int>::lowest();

} // namespace

Q_DECLARE_METATYPE(Allocate)
Q_DECLARE_METATYPE(IsNew)

class tst_AllocateChildren : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void counts_data();
    void counts();
    void twice_data();
    void twice();
    void newNodesGoWithTheirParent();
    void siblingsOfTheParentStay();
};

void tst_AllocateChildren::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    deleted.clear();
}

void tst_AllocateChildren::counts_data()
{
    QTest::addColumn<Allocate>("allocate");
    QTest::addColumn<IsNew>("isNewNode");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<int>>("numbersDeleted");
    QTest::addColumn<int>("added");

    struct Kind
    {
        const char *name;
        Allocate allocate;
        IsNew isNewNode;
    };
    for (const Kind &kind : {Kind{"lines", &allocateChildren<LineNode>, &isNew<LineNode>},
                 Kind{"arcs", &allocateChildren<ArcNode>, &isNew<ArcNode>}}) {
        const auto row = [&kind](const char *name, int before, int count,
                                 const QList<int> &numbersDeleted, int added) {
            QTest::addRow("%s: %s", kind.name, name) << kind.allocate << kind.isNewNode << before
                                                     << count << numbersDeleted << added;
        };
        row("none stay none", 0, 0, {}, 0);
        row("the first", 0, 1, {}, 1);
        row("the first ones", 0, 4, {}, 4);
        row("two grow to five", 2, 5, {}, 3);
        row("one more", 3, 4, {}, 1);
        row("as many", 3, 3, {}, 0);
        row("one less", 3, 2, {0}, 0);
        row("five shrink to two", 5, 2, {0, 1, 2}, 0);
        row("the last one stays", 3, 1, {0, 1}, 0);
        row("all go", 3, 0, {0, 1, 2}, 0);
        row("less than none", 3, -1, {0, 1, 2}, 0);
        row("far less than none", 2, lowest + 2, {0, 1}, 0);
        row("less than none of none", 0, -5, {}, 0);
        row("lowest of none", 0, lowest, {}, 0);
        row("many", 1, 2000, {}, 1999);
    }
}

void tst_AllocateChildren::counts()
{
    QFETCH(Allocate, allocate);
    QFETCH(IsNew, isNewNode);
    QFETCH(int, before);
    QFETCH(int, count);
    QFETCH(QList<int>, numbersDeleted);
    QFETCH(int, added);

    QSGNode parent;
    const QList<QSGNode *> old = appendNumbered(parent, before);

    allocate(&parent, count);
    QCOMPARE(deleted, numbersDeleted);

    const QList<QSGNode *> survivors = old.mid(numbersDeleted.size());
    const QList<QSGNode *> children = childrenOf(parent);
    QCOMPARE(parent.childCount(), children.size());
    QCOMPARE(children.size(), survivors.size() + added);
    QCOMPARE(children.first(survivors.size()), survivors);
    for (QSGNode *child : children)
        QCOMPARE(child->parent(), &parent);
    for (QSGNode *child : children.sliced(survivors.size()))
        QVERIFY(isNewNode(child));
}

void tst_AllocateChildren::twice_data()
{
    QTest::addColumn<QList<int>>("counts");
    // Places among all nodes that were ever there, in the order of their making.
    QTest::addColumn<QList<int>>("expected");

    QTest::newRow("shrink, then grow") << QList<int>{3, 1, 3} << QList<int>{2, 3, 4};
    QTest::newRow("grow, then shrink") << QList<int>{1, 4, 2} << QList<int>{2, 3};
    QTest::newRow("empty, then grow") << QList<int>{2, 0, 2} << QList<int>{2, 3};
    QTest::newRow("back and forth") << QList<int>{2, 3, 2, 3, 2} << QList<int>{2, 3};
}

void tst_AllocateChildren::twice()
{
    QFETCH(QList<int>, counts);
    QFETCH(QList<int>, expected);

    QSGNode parent;
    QList<QSGNode *> all;
    for (const int count : counts) {
        allocateChildren<LineNode>(&parent, count);
        QCOMPARE(parent.childCount(), count);
        // A new node may stand where a deleted one stood, so the nodes are told apart by marks: a
        // node that is still unmarked, without vertices, is new.
        for (QSGNode *child : childrenOf(parent)) {
            auto *line = static_cast<LineNode *>(child);
            if (line->geometry()->vertexCount() == 0) {
                line->update(QList<QPointF>(all.size() + 2), 1.0F, Qt::black, false);
                all += child;
            }
        }
    }
    QList<int> numbers;
    for (QSGNode *child : childrenOf(parent))
        numbers += static_cast<LineNode *>(child)->geometry()->vertexCount() / 4 - 1;
    QCOMPARE(numbers, expected);
}

void tst_AllocateChildren::newNodesGoWithTheirParent()
{
    QSGNode parent;
    allocateChildren<LineNode>(&parent, 2);
    allocateChildren<ArcNode>(&parent, 4);
    const QList<QSGNode *> children = childrenOf(parent);
    QVERIFY(dynamic_cast<LineNode *>(children.at(1)));
    QVERIFY(dynamic_cast<ArcNode *>(children.at(2)));
    for (QSGNode *child : children)
        QVERIFY(child->flags().testFlag(QSGNode::OwnedByParent));
}

void tst_AllocateChildren::siblingsOfTheParentStay()
{
    QSGNode root;
    appendNumbered(root, 3);
    QSGNode *parent = root.childAtIndex(1);
    allocateChildren<LineNode>(parent, 3);
    allocateChildren<LineNode>(parent, 0);
    QCOMPARE(root.childCount(), 3);
    QCOMPARE(root.childAtIndex(1), parent);
    QCOMPARE(deleted, QList<int>());
}

QTEST_APPLESS_MAIN(tst_AllocateChildren)

#include "tst_allocatechildren.moc"
