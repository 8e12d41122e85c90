#include <QTest>

#include "Accessible.h"
#include "AppSettings.h"
#include "OutputParts.h"
#include "TestMain.h"

namespace {

// The window on the screen, with the figure of 5 seconds of 20.
struct Shown
{
    Shown()
        : window(&settings)
    {
        window.resize(800, 500);
        window.setTotalSeconds(20);
        window.onTimerTick(5);
        window.setMessage("Wrap up");
        window.show();
    }

    AppSettings settings;
    OutputWindow window;
};

} // namespace

/// What a screen reader says of the Output window. It is there for an audience: its texts
/// are their own names, and nothing in it takes the keyboard.
class OutputWindowAccessibilityTest : public QObject
{
    Q_OBJECT

private slots:
    void controls_areTheProgressBarAlone()
    {
        Shown shown;
        QCOMPARE(controlLines(shown.window), QStringList{"progress Timer progress"});
        QCOMPARE(unsayableNames(shown.window).join("; "), QString());
    }

    void progress_isSaidAsItIsShown()
    {
        const Shown shown;
        QAccessibleInterface *bar =
            QAccessible::queryAccessibleInterface(progressBar(shown.window));
        QVERIFY(bar && bar->valueInterface());
        QCOMPARE(bar->valueInterface()->currentValue().toInt(), 250);
        QCOMPARE(bar->valueInterface()->maximumValue().toInt(), 1000);
    }

    void lines_areSaidAsTheyAreShown()
    {
        Shown shown;
        const QString clock = clockLabel(shown.window)->text();
        QCOMPARE(textLines(shown.window),
                 QStringList({"00:05 (Timer)", clock + " (Clock)", "Wrap up (Message)"}));
        shown.window.onTimerTick(-61);
        QVERIFY(textLines(shown.window).contains("-01:01 (Timer)"));
    }

    void hiddenLine_isNotSaid_data()
    {
        QTest::addColumn<int>("viewMode");
        QTest::addColumn<bool>("figure");
        QTest::addColumn<bool>("clock");
        QTest::newRow("figure only") << 0 << true << false;
        QTest::newRow("clock only") << 1 << false << true;
        QTest::newRow("both") << 2 << true << true;
    }

    void hiddenLine_isNotSaid()
    {
        QFETCH(int, viewMode);
        Shown shown;
        shown.window.setViewMode(viewMode);
        const QString said = textLines(shown.window).join('\n');
        QTEST(said.contains("(Timer)"), "figure");
        QTEST(said.contains("(Clock)"), "clock");
    }

    void hiddenBlinkPhase_keepsTheFigureSaid()
    {
        Shown shown;
        shown.window.onTimerTick(0);
        shown.window.tickBlink();
        QVERIFY(figureLabel(shown.window)->styleSheet().contains(shown.settings.bgColor.name()));
        QVERIFY(textLines(shown.window).contains("00:00 (Timer)"));
    }

    void richMessage_isSaidWithoutMarkUp()
    {
        Shown shown;
        shown.window.setMessage("<b>Five</b> minutes");
        QVERIFY(textLines(shown.window).contains("Five minutes (Message)"));
    }

    void tab_stopsNowhere()
    {
        Shown shown;
        QCOMPARE(tabStops(shown.window).size(), 0);
    }
};

VELMORA_TEST_MAIN(OutputWindowAccessibilityTest)
#include "tst_OutputWindowAccessibility.moc"
