#include <QScreen>
#include <QTest>

#include "AppSettings.h"
#include "OutputParts.h"
#include "TestMain.h"

namespace {

const QSize ordinarySize(800, 500);

void show(OutputWindow &window, bool fullScreen)
{
    if (fullScreen) {
        window.setGeometry(window.screen()->geometry());
        window.showFullScreen();
    } else {
        window.resize(ordinarySize);
        window.show();
    }
}

// A window that its content resizes does so in the event loop, step by step: this passes
// as many rounds of it as clock ticks and layouts need.
bool keepsSize(const OutputWindow &window, const QSize &size)
{
    return !QTest::qWaitFor([&] { return window.size() != size; }, 700);
}

QSize expectedSize(const OutputWindow &window, bool fullScreen)
{
    return fullScreen ? window.screen()->size() : ordinarySize;
}

} // namespace

// The content never sizes the window.
class OutputWindowSizeTest : public QObject
{
    Q_OBJECT

private slots:
    void longMessage_leavesTheSizeAlone_data()
    {
        QTest::addColumn<bool>("fullScreen");
        QTest::newRow("full screen") << true;
        QTest::newRow("ordinary window") << false;
    }

    void longMessage_leavesTheSizeAlone()
    {
        QFETCH(bool, fullScreen);
        const AppSettings settings;
        OutputWindow window(&settings);
        show(window, fullScreen);
        window.setMessage(QString(200, QLatin1Char('W')));
        QVERIFY(keepsSize(window, expectedSize(window, fullScreen)));
    }

    void largeFonts_leaveTheSizeAlone_data() { longMessage_leavesTheSizeAlone_data(); }

    void largeFonts_leaveTheSizeAlone()
    {
        QFETCH(bool, fullScreen);
        AppSettings settings;
        settings.timerFontSize = 550;
        settings.clockFontSize = 300;
        settings.messageFontSize = 150;
        OutputWindow window(&settings);
        window.setMessage("Please wrap up");
        show(window, fullScreen);
        window.onTimerTick(59940);
        QVERIFY(keepsSize(window, expectedSize(window, fullScreen)));
    }

    void lowWindow_isPossible()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.show();
        window.resize(800, 50);
        QTRY_COMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", 12));
        QCOMPARE(clockLabel(window)->styleSheet(), figureStyle("#ffffff", 10));
        QCOMPARE(messageLabel(window)->styleSheet(), messageStyle("#ffff00", 8));
        QCOMPARE(window.size(), QSize(800, 50));
        QVERIFY(keepsSize(window, QSize(800, 50)));
    }

    void tinyWindow_isPossible()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setMessage("Please wrap up");
        window.resize(1, 1);
        window.show();
        QCOMPARE(window.size(), QSize(1, 1));
        QVERIFY(!window.grab().isNull());
    }

    void content_setsNoLimits()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setMessage(QString(200, QLatin1Char('W')));
        window.show();
        QCoreApplication::processEvents();
        QCOMPARE(window.minimumSize(), QSize(0, 0));
        QCOMPARE(window.maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    }
};

VELMORA_TEST_MAIN(OutputWindowSizeTest)
#include "tst_OutputWindowSize.moc"
