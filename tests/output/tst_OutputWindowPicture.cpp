#include <functional>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "AppSettings.h"
#include "GroundPicture.h"
#include "TestMain.h"

namespace {

const QColor ground(0x11, 0x66, 0xbb);

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

} // namespace

/// Which files are taken for the background's picture, and when they are read.
class OutputWindowPictureTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(dir.isValid());
        savePicture(path("whole.png"), Qt::red);
        savePicture(path("twice.png.png"), Qt::red);
        writeFile(path("text.png"), "This is not a picture.\n");
        writeFile(path("empty.png"), QByteArray());
        writeFile(path("cut.png"), QByteArray("\x89PNG\r\n\x1a\n", 8));
        QVERIFY(QDir(dir.path()).mkdir("folder.png"));
    }

    void init()
    {
        settings = AppSettings();
        settings.bgColor = ground;
    }

    void picture_isReadByItsContent_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("png") << "red.png" << QByteArray("png");
        QTest::newRow("jpg") << "red.jpg" << QByteArray("jpg");
        QTest::newRow("jpeg") << "red.jpeg" << QByteArray("jpg");
        QTest::newRow("bmp") << "red.bmp" << QByteArray("bmp");
        QTest::newRow("suffix of another format") << "red-is-a.jpg" << QByteArray("png");
        QTest::newRow("no suffix") << "red" << QByteArray("png");
    }

    void picture_isReadByItsContent()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, format);
        savePicture(path(name), Qt::red, format.constData());
        settings.bgImageEnabled = true;
        settings.bgImagePath = path(name);
        OutputWindow window(&settings);
        window.show();
        const QColor color = cornerColour(window);
        // One format loses a little.
        QVERIFY2(color.red() > 250 && color.green() < 5 && color.blue() < 5,
                 qPrintable(color.name()));
    }

    void nameWithoutSuffix_findsThePicture()
    {
        settings.bgImageEnabled = true;
        settings.bgImagePath = path("whole");
        OutputWindow window(&settings);
        window.show();
        QCOMPARE(cornerColour(window), QColor(Qt::red));
    }

    void unusablePicture_showsTheColour_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QString>("name");
        QTest::newRow("off") << false << "whole.png";
        QTest::newRow("no path") << true << "";
        QTest::newRow("missing") << true << "missing.png";
        QTest::newRow("missing, one with a second suffix there") << true << "twice.png";
        QTest::newRow("text") << true << "text.png";
        QTest::newRow("empty") << true << "empty.png";
        QTest::newRow("cut off") << true << "cut.png";
        QTest::newRow("directory") << true << "folder.png";
    }

    void unusablePicture_showsTheColour()
    {
        QFETCH(bool, enabled);
        QFETCH(QString, name);
        settings.bgImageEnabled = enabled;
        settings.bgImagePath = name.isEmpty() ? QString() : path(name);
        QTest::failOnWarning(QRegularExpression(".*")); // silently
        OutputWindow window(&settings);
        window.show();
        QCOMPARE(cornerColour(window), ground);
        QVERIFY(window.autoFillBackground());
    }

    void largePicture_isShownUpToTheLimit_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QColor>("seen");
        QTest::newRow("camera's, 40 megapixels") << QSize(8000, 5000) << QColor(Qt::red);
        QTest::newRow("256 MiB") << QSize(8192, 8192) << QColor(Qt::red);
        QTest::newRow("a line more") << QSize(8192, 8193) << ground;
    }

    // Every pixel counts four bytes, whatever it takes in the file.
    void largePicture_isShownUpToTheLimit()
    {
        QFETCH(QSize, size);
        QFETCH(QColor, seen);
        QImage picture(size, QImage::Format_Mono);
        picture.setColorTable({QColor(Qt::red).rgb(), QColor(Qt::red).rgb()});
        picture.fill(0);
        QVERIFY(picture.save(path("large.png")));
        settings.bgImageEnabled = true;
        settings.bgImagePath = path("large.png");
        OutputWindow window(&settings);
        window.show();
        QCOMPARE(cornerColour(window), seen);
    }

    void picture_isReadAnew_data()
    {
        using Event = std::function<void(OutputWindow &)>;
        QTest::addColumn<Event>("event");
        QTest::newRow("on a show") << Event([](OutputWindow &window) {
            window.hide();
            window.show();
        });
        QTest::newRow("on a resize") << Event([](OutputWindow &window) {
            window.resize(window.width() + 40, window.height());
            QCoreApplication::processEvents();
        });
        QTest::newRow("on a refresh")
            << Event([](OutputWindow &window) { window.refreshSettings(); });
    }

    // What replaces the picture differs in its pixels alone: its file is of the same size and time.
    void picture_isReadAnew()
    {
        QFETCH(std::function<void(OutputWindow &)>, event);
        const auto replaceBy = [this](const QColor &color) {
            savePicture(path("changing.bmp"), color, "bmp");
            QFile file(path("changing.bmp"));
            QVERIFY(file.open(QIODevice::ReadWrite));
            const QDateTime sameTime(QDate(2026, 1, 2), QTime(3, 4, 5));
            QVERIFY(file.setFileTime(sameTime, QFileDevice::FileModificationTime));
        };
        replaceBy(Qt::red);
        settings.bgImageEnabled = true;
        settings.bgImagePath = path("changing.bmp");
        OutputWindow window(&settings);
        window.resize(800, 500);
        window.show();
        QCOMPARE(cornerColour(window), QColor(Qt::red));
        replaceBy(Qt::green);
        event(window);
        QCOMPARE(cornerColour(window), QColor(Qt::green));
    }

    void pictureThatIsGone_givesWayToTheColour()
    {
        savePicture(path("going.png"), Qt::red);
        settings.bgImageEnabled = true;
        settings.bgImagePath = path("going.png");
        OutputWindow window(&settings);
        window.show();
        QVERIFY(QFile::remove(path("going.png")));
        QCOMPARE(cornerColour(window), QColor(Qt::red)); // until it is read anew
        window.hide();
        window.show();
        QCOMPARE(cornerColour(window), ground);
        QVERIFY(window.autoFillBackground());
        savePicture(path("going.png"), Qt::red);
        window.hide();
        window.show();
        QCOMPARE(cornerColour(window), QColor(Qt::red));
    }

private:
    QString path(const QString &name) const { return dir.filePath(name); }

    QTemporaryDir dir;
    AppSettings settings;
};

VELMORA_TEST_MAIN(OutputWindowPictureTest)
#include "tst_OutputWindowPicture.moc"
