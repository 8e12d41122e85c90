#include <QBackingStore>
#include <QTemporaryDir>
#include <QTest>

#include "AppSettings.h"
#include "OutputParts.h"
#include "Restyle.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

const QColor ground(0x00, 0x00, 0xff);

/// The ground of every drawing that a window is asked for, seen before anything lies on it.
class PaintedGround : public QObject
{
public:
    explicit PaintedGround(OutputWindow &window)
        : window(window)
    {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            const auto *drawn = dynamic_cast<QImage *>(window.backingStore()->paintDevice());
            colors.append(drawn ? drawn->pixelColor(2, 2) : QColor());
        }
        return false;
    }

    QList<QColor> colors;

private:
    OutputWindow &window;
};

} // namespace

/// The desktop's theme, the style or the application's style sheet changes during a show.
class OutputWindowRestyledTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(dir.isValid());
        savePicture(dir.filePath("holes.png"), Qt::transparent);
    }

    void init()
    {
        QFETCH(QString, style);
        QApplication::setStyle(style);
        settings = AppSettings();
        settings.bgColor = ground;
    }

    void cleanup()
    {
        qApp->setStyleSheet(QString());
        QApplication::setPalette(QPalette());
    }

    void colour_isDrawnAloneUnderTheSameLook_data()
    {
        addRestylings();
        QTest::newRow("fusion, each widget's palette") << "fusion" << Restyling([] {
            for (QWidget *widget : QApplication::allWidgets())
                widget->setPalette(Qt::white);
        });
    }

    void colour_isDrawnAloneUnderTheSameLook()
    {
        QFETCH(Restyling, restyle);
        OutputWindow window(&settings);
        window.setMessage("Five minutes left");
        showWindow(window);
        const QImage before = window.grab().toImage();
        const PaintedGround painted(window);
        restyle();
        QTRY_VERIFY(!painted.colors.isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(painted.colors, QList<QColor>(painted.colors.size(), ground));
        QCOMPARE(cornerColour(window), ground);
        QCOMPARE(window.grab().toImage(), before);
    }

    void hiddenHalfOfTheBlink_staysHidden_data() { addRestylings(); }

    void hiddenHalfOfTheBlink_staysHidden()
    {
        QFETCH(Restyling, restyle);
        OutputWindow window(&settings);
        showWindow(window);
        window.onTimerTick(0);
        window.tickBlink();
        restyle();
        const QImage middle = window.grab(figureArea(window)->geometry()).toImage();
        QImage plain(middle.size(), middle.format());
        plain.fill(ground);
        QCOMPARE(middle, plain);
    }

    void picture_isNotReadAgain_data() { addRestylings(); }

    void picture_isNotReadAgain()
    {
        QFETCH(Restyling, restyle);
        savePicture(dir.filePath("replaced.png"), Qt::red);
        OutputWindow window(&settings);
        showWindow(window);
        usePicture("replaced.png");
        window.refreshSettings();
        savePicture(dir.filePath("replaced.png"), Qt::green);
        restyle();
        QCoreApplication::processEvents();
        QCOMPARE(cornerColour(window), QColor(Qt::red));
        QVERIFY(!window.autoFillBackground());
    }

    void pictureWithHoles_looksTheSame_data() { addRestylings(); }

    // Over the former colour, or from the start.
    void pictureWithHoles_looksTheSame()
    {
        QFETCH(Restyling, restyle);
        for (const bool fromTheStart : {false, true}) {
            settings.bgImageEnabled = fromTheStart;
            OutputWindow window(&settings);
            showWindow(window);
            usePicture("holes.png");
            window.refreshSettings();
            const QImage before = window.grab().toImage();
            QCOMPARE(before.pixelColor(2, 2).alpha(), 255); // of the ground, not of what was there
            restyle();
            QCOMPARE(window.grab().toImage(), before);
        }
    }

private:
    // As at start: the style sheet is installed before the window is shown.
    void showWindow(OutputWindow &window)
    {
        qApp->setStyleSheet(applicationStyleSheet());
        window.setViewMode(0); // the clock would change by itself
        window.resize(800, 500);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCoreApplication::processEvents();
    }

    void usePicture(const QString &name)
    {
        settings.bgImageEnabled = true;
        settings.bgImagePath = dir.filePath(name);
    }

    QTemporaryDir dir;
    AppSettings settings;
};

VELMORA_TEST_MAIN(OutputWindowRestyledTest)
#include "tst_OutputWindowRestyled.moc"
