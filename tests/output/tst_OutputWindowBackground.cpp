#include <functional>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QPaintEvent>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "AppSettings.h"
#include "OutputParts.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

const QColor ground(0x11, 0x66, 0xbb);

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

bool holdsColour(OutputWindow &window, const QColor &color)
{
    const QImage picture = window.grab(figureArea(window)->geometry()).toImage();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == color)
                return true;
        }
    }
    return false;
}

/// The part of a window that it was asked to draw.
class PaintedRegion : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }

    QRegion region;
};

} // namespace

/// What is drawn behind all else: a colour, or a picture, which files are taken for one, and when
/// they are read.
class OutputWindowBackgroundTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(dir.isValid());
        QImage quadrants(2, 2, QImage::Format_RGB32);
        quadrants.setPixelColor(0, 0, Qt::red);
        quadrants.setPixelColor(1, 0, Qt::green);
        quadrants.setPixelColor(0, 1, Qt::blue);
        quadrants.setPixelColor(1, 1, Qt::yellow);
        QVERIFY(quadrants.save(path("quadrants.png")));
        savePicture(path("red.png"), Qt::red);
        savePicture(path("green.png"), Qt::green);
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

    void cleanup() { qApp->setStyleSheet(QString()); }

    void colour_fillsTheWindow_data()
    {
        QTest::addColumn<QString>("applicationSheet");
        QTest::newRow("bare") << QString();
        QTest::newRow("with the application's style sheet") << applicationStyleSheet();
    }

    void colour_fillsTheWindow()
    {
        QFETCH(QString, applicationSheet);
        // As at start: the window is made first, then the style sheet installed, then it is shown.
        OutputWindow window(&settings);
        QVERIFY(window.autoFillBackground());
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            QCOMPARE(window.palette().brush(group, QPalette::Window), QBrush(ground));
        qApp->setStyleSheet(applicationSheet);
        window.resize(800, 500);
        window.show();
        const QImage picture = window.grab().toImage();
        QCOMPARE(picture.pixelColor(0, 0), ground);
        QCOMPARE(picture.pixelColor(799, 499), ground);
        QCOMPARE(picture.pixelColor(40, 250), ground);  // in the transparent middle
        QCOMPARE(picture.pixelColor(400, 498), ground); // below the bar
        for (const QColor &color : {QColor(Qt::magenta), QColor()}) {
            settings.bgColor = color;
            window.refreshSettings();
            QCOMPARE(cornerColour(window), color.isValid() ? color : QColor(Qt::black));
        }
    }

    void picture_isStretchedWithoutSmoothing_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("applicationSheet");
        QTest::newRow("wide") << QSize(800, 200) << QString();
        QTest::newRow("high") << QSize(200, 800) << QString();
        QTest::newRow("with the application's style sheet")
            << QSize(800, 500) << applicationStyleSheet();
    }

    void picture_isStretchedWithoutSmoothing()
    {
        QFETCH(QSize, size);
        QFETCH(QString, applicationSheet);
        OutputWindow window(&settings);
        usePicture("quadrants.png");
        window.refreshSettings();
        QVERIFY(!window.autoFillBackground());
        qApp->setStyleSheet(applicationSheet);
        window.resize(size);
        window.show();
        const QImage picture = window.grab().toImage();
        QCOMPARE(picture.size(), size);
        // Each pixel of the picture becomes a quarter of the window. Smoothing would blend the
        // colours over half of it; the sharp edge stays within the rasteriser's rounding.
        const int right = size.width() - 1;
        const int bottom = size.height() - 1;
        const int nearX = size.width() / 50;
        const int nearY = size.height() / 50;
        for (const int x : {0, size.width() / 2 - nearX})
            QCOMPARE(picture.pixelColor(x, 0), QColor(Qt::red));
        for (const int x : {size.width() / 2 + nearX, right})
            QCOMPARE(picture.pixelColor(x, 0), QColor(Qt::green));
        for (const int y : {0, size.height() / 2 - nearY}) {
            QCOMPARE(picture.pixelColor(0, y), QColor(Qt::red));
            QCOMPARE(picture.pixelColor(right, y), QColor(Qt::green));
        }
        for (const int y : {size.height() / 2 + nearY, bottom}) {
            QCOMPARE(picture.pixelColor(0, y), QColor(Qt::blue));
            QCOMPARE(picture.pixelColor(right, y), QColor(Qt::yellow));
        }
        // A part of the window gets its part of the picture.
        const QRect quarter(size.width() / 2, size.height() / 2, size.width() / 2,
                            size.height() / 2);
        const QImage part = window.grab(quarter).toImage();
        QCOMPARE(part.pixelColor(part.width() - 2, nearY), QColor(Qt::yellow));
        QCOMPARE(part.pixelColor(nearX, part.height() - 2), QColor(Qt::yellow));
    }

    // A grab draws everything and would not show a window that is left half old and half new.
    void picture_afterAPicture_isDrawnEverywhere()
    {
        usePicture("red.png");
        OutputWindow window(&settings);
        window.resize(800, 500);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCoreApplication::processEvents();

        PaintedRegion painted;
        window.installEventFilter(&painted);
        usePicture("green.png");
        window.refreshSettings();
        QTRY_COMPARE(painted.region.boundingRect(), window.rect());
        QCOMPARE(QRegion(window.rect()) - painted.region, QRegion());
    }

    // Over a picture the figure shows in the ground's colour instead, deliberately.
    void hiddenPhase_isDrawnInTheGroundsColour()
    {
        OutputWindow window(&settings);
        window.setViewMode(0);
        window.resize(800, 500);
        window.show();
        window.onTimerTick(0);
        for (const bool picture : {false, true}) {
            usePicture("green.png");
            settings.bgImageEnabled = picture;
            window.refreshSettings();
            QVERIFY(holdsColour(window, settings.timerColorCritical));
            QCOMPARE(holdsColour(window, ground), !picture);
            window.tickBlink();
            QVERIFY(!holdsColour(window, settings.timerColorCritical));
            QVERIFY(holdsColour(window, ground));
            QCOMPARE(holdsColour(window, Qt::green), picture);
            window.tickBlink();
        }
    }

    void picture_isReadByItsContent_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("png") << "new.png" << QByteArray("png");
        QTest::newRow("jpg") << "new.jpg" << QByteArray("jpg");
        QTest::newRow("jpeg") << "new.jpeg" << QByteArray("jpg");
        QTest::newRow("bmp") << "new.bmp" << QByteArray("bmp");
        QTest::newRow("suffix of another format") << "new-is-a.jpg" << QByteArray("png");
        QTest::newRow("no suffix") << "new" << QByteArray("png");
        QTest::newRow("file with a suffix, name without") << "red" << QByteArray();
    }

    void picture_isReadByItsContent()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, format);
        if (!format.isEmpty())
            savePicture(path(name), Qt::red, format.constData());
        usePicture(name);
        OutputWindow window(&settings);
        window.show();
        const QColor color = cornerColour(window);
        // One format loses a little.
        QVERIFY2(color.red() > 250 && color.green() < 5 && color.blue() < 5,
                 qPrintable(color.name()));
    }

    void unusablePicture_showsTheColour_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QString>("name");
        QTest::newRow("off") << false << "red.png";
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
        QTest::failOnWarning(QRegularExpression(".*")); // silently
        usePicture("red.png");
        OutputWindow window(&settings);
        window.show();
        QCOMPARE(cornerColour(window), QColor(Qt::red));
        settings.bgImageEnabled = enabled;
        settings.bgImagePath = name.isEmpty() ? QString() : path(name);
        window.refreshSettings();
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
        usePicture("large.png");
        OutputWindow window(&settings);
        window.show();
        QCOMPARE(cornerColour(window), seen);
    }

    void picture_isReadAgain_data()
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
        QTest::newRow("on a refresh") << Event(&OutputWindow::refreshSettings);
    }

    // What replaces the picture differs in its pixels alone: its file is of the same size and time.
    void picture_isReadAgain()
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
        usePicture("changing.bmp");
        OutputWindow window(&settings);
        window.resize(800, 500);
        window.show();
        QCOMPARE(cornerColour(window), QColor(Qt::red));
        replaceBy(Qt::green);
        event(window);
        QCOMPARE(cornerColour(window), QColor(Qt::green));
        // A picture that is gone gives way to the colour, and comes back with its file.
        QVERIFY(QFile::remove(path("changing.bmp")));
        QCOMPARE(cornerColour(window), QColor(Qt::green));
        event(window);
        QCOMPARE(cornerColour(window), ground);
        replaceBy(Qt::red);
        event(window);
        QCOMPARE(cornerColour(window), QColor(Qt::red));
    }

private:
    QString path(const QString &name) const { return dir.filePath(name); }

    void usePicture(const QString &name)
    {
        settings.bgImageEnabled = true;
        settings.bgImagePath = path(name);
    }

    QTemporaryDir dir;
    AppSettings settings;
};

VELMORA_TEST_MAIN(OutputWindowBackgroundTest)
#include "tst_OutputWindowBackground.moc"
