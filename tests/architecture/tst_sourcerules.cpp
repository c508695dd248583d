// SPDX-License-Identifier: MIT
#include "SourceRules.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

using namespace Qt::StringLiterals;

namespace {

struct TextFile
{
    QString path;
    QByteArray text;
};
using Tree = QList<TextFile>;

using Rule = QStringList (SourceRules::*)() const;

} // namespace

Q_DECLARE_METATYPE(TextFile)
Q_DECLARE_METATYPE(Rule)

// The rules, each on trees made for it: on ones that break it and on ones that nearly do.
class tst_SourceRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void arrows_data();
    void arrows();
    void rules_data();
    void rules();
    void files();

private:
    [[nodiscard]] SourceRules rulesFor(const Tree &tree);

    QTemporaryDir m_folder;
};

void tst_SourceRules::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

SourceRules tst_SourceRules::rulesFor(const Tree &tree)
{
    QDir root(m_folder.path());
    QDir(root.filePath(u"tree"_s)).removeRecursively();
    for (const TextFile &file : tree) {
        const QString path = root.filePath(u"tree/"_s + file.path);
        root.mkpath(QFileInfo(path).path());
        QFile output(path);
        if (!output.open(QIODevice::WriteOnly) || output.write(file.text) != file.text.size())
            qWarning("cannot write %s", qPrintable(path));
    }
    return SourceRules(root.filePath(u"tree"_s));
}

void tst_SourceRules::arrows_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<bool>("allowed");

    // For each folder, the ones it may include.
    const QList<std::pair<QString, QString>> table{
            {u"domain"_s, u"domain"_s},
            {u"traces"_s, u"traces domain"_s},
            {u"render"_s, u"render traces domain"_s},
            {u"chart"_s, u"chart render traces domain"_s},
            {u"nodes"_s, u"nodes"_s},
            {u"grids"_s, u"grids chart nodes traces domain"_s},
            {u"curves"_s, u"curves chart nodes traces domain"_s},
            {u"module"_s, u"module grids curves chart render nodes traces domain"_s},
    };
    for (const auto &[from, targets] : table) {
        for (const auto &[to, unused] : table) {
            QTest::addRow("%s to %s", qPrintable(from), qPrintable(to))
                    << from << to << targets.split(u' ').contains(to);
        }
    }
}

void tst_SourceRules::arrows()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(bool, allowed);

    const QString source = u"src/%1/Source.cpp"_s.arg(from);
    for (const char *include : {"#include \"Target.h\"\n", "#include <ChartsLibrary/Target.h>\n",
                 "  #  include \"../folder/Target.h\" // why\n"}) {
        const SourceRules rules = rulesFor(
                {{source, QByteArray("// text\n") + include}, {u"src/%1/Target.h"_s.arg(to), ""}});
        QCOMPARE(rules.includeCount(), 1);
        const QStringList found = rules.forbiddenArrows();
        QCOMPARE(found.isEmpty(), allowed);
        if (!allowed)
            QVERIFY(found.first().startsWith(source));
    }
}

void tst_SourceRules::rules_data()
{
    QTest::addColumn<Rule>("rule");
    QTest::addColumn<Tree>("tree");
    QTest::addColumn<QStringList>("objections"); // the paths

    const auto fine = [](const char *name, Rule rule, const Tree &tree) {
        QTest::newRow(name) << rule << tree << QStringList();
    };
    const auto wrong = [](const char *name, Rule rule, const Tree &tree, const QString &path) {
        QTest::newRow(name) << rule << tree << QStringList{path};
    };

    const Rule arrowRule = &SourceRules::forbiddenArrows;
    fine("Qt and standard headers", arrowRule,
            {{u"src/domain/A.h"_s, "#include <QtCore/QObject>\n#include <vector>\n"}});
    fine("generated headers", arrowRule,
            {{u"src/domain/A.h"_s, "#include \"ChartsExport.h\"\n"},
                    {u"src/domain/A.cpp"_s, "#include \"A.moc\"\n#include \"moc_A.cpp\"\n"}});
    fine("a mere name for the meta-object compiler", arrowRule,
            {{u"src/traces/A.h"_s, "Q_MOC_INCLUDE(\"Event.h\")\nclass Event;\n"},
                    {u"src/chart/Event.h"_s, ""}});
    fine("tests may include anything", arrowRule,
            {{u"tests/unit/A.cpp"_s, "#include \"Event.h\"\n#include \"Unknown.h\"\n"},
                    {u"src/chart/Event.h"_s, ""}});
    wrong("unknown header", arrowRule, {{u"src/domain/A.h"_s, "#include \"Missing.h\"\n"}},
            u"src/domain/A.h"_s);
    wrong("unknown folder", arrowRule, {{u"src/helpers/A.h"_s, ""}}, u"src/helpers/A.h"_s);
    wrong("no folder", arrowRule, {{u"src/A.h"_s, ""}}, u"src/A.h"_s);

    const Rule names = &SourceRules::repeatedNames;
    fine("a pair", names, {{u"src/chart/A.h"_s, ""}, {u"src/chart/A.cpp"_s, ""}});
    fine("the same name elsewhere", names, {{u"src/chart/A.h"_s, ""}, {u"tests/A.h"_s, ""}});
    fine("build files", names,
            {{u"src/chart/CMakeLists.txt"_s, ""}, {u"src/grids/CMakeLists.txt"_s, ""}});
    wrong("two headers", names, {{u"src/chart/A.h"_s, ""}, {u"src/grids/A.h"_s, ""}},
            u"src/grids/A.h"_s);
    wrong("header and source", names, {{u"src/chart/A.h"_s, ""}, {u"src/nodes/A.cpp"_s, ""}},
            u"src/nodes/A.cpp"_s);
    wrong("other case", names, {{u"src/chart/Line.h"_s, ""}, {u"src/nodes/LINE.h"_s, ""}},
            u"src/nodes/LINE.h"_s);

    const Rule privateQt = &SourceRules::privateQt;
    fine("public Qt", privateQt,
            {{u"src/nodes/A.cpp"_s, "#include <QtQuick/QSGNode>\n#include \"privateer.h\"\n"},
                    {u"CMakeLists.txt"_s, "target_link_libraries(a PRIVATE Qt6::Quick)\n"}});
    for (const char *header : {"private/qsgnode_p.h", "QtGui/private/qrhi_p.h",
                 "QtQuick/6.4.2/QtQuick/private/qquickitem_p.h", "rhi/qrhi.h",
                 "qpa/qplatformwindow.h", "qsgnode_p.h"}) {
        wrong(header, privateQt,
                {{u"src/nodes/A.cpp"_s, QByteArray("#include <") + header + ">\n"}},
                u"src/nodes/A.cpp"_s);
    }
    wrong("in a test", privateQt, {{u"tests/a.cpp"_s, "#include \"private/qrhi_p.h\"\n"}},
            u"tests/a.cpp"_s);
    wrong("private target", privateQt,
            {{u"examples/CMakeLists.txt"_s, "target_link_libraries(a Qt6::GuiPrivate)\n"}},
            u"examples/CMakeLists.txt"_s);
    wrong("private package", privateQt,
            {{u"cmake/a.cmake"_s, "find_package(Qt6 COMPONENTS GuiPrivate)\n"}},
            u"cmake/a.cmake"_s);

    const Rule licence = &SourceRules::withoutLicence;
    const QByteArray spdx = "SPDX-License-Identifier: MIT";
    fine("first line", licence, {{u"src/chart/A.h"_s, "// " + spdx + "\n#ifndef A\n"}});
    fine("below a shebang", licence, {{u"scripts/a.sh"_s, "#!/bin/sh\n# " + spdx + "\n"}});
    fine("third line", licence, {{u"examples/a.qml"_s, "/*\n\n" + spdx + "*/\n"}});
    fine("no room for it", licence,
            {{u"src/module/qmldir"_s, "module a\n"}, {u"tests/a.json"_s, "{}"},
                    {u"examples/a/b.png"_s, "\x89PNG"}});
    for (const char *path : {"CMakeLists.txt", "src/A.h", "tests/unit/a.cpp", "toolkit/a/README.md",
                 "examples/a.qml", "cmake/a.cmake", "scripts/a.sh", "resources/shaders/a.vert",
                 "resources/a.qrc", "benchmarks/a.cpp", "tests/support/a.supp"}) {
        wrong(path, licence, {{QString::fromLatin1(path), "text\n"}}, QString::fromLatin1(path));
    }
    wrong("empty", licence, {{u"src/A.h"_s, ""}}, u"src/A.h"_s);
    wrong("fourth line", licence, {{u"src/A.h"_s, "\n\n\n// " + spdx}}, u"src/A.h"_s);
    wrong("another licence", licence, {{u"src/A.h"_s, "// SPDX-License-Identifier: Apache-2.0\n"}},
            u"src/A.h"_s);
    wrong("a variant of it", licence, {{u"src/A.h"_s, "// " + spdx + "-0\n"}}, u"src/A.h"_s);

    const Rule directive = &SourceRules::usingNamespace;
    fine("in a source", directive, {{u"src/a/A.cpp"_s, "using namespace Charts;\n"}});
    fine("a single name", directive, {{u"src/a/A.h"_s, "using Charts::Span;\n"}});
    fine("in a comment", directive, {{u"src/a/A.h"_s, "// using namespace std\n"}});
    wrong("in a header", directive, {{u"src/a/A.h"_s, "class A;\nusing namespace Charts;\n"}},
            u"src/a/A.h"_s);
    wrong("in a function of a header", directive,
            {{u"tests/support/A.h"_s, "inline void f()\n{\n    using  namespace std;\n}\n"}},
            u"tests/support/A.h"_s);
}

void tst_SourceRules::rules()
{
    QFETCH(Rule, rule);
    QFETCH(Tree, tree);
    QFETCH(QStringList, objections);

    QStringList paths;
    for (const QString &objection : (rulesFor(tree).*rule)())
        paths += objection.section(u':', 0, 0);
    QCOMPARE(paths, objections);
}

void tst_SourceRules::files()
{
    const SourceRules rules = rulesFor({{u"CMakeLists.txt"_s, ""}, {u"src/chart/A.h"_s, ""},
            {u"build/src/B.h"_s, ""}, {u"docs/c.md"_s, ""}, {u"tests/.hidden"_s, ""}});
    const QStringList expected{u"CMakeLists.txt"_s, u"src/chart/A.h"_s, u"tests/.hidden"_s};
    QCOMPARE(rules.files(), expected);
}

QTEST_GUILESS_MAIN(tst_SourceRules)

#include "tst_sourcerules.moc"
