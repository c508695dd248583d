// SPDX-License-Identifier: MIT
#include "Program.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <optional>

// The gallery as a program that writes pictures of its pages.
class tst_ScreenshotTour : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void allPages();
    void onePage();
    void constantSignal();
    void step();
    void withoutOpenGl();
    void folderThatTakesNoFiles();
    void nothingToSee();

private:
    [[nodiscard]] ProgramResult run(
            const QStringList &arguments, const QProcessEnvironment &environment =
                                                  QProcessEnvironment::systemEnvironment()) const;
    [[nodiscard]] QString writeTable(const QByteArray &text) const;
    /*! The picture of the page Signal for a file with \a text. */
    [[nodiscard]] QImage pictureOf(const QByteArray &text) const;

    QTemporaryDir m_folder;
};

namespace {

const QString program = QStringLiteral(GALLERY);
const QSize windowSize(1080, 680);

// Colours of the gallery's dark theme, the first one that of the first trace.
constexpr QRgb traceColor = 0x66e08a;
constexpr QRgb frameColor = 0x3a4656;

bool isLike(QRgb pixel, QRgb color, int tolerance)
{
    return std::abs(qRed(pixel) - qRed(color)) <= tolerance
           && std::abs(qGreen(pixel) - qGreen(color)) <= tolerance
           && std::abs(qBlue(pixel) - qBlue(color)) <= tolerance;
}

/*! The area within the frame around the chart: the largest rectangle with border lines in the
    frame's colour, found from its four sides. Empty when there is none. */
QRect chartArea(const QImage &picture)
{
    const auto isFrame = [&picture](int x, int y) {
        return isLike(picture.pixel(x, y), frameColor, 4);
    };
    // A row of the frame is nearly as wide as the window; a column begins at such a row.
    std::vector<int> rows;
    int left = 0;
    int right = 0;
    for (int y = 0; y < picture.height(); ++y) {
        int longest = 0;
        int length = 0;
        for (int x = 0; x < picture.width(); ++x) {
            length = isFrame(x, y) ? length + 1 : 0;
            if (length > longest) {
                longest = length;
                if (longest > picture.width() / 2) {
                    right = x;
                    left = x - longest + 1;
                }
            }
        }
        if (longest > picture.width() / 2)
            rows.push_back(y);
    }
    if (rows.size() != 2)
        return {};
    return QRect(QPoint(left, rows[0]), QPoint(right, rows[1])).adjusted(0, 0, -1, -1);
}

/*! The centre of the pixels in the trace's colour in the column \a x of \a area, from its top, and
    how many there are. */
struct Crossing
{
    double y = -1.0;
    int thickness = 0;
};

Crossing crossingAt(const QImage &picture, const QRect &area, int x)
{
    Crossing crossing;
    double sum = 0.0;
    for (int y = 0; y < area.height(); ++y) {
        if (isLike(picture.pixel(area.left() + x, area.top() + y), traceColor, 60)) {
            ++crossing.thickness;
            sum += y + 0.5;
        }
    }
    if (crossing.thickness > 0)
        crossing.y = sum / crossing.thickness;
    return crossing;
}

} // namespace

ProgramResult tst_ScreenshotTour::run(
        const QStringList &arguments, const QProcessEnvironment &environment) const
{
    return runProgram(program, arguments, m_folder.path(), environment);
}

QString tst_ScreenshotTour::writeTable(const QByteArray &text) const
{
    QFile file(m_folder.filePath(QStringLiteral("signal.csv")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return {};
    return file.fileName();
}

QImage tst_ScreenshotTour::pictureOf(const QByteArray &text) const
{
    const QString shots = m_folder.filePath(QStringLiteral("pictures"));
    const ProgramResult result = run({QStringLiteral("--theme"), QStringLiteral("dark"),
            QStringLiteral("--page"), QStringLiteral("signal"), QStringLiteral("--screenshot"),
            shots, writeTable(text)});
    if (result.exitCode != 0 || !result.errors.isEmpty())
        qWarning("exit code %d, %s", result.exitCode, qPrintable(result.errors));
    return QImage(shots + QStringLiteral("/signal.png"));
}

void tst_ScreenshotTour::allPages()
{
    QStringList expected;
    const QStringList documents = QDir(QStringLiteral(GALLERY_SOURCES "/qml"))
                                          .entryList({QStringLiteral("*Page.qml")}, QDir::Files);
    const QString shots = m_folder.filePath(QStringLiteral("new/all"));
    for (const QString &document : documents) {
        const QString page = document.chopped(QStringLiteral("Page.qml").size());
        expected.append(QStringLiteral("%1/%2.png").arg(shots, page.toLower()));
    }

    const ProgramResult result = run({QStringLiteral("--screenshot"), shots});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QStringList printed = result.output.split(u'\n');
    QCOMPARE(printed.takeLast(), QString());
    printed.sort();
    expected.sort();
    QCOMPARE(printed, expected);
    QCOMPARE(QDir(shots).entryList(QDir::Files).size(), expected.size());
    for (const QString &path : expected)
        QCOMPARE(QImage(path).size(), windowSize);
}

void tst_ScreenshotTour::onePage()
{
    // A relative folder, and a page in small letters; the file's page would be another one.
    const QString file = writeTable("time,value\n0,1\n1,2\n");
    const ProgramResult result = run({QStringLiteral("--page"), QStringLiteral("live"),
            QStringLiteral("--screenshot"), QStringLiteral("one"), file});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, m_folder.filePath(QStringLiteral("one/live.png\n")));
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(QDir(m_folder.filePath(QStringLiteral("one"))).entryList(QDir::Files),
            QStringList{QStringLiteral("live.png")});
}

void tst_ScreenshotTour::constantSignal()
{
    // The range of a constant is symmetric about it: the line is in the middle of the chart.
    QByteArray text = "time [s],value [V]\n";
    for (int i = 0; i <= 400; ++i)
        text += QByteArray::number(i * 0.01) + ",0\n";
    const QImage picture = pictureOf(text);
    QCOMPARE(picture.size(), windowSize);
    const QRect area = chartArea(picture);
    QVERIFY(area.width() > 700 && area.height() > 300);

    int columnsWithLine = 0;
    for (int x = 0; x < area.width(); ++x) {
        const Crossing crossing = crossingAt(picture, area, x);
        if (crossing.thickness == 0)
            continue;
        ++columnsWithLine;
        // 2 px wide as the page has it, more only where antialiasing adds to it.
        QVERIFY(crossing.thickness <= 4);
        QVERIFY2(std::abs(crossing.y - area.height() / 2.0) <= 1.0,
                qPrintable(QStringLiteral("at %1: %2").arg(x).arg(crossing.y)));
    }
    // All but the gap, 4 % of the width.
    QVERIFY2(columnsWithLine > 0.94 * area.width(), qPrintable(QString::number(columnsWithLine)));
    QVERIFY2(columnsWithLine < 0.98 * area.width(), qPrintable(QString::number(columnsWithLine)));
}

void tst_ScreenshotTour::step()
{
    // From 1 to 3 after 1.5 of 4 s. The range is that of the values and 6 % of it more on each side,
    // widened to multiples of a readable step, 0.25.
    QByteArray text = "time [s],value [V]\n";
    for (int i = 0; i <= 400; ++i)
        text += QByteArray::number(i * 0.01) + (i < 150 ? ",1\n" : ",3\n");
    const QImage picture = pictureOf(text);
    QCOMPARE(picture.size(), windowSize);
    const QRect area = chartArea(picture);
    QVERIFY(area.width() > 700 && area.height() > 300);

    // The range is 0.75 to 3.25: 3 stands 0.25 below its top, 1 stands 2.25 below.
    const double upper = 0.25 / 2.5 * area.height();
    const double lower = 2.25 / 2.5 * area.height();
    // The step itself lies between the samples at 1.49 and at 1.5 s.
    const double edgeBegin = 1.49 / 4.0 * area.width();
    const double edgeEnd = 1.50 / 4.0 * area.width();
    int columnsWithLine = 0;
    int edgeColumns = 0;
    for (int x = 0; x < area.width(); ++x) {
        const Crossing crossing = crossingAt(picture, area, x);
        if (crossing.thickness == 0)
            continue;
        ++columnsWithLine;
        const double centre = x + 0.5;
        const QString where = QStringLiteral("at %1: %2").arg(centre).arg(crossing.y);
        if (centre < edgeBegin - 2.0)
            QVERIFY2(std::abs(crossing.y - lower) <= 1.0, qPrintable(where));
        else if (centre > edgeEnd + 2.0)
            QVERIFY2(std::abs(crossing.y - upper) <= 1.0, qPrintable(where));
        else if (crossing.thickness > 20)
            ++edgeColumns;
    }
    QVERIFY(columnsWithLine > 0.94 * area.width());
    // The beam is at half of the sweep, so that the step is seen.
    QVERIFY(edgeColumns > 0);
}

void tst_ScreenshotTour::withoutOpenGl()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    const QString shots = m_folder.filePath(QStringLiteral("software"));
    const ProgramResult result = run({QStringLiteral("--page"), QStringLiteral("signal"),
                                             QStringLiteral("--screenshot"), shots},
            environment);
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errors,
            QStringLiteral("gallery: page Signal draws nothing: no pixel has the colour of "
                           "ECG, computed, Pulse, computed\n"));
    // The picture is there to look at.
    QCOMPARE(result.output, shots + QStringLiteral("/signal.png\n"));
    QCOMPARE(QImage(shots + QStringLiteral("/signal.png")).size(), windowSize);
}

void tst_ScreenshotTour::folderThatTakesNoFiles()
{
    // There, but not even root can write into it.
    const ProgramResult result = run({QStringLiteral("--page"), QStringLiteral("signal"),
            QStringLiteral("--screenshot"), QStringLiteral("/proc")});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(
            result.errors, QStringLiteral("gallery: /proc/signal.png: cannot write the picture\n"));
    QCOMPARE(result.output, QString());
}

void tst_ScreenshotTour::nothingToSee()
{
    // All values are missing: a page without a line is no success.
    const QString file = writeTable("time,value\n0,\n1,nan\n2,\n");
    const ProgramResult result =
            run({QStringLiteral("--screenshot"), m_folder.filePath(QStringLiteral("empty")),
                    QStringLiteral("--page"), QStringLiteral("Signal"), file});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errors,
            QStringLiteral(
                    "gallery: page Signal draws nothing: no pixel has the colour of value\n"));
}

QTEST_GUILESS_MAIN(tst_ScreenshotTour)

#include "tst_screenshottour.moc"
