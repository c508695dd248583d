// SPDX-License-Identifier: MIT
#include <ChartsLibrary/SmoothColorMaterial.h>

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace Qt::StringLiterals;

namespace {

QString resource(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/*! Without comments, and with all white space made one blank. */
QString simplified(QString source)
{
    static const QRegularExpression comment(u"//[^\\n]*"_s);
    return source.remove(comment).simplified();
}

} // namespace

/*!
    The shaders of the material, as texts and as packs. How they draw is a matter of the rendering
    tests.
*/
class tst_SmoothColorShaders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void uniformBlock();
    void vertexInputs();
    void vertexSource();
    void vertexSourceOfOpenGLEs();
    void fragmentSources();
    void packs_data();
    void packs();
};

void tst_SmoothColorShaders::initTestCase()
{
    // The library brings the resources; the linker leaves it out where nothing uses it.
    QVERIFY(Charts::SmoothColorMaterial().type());
}

void tst_SmoothColorShaders::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_SmoothColorShaders::uniformBlock()
{
    const QString source = simplified(resource(u":/shaders/qt6_smoothcolor.vert"_s));
    static const QRegularExpression block(
            u"layout\\(std140, binding = 0\\) uniform AttributesBlock "
            "\\{ mat4 matrix; float opacity; vec2 pixelSize; \\}"_s);
    QVERIFY2(source.contains(block), qPrintable(source));
}

void tst_SmoothColorShaders::vertexInputs()
{
    const QString source = simplified(resource(u":/shaders/qt6_smoothcolor.vert"_s));
    for (const char *input :
            {"layout(location = 0) in vec4 vertex;", "layout(location = 1) in vec4 vertexColor;",
                    "layout(location = 2) in vec2 vertexOffset;"})
        QVERIFY2(source.contains(QLatin1String(input)), input);
}

void tst_SmoothColorShaders::vertexSource()
{
    const QString source = resource(u":/shaders/qt6_smoothcolor.vert"_s);
    QVERIFY(source.startsWith("#version 440 core\n"_L1));
    QVERIFY(source.contains("void apply_offset(in vec4 delta, inout vec4 pos)"_L1));
}

void tst_SmoothColorShaders::vertexSourceOfOpenGLEs()
{
    const QString source = simplified(resource(u":/shaders/smoothcolor.vert"_s));
    for (const char *text : {"attribute highp vec4 vertex;", "attribute lowp vec4 vertexColor;",
                 "attribute highp vec2 vertexOffset;", "uniform highp vec2 pixelSize;",
                 "uniform highp mat4 matrix;", "uniform lowp float opacity;",
                 "varying lowp vec4 color;"})
        QVERIFY2(source.contains(QLatin1String(text)), text);
    QVERIFY(!source.contains("#version"_L1));
}

void tst_SmoothColorShaders::fragmentSources()
{
    const QString source = resource(u":/shaders/qt6_smoothcolor.frag"_s);
    QVERIFY(source.startsWith("#version 440 core\n"_L1));
    QVERIFY(simplified(source).endsWith("void main() { outColor = color; }"_L1));

    const QString sourceOfEs = simplified(resource(u":/shaders/smoothcolor.frag"_s));
    QVERIFY(sourceOfEs.startsWith("varying lowp vec4 color;"_L1));
    QVERIFY(sourceOfEs.endsWith("void main() { gl_FragColor = color; }"_L1));
}

void tst_SmoothColorShaders::packs_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArrayList>("texts");
    QTest::newRow("vertex") << u":/Charts/resources/shaders/qt6_smoothcolor.vert.qsb"_s
                            << QByteArrayList{"vertexOffset", "pixelSize", "apply_offset",
                                       // The variant for merged batches.
                                       "_qt_order"};
    QTest::newRow("fragment") << u":/Charts/resources/shaders/qt6_smoothcolor.frag.qsb"_s
                              << QByteArrayList{"outColor = color"};
}

void tst_SmoothColorShaders::packs()
{
    QFETCH(QString, path);
    QFETCH(QByteArrayList, texts);

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray pack = qUncompress(file.readAll());
    for (const char *version : {"#version 100", "#version 120", "#version 150"})
        QVERIFY2(pack.contains(version), version);
    for (const QByteArray &text : texts)
        QVERIFY2(pack.contains(text), text.constData());
}

QTEST_GUILESS_MAIN(tst_SmoothColorShaders)

#include "tst_smoothcolorshaders.moc"
