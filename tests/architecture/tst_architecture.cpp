// SPDX-License-Identifier: MIT
#include "SourceRules.h"

#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Qt::StringLiterals;

// The rules, applied to this tree.
class tst_Architecture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void treeIsRead();
    void arrows();
    void names();
    void privateQt();
    void licences();
    void namespaces();

private:
    const SourceRules m_rules{QStringLiteral(SOURCE_TREE)};
};

void tst_Architecture::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

#define COMPARE_WITH_NONE(found) QVERIFY2(found.isEmpty(), qPrintable(found.join(u'\n')))

void tst_Architecture::treeIsRead()
{
    const QStringList files = m_rules.files();
    for (const QString &path : {u"CMakeLists.txt"_s, u"src/chart/Chart.h"_s,
                 u"src/domain/Span.cpp"_s, u"tests/architecture/tst_architecture.cpp"_s,
                 u"cmake/ChartsInstall.cmake"_s, u"resources/chart_resources.qrc"_s})
        QVERIFY2(files.contains(path), qPrintable(path));
    QVERIFY(m_rules.includeCount() > 50);
}

void tst_Architecture::arrows()
{
    COMPARE_WITH_NONE(m_rules.forbiddenArrows());
}

void tst_Architecture::names()
{
    COMPARE_WITH_NONE(m_rules.repeatedNames());
}

void tst_Architecture::privateQt()
{
    COMPARE_WITH_NONE(m_rules.privateQt());
}

void tst_Architecture::licences()
{
    COMPARE_WITH_NONE(m_rules.withoutLicence());
}

void tst_Architecture::namespaces()
{
    COMPARE_WITH_NONE(m_rules.usingNamespace());
}

QTEST_GUILESS_MAIN(tst_Architecture)

#include "tst_architecture.moc"
