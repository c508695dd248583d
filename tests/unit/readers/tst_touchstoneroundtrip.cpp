// SPDX-License-Identifier: MIT
#include "readers/Touchstone.h"

#include <QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

#include <cmath>
#include <complex>
#include <sstream>
#include <vector>

using Charts::Readers::NetworkData;
using Charts::Readers::readTouchstone;

namespace {

using Complex = std::complex<double>;
using LongComplex = std::complex<long double>;
using Entries = QList<Complex>;
using Resistances = QList<double>;
using Matrix = std::vector<std::vector<LongComplex>>;

constexpr long double Half = 0.5L;

QByteArray textOf(const Entries &entries)
{
    QByteArray text;
    for (const Complex &entry : entries) {
        text += ' ' + QByteArray::number(entry.real(), 'g', 17) + ' '
                + QByteArray::number(entry.imag(), 'g', 17);
    }
    return text;
}

/// A file of version 2 with one frequency.
QByteArray version2(const QByteArray &kind, const Resistances &resistances, const Entries &entries)
{
    QByteArray text = "[Version] 2.0\n# Hz RI " + kind + "\n[Number of Ports] "
                      + QByteArray::number(resistances.size()) + "\n[Reference]";
    for (const double resistance : resistances)
        text += ' ' + QByteArray::number(resistance, 'g', 17);
    return text + "\n[Number of Frequencies] 1\n[Two-Port Data Order] 12_21\n[Network Data]\n1"
           + textOf(entries) + '\n';
}

NetworkData readText(const QByteArray &text)
{
    std::istringstream input(text.toStdString());
    return readTouchstone(input, "test");
}

/// The largest difference between the S parameters of the only frequency and those expected.
double deviation(const NetworkData &network, const Entries &expected)
{
    if (qsizetype(network.parameters.size()) != expected.size())
        return HUGE_VAL;
    double largest = 0;
    for (qsizetype i = 0; i < expected.size(); ++i)
        largest = std::fmax(largest, std::abs(network.parameters[std::size_t(i)] - expected[i]));
    return largest;
}

Matrix unit(std::size_t size)
{
    Matrix matrix(size, std::vector<LongComplex>(size));
    for (std::size_t i = 0; i < size; ++i)
        matrix[i][i] = 1;
    return matrix;
}

Matrix combined(const Matrix &left, const Matrix &right, long double factor)
{
    Matrix sum = left;
    for (std::size_t i = 0; i < sum.size(); ++i) {
        for (std::size_t k = 0; k < sum.size(); ++k)
            sum[i][k] += factor * right[i][k];
    }
    return sum;
}

Matrix product(const Matrix &left, const Matrix &right)
{
    const std::size_t size = left.size();
    Matrix result(size, std::vector<LongComplex>(size));
    for (std::size_t i = 0; i < size; ++i) {
        for (std::size_t k = 0; k < size; ++k) {
            for (std::size_t j = 0; j < size; ++j)
                result[i][k] += left[i][j] * right[j][k];
        }
    }
    return result;
}

/// (1 - matrix)^-1 as the sum of the powers of the matrix, which converges as the entries of a row
/// are less than 1 together.
Matrix inverseOfRest(const Matrix &matrix)
{
    Matrix sum = unit(matrix.size());
    Matrix power = sum;
    for (int i = 0; i < 200; ++i) {
        power = product(power, matrix);
        sum = combined(sum, power, 1);
    }
    return sum;
}

/// S parameters without any symmetry whose rows have magnitudes of less than 0.8 together.
Matrix randomScattering(std::size_t size, QRandomGenerator &random)
{
    Matrix matrix(size, std::vector<LongComplex>(size));
    for (auto &row : matrix) {
        for (LongComplex &value : row) {
            value = std::polar(0.8L * random.generateDouble() / static_cast<long double>(size),
                    6.28L * random.generateDouble());
        }
    }
    return matrix;
}

Entries rounded(const Matrix &matrix)
{
    Entries entries;
    for (const auto &row : matrix) {
        for (const LongComplex &value : row)
            entries.append(Complex(double(value.real()), double(value.imag())));
    }
    return entries;
}

/// From hybrid and inverse hybrid parameters in terms of impedances.
Matrix hybrid(const Matrix &z)
{
    const LongComplex determinant = z[0][0] * z[1][1] - z[0][1] * z[1][0];
    return {{determinant / z[1][1], z[0][1] / z[1][1]}, {-z[1][0] / z[1][1], 1.0L / z[1][1]}};
}

Matrix inverseHybrid(const Matrix &z)
{
    const LongComplex determinant = z[0][0] * z[1][1] - z[0][1] * z[1][0];
    return {{1.0L / z[0][0], -z[0][1] / z[0][0]}, {z[1][0] / z[0][0], determinant / z[0][0]}};
}

} // namespace

class tst_TouchstoneRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void roundTrip_data();
    void roundTrip();
};

void tst_TouchstoneRoundTrip::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void tst_TouchstoneRoundTrip::roundTrip_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("portCount");

    for (const char *const kind : {"Z", "Y"}) {
        for (const int portCount : {1, 2, 3, 4, 7, 16})
            QTest::addRow("%s, %d ports", kind, portCount) << QByteArray(kind) << portCount;
    }
    for (const char *const kind : {"H", "G"})
        QTest::addRow("%s, 2 ports", kind) << QByteArray(kind) << 2;
}

/// From random S parameters to the other kind here, in long double and with the inverse as a power
/// series, and back by the reader.
void tst_TouchstoneRoundTrip::roundTrip()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, portCount);

    const auto size = std::size_t(portCount);
    QRandomGenerator random(quint32(portCount) + 100);
    for (int repetition = 0; repetition < 10; ++repetition) {
        const Matrix scattering = randomScattering(size, random);
        Resistances resistances;
        for (int port = 0; port < portCount; ++port)
            resistances.append(5 + 200 * random.generateDouble());

        // V = sqrt(R) (a + b) and I = (a - b) / sqrt(R) for b = S a.
        const bool isAdmittance = kind == "Y";
        const Matrix outer = combined(unit(size), scattering, isAdmittance ? -1 : 1);
        const Matrix negative = combined(combined(unit(size), unit(size), -1), scattering, -1);
        Matrix given = product(outer, inverseOfRest(isAdmittance ? negative : scattering));
        for (std::size_t i = 0; i < size; ++i) {
            for (std::size_t k = 0; k < size; ++k) {
                const long double scale =
                        std::pow(static_cast<long double>(resistances[qsizetype(i)]), Half)
                        * std::pow(static_cast<long double>(resistances[qsizetype(k)]), Half);
                given[i][k] *= isAdmittance ? 1 / scale : scale;
            }
        }
        if (kind == "H")
            given = hybrid(given);
        else if (kind == "G")
            given = inverseHybrid(given);

        const NetworkData network = readText(version2(kind, resistances, rounded(given)));
        const double difference = deviation(network, rounded(scattering));
        QVERIFY2(difference < 1e-13, QByteArray::number(difference).constData());
    }
}

QTEST_APPLESS_MAIN(tst_TouchstoneRoundTrip)

#include "tst_touchstoneroundtrip.moc"
