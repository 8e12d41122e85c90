#include <limits>

#include <QTest>

#include "AppSettings.h"
#include "OutputParts.h"
#include "TestMain.h"

namespace {

constexpr int intMax = std::numeric_limits<int>::max();
constexpr int intMin = std::numeric_limits<int>::min();

const QString normal = QStringLiteral("#010203");
const QString warning = QStringLiteral("#aabbcc");
const QString critical = QStringLiteral("#fedcba");

AppSettings threeColours()
{
    AppSettings settings;
    settings.timerColorNormal = QColor(normal);
    settings.timerColorWarning = QColor(warning);
    settings.timerColorCritical = QColor(critical);
    return settings;
}

} // namespace

class OutputWindowLookTest : public QObject
{
    Q_OBJECT

private slots:
    void colour_followsTheThreshold_data()
    {
        QTest::addColumn<int>("threshold");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("color");
        QTest::newRow("60: far above") << 60 << 5400 << normal;
        QTest::newRow("60: just above") << 60 << 61 << normal;
        QTest::newRow("60: at it") << 60 << 60 << warning;
        QTest::newRow("60: last second") << 60 << 1 << warning;
        QTest::newRow("60: zero") << 60 << 0 << critical;
        QTest::newRow("60: overtime") << 60 << -1 << critical;
        QTest::newRow("60: largest") << 60 << intMax << normal;
        QTest::newRow("60: smallest") << 60 << intMin << critical;
        QTest::newRow("1: just above") << 1 << 2 << normal;
        QTest::newRow("1: at it") << 1 << 1 << warning;
        QTest::newRow("3600: just above") << 3600 << 3601 << normal;
        QTest::newRow("3600: at it") << 3600 << 3600 << warning;
        // No load yields such thresholds; the comparison with the threshold still comes first.
        QTest::newRow("-5: zero") << -5 << 0 << normal;
        QTest::newRow("-5: at it") << -5 << -5 << critical;
    }

    void colour_followsTheThreshold()
    {
        QFETCH(int, threshold);
        QFETCH(int, seconds);
        QFETCH(QString, color);
        AppSettings settings = threeColours();
        settings.warningThreshold = threshold;
        OutputWindow window(&settings);
        setHeight(window, 1080);
        window.onTimerTick(seconds);
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle(color, 150));
        QCOMPARE(progressBar(window)->styleSheet(), barStyle(color));
    }

    void colour_ignoresTheCountDirection_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("color");
        QTest::newRow("above") << 61 << normal;
        QTest::newRow("at the threshold") << 60 << warning;
        QTest::newRow("last second") << 1 << warning;
        QTest::newRow("zero") << 0 << critical;
        QTest::newRow("below zero") << -5 << critical;
    }

    // Unlike the Control window's figure, which is in the normal colour while counting up.
    void colour_ignoresTheCountDirection()
    {
        QFETCH(int, seconds);
        QFETCH(QString, color);
        const AppSettings settings = threeColours();
        OutputWindow window(&settings);
        setHeight(window, 1080);
        window.setCountUp(true);
        window.onTimerTick(seconds);
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle(color, 150));
        QCOMPARE(progressBar(window)->styleSheet(), barStyle(color));
    }

    void refreshSettings_recoloursWithTheNewThreshold()
    {
        AppSettings settings = threeColours();
        OutputWindow window(&settings);
        setHeight(window, 1080);
        window.onTimerTick(100);
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle(normal, 150));
        settings.warningThreshold = 100;
        window.refreshSettings();
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle(warning, 150));
        QCOMPARE(progressBar(window)->styleSheet(), barStyle(warning));
    }

    void refreshSettings_readsEveryColour()
    {
        AppSettings settings;
        OutputWindow window(&settings);
        setHeight(window, 1080);
        QCOMPARE(clockLabel(window)->styleSheet(), figureStyle("#ffffff", 80));
        QCOMPARE(messageLabel(window)->styleSheet(), messageStyle("#ffff00", 36));
        settings.timerColorNormal = QColor("#102030");
        settings.clockColor = QColor("#405060");
        settings.messageColor = QColor("#708090");
        window.refreshSettings();
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#102030", 150));
        QCOMPARE(progressBar(window)->styleSheet(), barStyle("#102030"));
        QCOMPARE(clockLabel(window)->styleSheet(), figureStyle("#405060", 80));
        QCOMPARE(messageLabel(window)->styleSheet(), messageStyle("#708090", 36));
    }

    void colourWithAlpha_isWrittenWithoutIt()
    {
        AppSettings settings;
        settings.timerColorNormal = QColor(255, 0, 128, 10);
        OutputWindow window(&settings);
        setHeight(window, 1080);
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#ff0080", 150));
    }

    // Such a colour comes from a store with a text that names none.
    void invalidColour_isWrittenAsBlack()
    {
        AppSettings settings;
        for (QColor *color : {&settings.bgColor, &settings.timerColorNormal, &settings.clockColor,
                              &settings.messageColor})
            *color = QColor();
        OutputWindow window(&settings);
        window.show();
        setHeight(window, 1080);
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#000000", 150));
        QCOMPARE(progressBar(window)->styleSheet(), barStyle("#000000"));
        QCOMPARE(clockLabel(window)->styleSheet(), figureStyle("#000000", 80));
        QCOMPARE(messageLabel(window)->styleSheet(), messageStyle("#000000", 36));
        window.tickBlink();
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#000000", 150));
        QVERIFY(!window.grab().isNull());
    }

    void fonts_followTheHeight_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<QList<int>>("sizes"); // of the record: figure, clock, message
        QTest::addColumn<QList<int>>("pixels");
        const QList<int> usual{150, 80, 36};
        QTest::newRow("reference height") << 1080 << usual << usual;
        QTest::newRow("half") << 540 << usual << QList<int>{75, 40, 18};
        QTest::newRow("double") << 2160 << usual << QList<int>{300, 160, 72};
        QTest::newRow("ordinary window") << 500 << usual << QList<int>{69, 37, 17};
        QTest::newRow("50 pixels: floors") << 50 << usual << QList<int>{12, 10, 8};
        QTest::newRow("1 pixel: floors") << 1 << QList<int>{550, 300, 150} << QList<int>{12, 10, 8};
        QTest::newRow("halves go up") << 540 << QList<int>{149, 77, 33} << QList<int>{75, 39, 17};
        QTest::newRow("halves of even numbers")
            << 540 << QList<int>{145, 81, 37} << QList<int>{73, 41, 19};
        QTest::newRow("below a half") << 1079 << usual << QList<int>{150, 80, 36};
        QTest::newRow("just at the floors")
            << 1080 << QList<int>{12, 10, 8} << QList<int>{12, 10, 8};
        QTest::newRow("just above the floors")
            << 1080 << QList<int>{13, 11, 9} << QList<int>{13, 11, 9};
        QTest::newRow("a record that was never loaded")
            << 1080 << QList<int>{-40, 0, -1} << QList<int>{12, 10, 8};
    }

    void fonts_followTheHeight()
    {
        QFETCH(int, height);
        QFETCH(QList<int>, sizes);
        QFETCH(QList<int>, pixels);
        AppSettings settings;
        settings.timerFontSize = sizes.at(0);
        settings.clockFontSize = sizes.at(1);
        settings.messageFontSize = sizes.at(2);
        OutputWindow window(&settings);
        setHeight(window, height);
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", pixels.at(0)));
        QCOMPARE(clockLabel(window)->styleSheet(), figureStyle("#ffffff", pixels.at(1)));
        QCOMPARE(messageLabel(window)->styleSheet(), messageStyle("#ffff00", pixels.at(2)));
    }

    void fonts_withoutAnyHeight_stayAsTheyWere()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        setHeight(window, 540);
        setHeight(window, 0);
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", 75));
    }

    void fonts_ignoreTheWidth()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.resize(3000, 540);
        window.refreshSettings();
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", 75));
        window.resize(100, 540);
        window.refreshSettings();
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", 75));
    }

    void resize_whileShown_scalesTheFonts()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.resize(800, 540);
        window.show();
        window.resize(800, 270);
        QTRY_COMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", 38));
    }

    void show_scalesTheFonts()
    {
        AppSettings settings;
        OutputWindow window(&settings);
        window.resize(800, 540);
        window.show();
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", 75));
        window.hide();
        settings.timerFontSize = 300; // nothing told the window; its next show reads it
        window.show();
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", 150));
    }

    void refreshSettings_readsTheFontSizes()
    {
        AppSettings settings;
        OutputWindow window(&settings);
        setHeight(window, 1080);
        settings.timerFontSize = 550;
        settings.clockFontSize = 300;
        settings.messageFontSize = 150;
        window.refreshSettings();
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", 550));
        QCOMPARE(clockLabel(window)->styleSheet(), figureStyle("#ffffff", 300));
        QCOMPARE(messageLabel(window)->styleSheet(), messageStyle("#ffff00", 150));
    }

    void tick_keepsTheFontSize()
    {
        AppSettings settings;
        OutputWindow window(&settings);
        setHeight(window, 540);
        settings.timerFontSize = 300; // read by a refresh only
        window.onTimerTick(200);
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", 75));
    }

    void bar_hasItsValue_data()
    {
        QTest::addColumn<int>("total");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<int>("value");
        QTest::newRow("full") << 300 << 300 << 1000;
        QTest::newRow("half") << 300 << 150 << 500;
        QTest::newRow("zero") << 300 << 0 << 0;
        QTest::newRow("overtime") << 300 << -20 << 0;
        QTest::newRow("counted up beyond the total") << 300 << 450 << 1000;
        QTest::newRow("rounded down") << 3 << 1 << 333;
        QTest::newRow("rounded up") << 3 << 2 << 667;
        QTest::newRow("half of a step goes up") << 2000 << 1 << 1;
        QTest::newRow("half above an even step goes up") << 2000 << 5 << 3;
        QTest::newRow("below half of a step") << 2001 << 1 << 0;
        QTest::newRow("total zero counts as one second") << 0 << 1 << 1000;
        QTest::newRow("total zero at zero") << 0 << 0 << 0;
        QTest::newRow("negative total counts as one second") << -300 << 1 << 1000;
        QTest::newRow("smallest total") << intMin << 1 << 1000;
        QTest::newRow("longest count over the shortest total") << 1 << intMax << 1000;
        QTest::newRow("smallest count") << 300 << intMin << 0;
        QTest::newRow("largest count and total") << intMax << intMax << 1000;
        QTest::newRow("half of the largest total") << intMax << 1073741824 << 500;
    }

    void bar_hasItsValue()
    {
        QFETCH(int, total);
        QFETCH(int, seconds);
        const AppSettings settings;
        OutputWindow window(&settings);
        // From the middle: the bar leaves alone what is out of its range, and would stay at its end.
        window.onTimerTick(150);
        QCOMPARE(progressBar(window)->value(), 500);
        window.setTotalSeconds(total);
        window.onTimerTick(seconds);
        QTEST(progressBar(window)->value(), "value");
    }

    void setTotalSeconds_movesTheBarAtOnce()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setTotalSeconds(600); // the count stands at 300
        QCOMPARE(progressBar(window)->value(), 500);
    }

    void total_isThreeHundredUntilSet()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.onTimerTick(30);
        QCOMPARE(progressBar(window)->value(), 100);
    }
};

VELMORA_TEST_MAIN(OutputWindowLookTest)
#include "tst_OutputWindowLook.moc"
