#include <memory>

#include <QImage>
#include <QImageReader>
#include <QTemporaryDir>
#include <QTest>

#include "ControlFixture.h"
#include "Costs.h"
#include "TestMain.h"
#include "Usage.h"

namespace {

constexpr int largestSide = 10'000;
constexpr int repeats = 2;
const QColor pictureColour(0x80, 0x80, 0x80);
const QColor groundColour(Qt::darkBlue);

/// A corner of the window, which none of its lines reaches.
QColor corner(OutputWindow &window)
{
    return window.grab().toImage().pixelColor(3, 3);
}

} // namespace

/// Background pictures of up to a hundred megapixels. One that exceeds Qt's limit on
/// the memory of a picture gives way to the colour; with the limit lifted, what a picture costs
/// grows with its pixels and not faster. The count goes on in either case.
class PictureLoadTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QImageReader::setAllocationLimit(ordinaryLimit); }

    void hundredMegapixels_giveWayToTheColour()
    {
        // Four bytes a pixel are counted, whatever the picture's own depth.
        QVERIFY(ordinaryLimit > 0 && ordinaryLimit < 4 * largestSide / 1024 * largestSide / 1024);
        show(false);
    }

    void hundredMegapixels_withTheLimitLifted_areShown()
    {
        QImageReader::setAllocationLimit(0);
        show(true);
    }

    void pictures_costInProportion()
    {
        QImageReader::setAllocationLimit(0);
        Costs costs("megapixels");
        for (int repeat = 0; repeat < repeats; ++repeat) {
            for (const int side : {2000, 4000, 6000, 8000, largestSide}) {
                const double megapixels = double(side) * side / 1e6;
                ControlFixture fixture(withPicture(save(side)));
                fixture.show();
                QCoreApplication::processEvents();
                costs.measure("a resize", megapixels, [&] {
                    fixture.output.resize(fixture.output.width() - 1, fixture.output.height());
                    QCoreApplication::processEvents();
                });
                QCOMPARE(corner(fixture.output), pictureColour);
                costs.measure("drawing", megapixels, [&] { fixture.output.grab(); });
                costs.measure("a tick", megapixels, [&] {
                    passSecond(fixture.engine);
                    QCoreApplication::processEvents();
                });
                QCOMPARE(fixture.outputFigure()->text(), QString("04:59"));
            }
        }
        QVERIFY2(costs.print(), "Something grows faster than the picture");
    }

private:
    void show(bool isTaken)
    {
        const AppSettings settings = withPicture(save(largestSide));
        const double before = usage::residentKiB();
        std::unique_ptr<ControlFixture> windows;
        const double cost = usage::cpuSeconds([&] {
            windows = std::make_unique<ControlFixture>(settings);
            windows->show();
            QCoreApplication::processEvents();
        });
        ControlFixture &fixture = *windows;
        qInfo("%d x %d pixels with Qt's limit at %d MiB (0 is none): %s, both windows made "
              "and shown in %.0f ms of processor time, %.0f MiB more resident",
              largestSide, largestSide, QImageReader::allocationLimit(),
              isTaken ? "taken" : "not taken", cost * 1000, (usage::residentKiB() - before) / 1024);
        QCOMPARE(corner(fixture.output), isTaken ? pictureColour : groundColour);
        passSecond(fixture.engine);
        QCOMPARE(fixture.outputFigure()->text(), QString("04:59"));
    }

    QString save(int side)
    {
        QString path = directory.filePath(QStringLiteral("%1.png").arg(side));
        if (!QFile::exists(path)) {
            QImage picture(side, side, QImage::Format_RGB32);
            picture.fill(pictureColour);
            if (!picture.save(path))
                qFatal("No picture %s", qPrintable(path));
        }
        return path;
    }

    AppSettings withPicture(const QString &path) const
    {
        AppSettings settings;
        settings.bgColor = groundColour;
        settings.bgImagePath = path;
        settings.bgImageEnabled = true;
        return settings;
    }

    QTemporaryDir directory;
    const int ordinaryLimit = QImageReader::allocationLimit();
};

VELMORA_TEST_MAIN(PictureLoadTest, twoScreens())
#include "tst_PictureLoad.moc"
