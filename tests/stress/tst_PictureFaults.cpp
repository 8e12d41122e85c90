#include <functional>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

using Damage = std::function<void(const QString &path)>;
Q_DECLARE_METATYPE(Damage)

namespace {

const QColor pictureColour(Qt::blue);
const QColor groundColour(Qt::darkYellow);

void savePicture(const QString &path)
{
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(pictureColour);
    QVERIFY(picture.save(path));
}

/// A corner of the window, which none of its lines reaches.
QColor corner(OutputWindow &window)
{
    return window.grab().toImage().pixelColor(3, 3);
}

void overwrite(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

/// The background picture is lost between two resizes of an Output window that counts.
class PictureFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void lostBetweenTwoResizes_givesWayToTheColour_data()
    {
        QTest::addColumn<Damage>("damage");
        QTest::newRow("deleted") << Damage(
            [](const QString &path) { QVERIFY(QFile::remove(path)); });
        QTest::newRow("emptied") << Damage([](const QString &path) { overwrite(path, {}); });
        QTest::newRow("no picture any more")
            << Damage([](const QString &path) { overwrite(path, QByteArray(10'000, '\x89')); });
        QTest::newRow("cut off within its header")
            << Damage([](const QString &path) { QVERIFY(QFile(path).resize(20)); });
        QTest::newRow("a directory") << Damage([](const QString &path) {
            QVERIFY(QFile::remove(path));
            QVERIFY(QDir().mkdir(path));
        });
    }

    void lostBetweenTwoResizes_givesWayToTheColour()
    {
        QFETCH(Damage, damage);
        const QTemporaryDir directory;
        const QString path = directory.filePath("stage.png");
        savePicture(path);
        AppSettings settings;
        settings.bgColor = groundColour;
        settings.bgImagePath = path;
        settings.bgImageEnabled = true;
        ControlFixture fixture(settings);
        fixture.show();
        fixture.engine.start();
        fixture.output.resize(900, 600);
        QCOMPARE(corner(fixture.output), pictureColour);

        damage(path);
        passSecond(fixture.engine);
        QCOMPARE(corner(fixture.output), pictureColour); // until it is read again
        fixture.output.resize(901, 600);
        QCOMPARE(corner(fixture.output), groundColour);
        passSecond(fixture.engine);
        QCOMPARE(fixture.outputFigure()->text(), QString("04:58"));
        QVERIFY(fixture.engine.isRunning());

        QVERIFY(QDir(path).removeRecursively());
        savePicture(path);
        fixture.output.resize(902, 600);
        QCOMPARE(corner(fixture.output), pictureColour);
    }
};

VELMORA_TEST_MAIN(PictureFaultsTest, twoScreens())
#include "tst_PictureFaults.moc"
