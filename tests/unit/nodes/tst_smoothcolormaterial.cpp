// SPDX-License-Identifier: MIT
#include "RenderStateStub.h"

#include <ChartsLibrary/SmoothColorMaterial.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QThread>
#include <QtTest/QTest>

#include <cstring>
#include <limits>
#include <memory>
#include <set>
#include <type_traits>

using namespace Charts;
using namespace Qt::StringLiterals;
using State = QSGMaterialShader::RenderState;

namespace {

static_assert(std::is_base_of_v<QSGMaterial, SmoothColorMaterial>);
// No data of its own.
static_assert(sizeof(SmoothColorMaterial) == sizeof(QSGMaterial));

class OtherMaterial : public QSGMaterial
{
public:
    QSGMaterialType *type() const override { return nullptr; }
    QSGMaterialShader *createShader(QSGRendererInterface::RenderMode) const override
    {
        return nullptr;
    }
};

constexpr char untouched = '\x5A';

float floatAt(const QByteArray &bytes, qsizetype position)
{
    float value = 0.0F;
    std::memcpy(&value, bytes.constData() + position, sizeof(value));
    return value;
}

bool isUntouched(const QByteArray &bytes, qsizetype from, qsizetype to)
{
    return bytes.mid(from, to - from) == QByteArray(to - from, untouched);
}

} // namespace

Q_DECLARE_METATYPE(QSGRendererInterface::RenderMode)

class tst_SmoothColorMaterial : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void flags();
    void type();
    void compare();
    void attributeSet();
    void attributeSetIsOne();
    void shaders_data();
    void shaders();

    void nothingChanged();
    void matrix_data();
    void matrix();
    void opacity_data();
    void opacity();
    void pixelSize_data();
    void pixelSize();
    void whatChanged_data();
    void whatChanged();

private:
    SmoothColorMaterial m_material;
};

void tst_SmoothColorMaterial::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_SmoothColorMaterial::flags()
{
    QCOMPARE(m_material.flags(),
            QSGMaterial::Blending | QSGMaterial::RequiresFullMatrixExceptTranslate);
    QVERIFY(!m_material.flags().testFlag(QSGMaterial::RequiresFullMatrix));
    QVERIFY(!m_material.flags().testFlag(QSGMaterial::NoBatching));
}

void tst_SmoothColorMaterial::type()
{
    const SmoothColorMaterial other;
    QVERIFY(m_material.type());
    QCOMPARE(m_material.type(), m_material.type());
    QCOMPARE(other.type(), m_material.type());
}

void tst_SmoothColorMaterial::compare()
{
    const SmoothColorMaterial other;
    const OtherMaterial stranger;
    QCOMPARE(m_material.compare(&m_material), 0);
    QCOMPARE(m_material.compare(&other), 0);
    QCOMPARE(other.compare(&m_material), 0);
    QCOMPARE(m_material.compare(&stranger), 0);
    QCOMPARE(m_material.compare(nullptr), 0);
}

void tst_SmoothColorMaterial::attributeSet()
{
    const QSGGeometry::AttributeSet &set = SmoothColorMaterial::attributeSet();
    QCOMPARE(set.count, 3);
    QCOMPARE(set.stride, 20);

    const QSGGeometry::Attribute &vertex = set.attributes[0];
    QCOMPARE(vertex.position, 0);
    QCOMPARE(vertex.tupleSize, 2);
    QCOMPARE(vertex.type, int(QSGGeometry::FloatType));
    QCOMPARE(vertex.attributeType, QSGGeometry::PositionAttribute);
    QCOMPARE(uint(vertex.isVertexCoordinate), 1U);

    const QSGGeometry::Attribute &color = set.attributes[1];
    QCOMPARE(color.position, 1);
    QCOMPARE(color.tupleSize, 4);
    QCOMPARE(color.type, int(QSGGeometry::UnsignedByteType));
    QCOMPARE(color.attributeType, QSGGeometry::ColorAttribute);
    QCOMPARE(uint(color.isVertexCoordinate), 0U);

    const QSGGeometry::Attribute &offset = set.attributes[2];
    QCOMPARE(offset.position, 2);
    QCOMPARE(offset.tupleSize, 2);
    QCOMPARE(offset.type, int(QSGGeometry::FloatType));
    QCOMPARE(offset.attributeType, QSGGeometry::TexCoordAttribute);
    QCOMPARE(uint(offset.isVertexCoordinate), 0U);
}

// Nodes whose attributes differ in address are not drawn in one batch.
void tst_SmoothColorMaterial::attributeSetIsOne()
{
    const QSGGeometry::AttributeSet *set = &SmoothColorMaterial::attributeSet();
    QCOMPARE(&SmoothColorMaterial::attributeSet(), set);
    const QSGGeometry geometry(SmoothColorMaterial::attributeSet(), 0);
    QCOMPARE(geometry.attributes(), set->attributes);

    std::set<const void *> seen;
    std::unique_ptr<QThread> thread(
            QThread::create([&seen] { seen.insert(&SmoothColorMaterial::attributeSet()); }));
    thread->start();
    thread->wait();
    QCOMPARE(seen, std::set<const void *>{set});
}

void tst_SmoothColorMaterial::shaders_data()
{
    QTest::addColumn<QSGRendererInterface::RenderMode>("renderMode");
    QTest::newRow("2D") << QSGRendererInterface::RenderMode2D;
    QTest::newRow("2D, no depth") << QSGRendererInterface::RenderMode2DNoDepthBuffer;
    QTest::newRow("3D") << QSGRendererInterface::RenderMode3D;
}

void tst_SmoothColorMaterial::shaders()
{
    QFETCH(QSGRendererInterface::RenderMode, renderMode);

    const std::unique_ptr<QSGMaterialShader> shader(m_material.createShader(renderMode));
    const std::unique_ptr<QSGMaterialShader> other(m_material.createShader(renderMode));
    QVERIFY(shader && other && shader != other);
    QCOMPARE(shader->flags(), QSGMaterialShader::Flags());
}

namespace {

/*! Asks the material's shader for its uniforms. */
class Uniforms : public RenderStateStub
{
public:
    explicit Uniforms(const SmoothColorMaterial &material)
        : m_material(material)
        , m_shader(material.createShader(QSGRendererInterface::RenderMode2D))
    {
        uniforms = QByteArray(80, untouched);
        viewport = {0, 0, 640, 480};
    }

    bool update(const QSGMaterial *oldMaterial)
    {
        State renderState = state();
        SmoothColorMaterial newMaterial;
        return m_shader->updateUniformData(
                renderState, &newMaterial, const_cast<QSGMaterial *>(oldMaterial));
    }
    /*! As another than the first material of a pass. */
    bool updateLater() { return update(&m_material); }
    bool updateFirst() { return update(nullptr); }

private:
    const SmoothColorMaterial &m_material;
    std::unique_ptr<QSGMaterialShader> m_shader;
};

} // namespace

void tst_SmoothColorMaterial::nothingChanged()
{
    Uniforms uniforms(m_material);
    QVERIFY(!uniforms.updateLater());
    QVERIFY(isUntouched(uniforms.uniforms, 0, 80));

    // Data of the application in a material is none of this one's.
    uniforms.dirty = State::DirtyCachedMaterialData;
    QVERIFY(!uniforms.updateLater());
    QVERIFY(isUntouched(uniforms.uniforms, 0, 80));
}

void tst_SmoothColorMaterial::matrix_data()
{
    QTest::addColumn<QMatrix4x4>("matrix");
    QTest::newRow("identity") << QMatrix4x4();
    QTest::newRow("all different") << QMatrix4x4(1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F, 7.0F, 8.0F,
            9.0F, 10.0F, 11.0F, 12.0F, 13.0F, 14.0F, 15.0F, 16.0F);
    QTest::newRow("extreme") << QMatrix4x4(-0.0F, 3e38F, 1e-45F, -1e38F, 0.0F, 0.0F, 0.0F, 0.0F,
            0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F);
}

void tst_SmoothColorMaterial::matrix()
{
    QFETCH(QMatrix4x4, matrix);

    Uniforms uniforms(m_material);
    uniforms.dirty = State::DirtyMatrix;
    uniforms.combinedMatrix = matrix;
    uniforms.opacity = 0.25F;
    QVERIFY(uniforms.updateLater());
    // Column by column, as the shader language reads it.
    for (int column = 0; column < 4; ++column) {
        for (int row = 0; row < 4; ++row) {
            const float expected = matrix(row, column);
            QCOMPARE(uniforms.uniforms.mid(16 * column + 4 * row, 4),
                    QByteArray(reinterpret_cast<const char *>(&expected), 4));
        }
    }
    QVERIFY(isUntouched(uniforms.uniforms, 64, 80));
}

void tst_SmoothColorMaterial::opacity_data()
{
    QTest::addColumn<float>("opacity");
    QTest::newRow("opaque") << 1.0F;
    QTest::newRow("half") << 0.5F;
    QTest::newRow("none") << 0.0F;
    QTest::newRow("not exact") << 0.1F;
}

void tst_SmoothColorMaterial::opacity()
{
    QFETCH(float, opacity);

    Uniforms uniforms(m_material);
    uniforms.dirty = State::DirtyOpacity;
    uniforms.opacity = opacity;
    QVERIFY(uniforms.updateLater());
    QVERIFY(floatAt(uniforms.uniforms, 64) == opacity);
    QVERIFY(isUntouched(uniforms.uniforms, 0, 64));
    QVERIFY(isUntouched(uniforms.uniforms, 68, 80));
}

void tst_SmoothColorMaterial::pixelSize_data()
{
    QTest::addColumn<QRect>("viewport");
    QTest::addColumn<float>("width");
    QTest::addColumn<float>("height");

    QTest::newRow("powers of two") << QRect(0, 0, 1024, 512) << 0x1p-9F << 0x1p-8F;
    QTest::newRow("one pixel") << QRect(0, 0, 1, 1) << 2.0F << 2.0F;
    QTest::newRow("wide") << QRect(0, 0, 640, 480) << 0.003125F << float(1.0L / 240.0L);
    QTest::newRow("not at the origin") << QRect(100, -50, 64, 32) << 0x1p-5F << 0x1p-4F;
    const float infinite = std::numeric_limits<float>::infinity();
    QTest::newRow("empty") << QRect(0, 0, 0, 0) << infinite << infinite;
}

void tst_SmoothColorMaterial::pixelSize()
{
    QFETCH(QRect, viewport);
    QFETCH(float, width);
    QFETCH(float, height);

    Uniforms uniforms(m_material);
    uniforms.viewport = viewport;
    QVERIFY(uniforms.updateFirst());
    // Directly behind the opacity, not where the shaders declare it.
    QVERIFY(floatAt(uniforms.uniforms, 68) == width);
    QVERIFY(floatAt(uniforms.uniforms, 72) == height);
    QVERIFY(isUntouched(uniforms.uniforms, 0, 68));
    QVERIFY(isUntouched(uniforms.uniforms, 76, 80));
}

void tst_SmoothColorMaterial::whatChanged_data()
{
    QTest::addColumn<bool>("isMatrixDirty");
    QTest::addColumn<bool>("isOpacityDirty");
    QTest::addColumn<bool>("isFirst");
    for (int bits = 0; bits < 8; ++bits) {
        QTest::addRow("%s%s%s", bits & 1 ? "matrix " : "", bits & 2 ? "opacity " : "",
                bits & 4 ? "first" : "later")
                << bool(bits & 1) << bool(bits & 2) << bool(bits & 4);
    }
}

void tst_SmoothColorMaterial::whatChanged()
{
    QFETCH(bool, isMatrixDirty);
    QFETCH(bool, isOpacityDirty);
    QFETCH(bool, isFirst);

    Uniforms uniforms(m_material);
    uniforms.dirty.setFlag(State::DirtyMatrix, isMatrixDirty);
    uniforms.dirty.setFlag(State::DirtyOpacity, isOpacityDirty);
    const bool isWritten = isFirst ? uniforms.updateFirst() : uniforms.updateLater();
    QCOMPARE(isWritten, isMatrixDirty || isOpacityDirty || isFirst);
    QCOMPARE(isUntouched(uniforms.uniforms, 0, 64), !isMatrixDirty);
    QCOMPARE(isUntouched(uniforms.uniforms, 64, 68), !isOpacityDirty);
    QCOMPARE(isUntouched(uniforms.uniforms, 68, 76), !isFirst);
    QVERIFY(isUntouched(uniforms.uniforms, 76, 80));
}

QTEST_GUILESS_MAIN(tst_SmoothColorMaterial)

#include "tst_smoothcolormaterial.moc"
