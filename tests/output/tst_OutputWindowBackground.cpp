#include <QImage>
#include <QPaintEvent>
#include <QTemporaryDir>
#include <QTest>

#include "AppSettings.h"
#include "GroundPicture.h"
#include "OutputParts.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

const QColor ground(0x11, 0x66, 0xbb);

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

} // namespace

namespace {

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

/// What is drawn behind all else, in a colour or from a picture.
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
    }

    void init()
    {
        settings = AppSettings();
        settings.bgColor = ground;
    }

    void cleanup() { qApp->setStyleSheet(QString()); }

    void colour_fillsTheWindow_data()
    {
        QTest::addColumn<bool>("styled");
        QTest::newRow("without the application's style sheet") << false;
        QTest::newRow("with the application's style sheet") << true;
    }

    void colour_fillsTheWindow()
    {
        QFETCH(bool, styled);
        // As at start: the window is made first, then the style sheet installed, then it is shown.
        OutputWindow window(&settings);
        if (styled)
            qApp->setStyleSheet(applicationStyleSheet());
        window.resize(800, 500);
        window.show();
        const QImage picture = window.grab().toImage();
        QCOMPARE(picture.pixelColor(0, 0), ground);
        QCOMPARE(picture.pixelColor(799, 499), ground);
        QCOMPARE(picture.pixelColor(40, 250), ground);  // in the transparent middle
        QCOMPARE(picture.pixelColor(400, 498), ground); // below the bar
    }

    void colour_isInEveryPaletteGroup()
    {
        const OutputWindow window(&settings);
        QVERIFY(window.autoFillBackground());
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            QCOMPARE(window.palette().brush(group, QPalette::Window), QBrush(ground));
    }

    void colour_changesWithARefresh()
    {
        OutputWindow window(&settings);
        window.show();
        settings.bgColor = Qt::magenta;
        window.refreshSettings();
        QCOMPARE(cornerColour(window), QColor(Qt::magenta));
    }

    void invalidColour_doesNotHarm()
    {
        settings.bgColor = QColor();
        OutputWindow window(&settings);
        window.show();
        QVERIFY(window.autoFillBackground());
        QCOMPARE(cornerColour(window), QColor(Qt::black));
    }

    void picture_isStretchedWithoutSmoothing_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("styled");
        QTest::newRow("wide") << QSize(800, 200) << false;
        QTest::newRow("high") << QSize(200, 800) << false;
        QTest::newRow("with the application's style sheet") << QSize(800, 500) << true;
    }

    void picture_isStretchedWithoutSmoothing()
    {
        QFETCH(QSize, size);
        QFETCH(bool, styled);
        settings.bgImageEnabled = true;
        settings.bgImagePath = path("quadrants.png");
        OutputWindow window(&settings);
        if (styled)
            qApp->setStyleSheet(applicationStyleSheet());
        window.resize(size);
        window.show();
        const QImage picture = window.grab().toImage();
        QCOMPARE(picture.size(), size);
        // Each pixel of the picture becomes a quarter of the window. Smoothing would blend the
        // colours over half of it; the sharp edge stays within the rasteriser's rounding.
        const int right = size.width() - 1;
        const int bottom = size.height() - 1;
        const int middleX = size.width() / 2;
        const int middleY = size.height() / 2;
        const int nearX = size.width() / 50;
        const int nearY = size.height() / 50;
        for (int x : {0, middleX - nearX})
            QCOMPARE(picture.pixelColor(x, 0), QColor(Qt::red));
        for (int x : {middleX + nearX, right})
            QCOMPARE(picture.pixelColor(x, 0), QColor(Qt::green));
        for (int y : {0, middleY - nearY}) {
            QCOMPARE(picture.pixelColor(0, y), QColor(Qt::red));
            QCOMPARE(picture.pixelColor(right, y), QColor(Qt::green));
        }
        for (int y : {middleY + nearY, bottom}) {
            QCOMPARE(picture.pixelColor(0, y), QColor(Qt::blue));
            QCOMPARE(picture.pixelColor(right, y), QColor(Qt::yellow));
        }
    }

    void picture_isDrawnInPartWhereAsked()
    {
        settings.bgImageEnabled = true;
        settings.bgImagePath = path("quadrants.png");
        OutputWindow window(&settings);
        window.resize(800, 500);
        window.show();
        const QImage quarter = window.grab(QRect(400, 250, 400, 250)).toImage();
        QCOMPARE(quarter.pixelColor(398, 2), QColor(Qt::yellow)); // in the right margin
        QCOMPARE(quarter.pixelColor(2, 248), QColor(Qt::yellow)); // in the bottom margin
    }

    void picture_switchesTheFillOff()
    {
        OutputWindow window(&settings);
        QVERIFY(window.autoFillBackground());
        settings.bgImageEnabled = true;
        settings.bgImagePath = path("quadrants.png");
        window.refreshSettings();
        QVERIFY(!window.autoFillBackground());
    }

    // A grab draws everything and would not show a window that is left half old and half new.
    void picture_afterAPicture_isDrawnEverywhere()
    {
        savePicture(path("one.png"), Qt::red);
        savePicture(path("other.png"), Qt::green);
        settings.bgImageEnabled = true;
        settings.bgImagePath = path("one.png");
        OutputWindow window(&settings);
        window.resize(800, 500);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCoreApplication::processEvents();

        PaintedRegion painted;
        window.installEventFilter(&painted);
        settings.bgImagePath = path("other.png");
        window.refreshSettings();
        QTRY_COMPARE(painted.region.boundingRect(), window.rect());
        QCOMPARE(QRegion(window.rect()) - painted.region, QRegion());
    }

    void pictureSwitchedOff_givesWayToTheColour()
    {
        settings.bgImageEnabled = true;
        settings.bgImagePath = path("quadrants.png");
        OutputWindow window(&settings);
        window.show();
        settings.bgImageEnabled = false;
        window.refreshSettings();
        QCOMPARE(cornerColour(window), ground);
    }

    void blinkOverAPicture_showsTheGroundsColour()
    {
        savePicture(path("plain.png"), Qt::white);
        settings.bgImageEnabled = true;
        settings.bgImagePath = path("plain.png");
        OutputWindow window(&settings);
        window.setViewMode(0);
        window.resize(800, 500);
        window.show();
        window.onTimerTick(0);
        QVERIFY(holdsColour(window, settings.timerColorCritical));
        QVERIFY(!holdsColour(window, ground));
        window.tickBlink();
        QVERIFY(!holdsColour(window, settings.timerColorCritical));
        QVERIFY(holdsColour(window, ground));
    }

private:
    QString path(const QString &name) const { return dir.filePath(name); }

    QTemporaryDir dir;
    AppSettings settings;
};

VELMORA_TEST_MAIN(OutputWindowBackgroundTest)
#include "tst_OutputWindowBackground.moc"
