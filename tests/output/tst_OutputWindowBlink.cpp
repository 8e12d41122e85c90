#include <climits>
#include <functional>
#include <memory>

#include <QTest>
#include <QTimer>

#include "AppSettings.h"
#include "OutputParts.h"
#include "TestMain.h"

namespace {

using Step = std::function<void(OutputWindow &, AppSettings &)>;

Step tick(int seconds)
{
    return [seconds](OutputWindow &window, AppSettings &) { window.onTimerTick(seconds); };
}

Step countUp(bool up)
{
    return [up](OutputWindow &window, AppSettings &) { window.setCountUp(up); };
}

Step enable(bool enabled)
{
    return [enabled](OutputWindow &window, AppSettings &settings) {
        settings.blinkEnabled = enabled;
        window.refreshSettings();
    };
}

const Step phase = [](OutputWindow &window, AppSettings &) { window.tickBlink(); };
const Step hideAndShow = [](OutputWindow &window, AppSettings &) {
    window.show();
    window.hide();
    window.show();
};

const QString ground = QStringLiteral("#123456");
const QString critical = QStringLiteral("#ff2200");

bool isHiddenPhase(const OutputWindow &window)
{
    return figureLabel(window)->styleSheet().startsWith("color:" + ground);
}

// Only a running blink is ended by a positive count, which brings a hidden figure back.
bool endsBlink(OutputWindow &window)
{
    if (!isHiddenPhase(window))
        window.tickBlink();
    window.onTimerTick(5);
    return !isHiddenPhase(window);
}

/// Collects the timers of the process that time out while it lives.
class TimerWatch : public QObject
{
public:
    TimerWatch() { qApp->installEventFilter(this); }

    QList<const QTimer *> fired;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto *timer = qobject_cast<QTimer *>(watched);
        if (timer && event->type() == QEvent::Timer && !fired.contains(timer))
            fired.append(timer);
        return false;
    }
};

} // namespace

class OutputWindowBlinkTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        settings = AppSettings();
        settings.bgColor = QColor(ground);
        window = std::make_unique<OutputWindow>(&settings);
        setHeight(*window, 1080);
    }

    void cleanup() { window.reset(); }

    void blink_startsAndEnds_data()
    {
        QTest::addColumn<QList<Step>>("steps");
        QTest::addColumn<bool>("blinking");
        using Steps = QList<Step>;
        QTest::newRow("fresh") << Steps{} << false;
        QTest::newRow("positive tick") << Steps{tick(1)} << false;
        QTest::newRow("overtime without zero before") << Steps{tick(-1)} << false;
        QTest::newRow("phase change alone") << Steps{phase} << false;
        QTest::newRow("zero") << Steps{tick(0)} << true;
        QTest::newRow("zero, blink off") << Steps{enable(false), tick(0)} << false;
        QTest::newRow("zero, counting up") << Steps{countUp(true), tick(0)} << false;
        QTest::newRow("zero, counting down again")
            << Steps{countUp(true), countUp(false), tick(0)} << true;
        QTest::newRow("blink on only after zero")
            << Steps{enable(false), tick(0), enable(true), tick(-1)} << false;
        QTest::newRow("blink on, second zero")
            << Steps{enable(false), tick(0), enable(true), tick(0)} << true;
        QTest::newRow("zero twice") << Steps{tick(0), tick(0)} << true;
        QTest::newRow("zero, overtime") << Steps{tick(0), tick(-1)} << true;
        QTest::newRow("zero, long overtime") << Steps{tick(0), tick(-1), tick(INT_MIN)} << true;
        QTest::newRow("zero, hidden phase, overtime") << Steps{tick(0), phase, tick(-1)} << true;
        QTest::newRow("zero, blink off afterwards")
            << Steps{tick(0), enable(false), tick(-1)} << true;
        QTest::newRow("zero, blink off, zero again")
            << Steps{tick(0), enable(false), tick(0)} << true;
        QTest::newRow("zero, window hidden and shown") << Steps{tick(0), hideAndShow} << true;
        QTest::newRow("zero, one second") << Steps{tick(0), tick(1)} << false;
        QTest::newRow("zero, hidden phase, one second") << Steps{tick(0), phase, tick(1)} << false;
        QTest::newRow("zero, overtime, reset") << Steps{tick(0), tick(-1), tick(300)} << false;
        QTest::newRow("zero, reset, zero") << Steps{tick(0), tick(300), tick(0)} << true;
        QTest::newRow("zero, count up") << Steps{tick(0), countUp(true)} << false;
        QTest::newRow("zero, count down") << Steps{tick(0), countUp(false)} << false;
        QTest::newRow("zero, count up, overtime")
            << Steps{tick(0), countUp(true), tick(-1)} << false;
        QTest::newRow("zero, count down, overtime")
            << Steps{tick(0), countUp(false), tick(-1)} << false;
    }

    // Setting the direction ends the blink here, unlike in the Control window. Switching the
    // setting off ends it in neither.
    void blink_startsAndEnds()
    {
        QFETCH(QList<Step>, steps);
        for (const Step &step : steps)
            step(*window, settings);
        QTEST(endsBlink(*window), "blinking");
    }

    void tickBlink_alternatesFromTheFigure()
    {
        setHeight(*window, 540);
        window->tickBlink(); // no blink runs: nothing but a start of it would bring the figure back
        QVERIFY(isHiddenPhase(*window));
        window->onTimerTick(0);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle(critical, 75));
            QCOMPARE(figureLabel(*window)->text(), QStringLiteral("00:00"));
            window->tickBlink();
            QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle(ground, 75));
            QCOMPARE(figureLabel(*window)->text(), QStringLiteral("00:00"));
            QVERIFY(figureLabel(*window)->isVisibleTo(window.get()));
            window->onTimerTick(0); // another zero changes nothing
            QVERIFY(isHiddenPhase(*window));
            window->tickBlink();
        }
    }

    // The bar keeps to the colour rule meanwhile.
    void overtime_whileHidden_showsWithTheNextPhase()
    {
        hideFigure();
        QCOMPARE(progressBar(*window)->styleSheet(), barStyle(critical));
        settings.timerColorCritical = QColor("#00ffff");
        window->onTimerTick(-1);
        QCOMPARE(figureLabel(*window)->text(), QStringLiteral("00:00"));
        QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle(ground, 150));
        QCOMPARE(progressBar(*window)->styleSheet(), barStyle("#00ffff"));
        QCOMPARE(progressBar(*window)->value(), 0);
        window->tickBlink();
        QCOMPARE(figureLabel(*window)->text(), QStringLiteral("-00:01"));
        QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle("#00ffff", 150));
    }

    void endOfTheBlink_whileHidden_showsTheFigureAtOnce_data()
    {
        QTest::addColumn<Step>("step");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("style");
        QTest::newRow("positive tick") << tick(300) << "05:00" << figureStyle("#00cc00", 150);
        QTest::newRow("up") << countUp(true) << "-00:03" << figureStyle(critical, 150);
        QTest::newRow("down again") << countUp(false) << "-00:03" << figureStyle(critical, 150);
    }

    void endOfTheBlink_whileHidden_showsTheFigureAtOnce()
    {
        QFETCH(Step, step);
        hideFigure();
        window->onTimerTick(-3);
        step(*window, settings);
        QTEST(figureLabel(*window)->text(), "text");
        QTEST(figureLabel(*window)->styleSheet(), "style");
    }

    void countUp_whenIdle_redrawsNothing()
    {
        settings.timerColorNormal = QColor("#abcdef");
        window->setCountUp(true);
        QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle("#00cc00", 150));
    }

    void refreshSettings_whileHidden_leavesTheFigureAlone()
    {
        hideFigure();
        settings.timerFontSize = 300;
        settings.bgColor = QColor("#654321");
        settings.messageColor = QColor("#00ffff");
        window->refreshSettings();
        QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle(ground, 150));
        QCOMPARE(messageLabel(*window)->styleSheet(), messageStyle("#00ffff", 36));
        window->tickBlink();
        QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle(critical, 300));
    }

    void timers_haveHalfASecond()
    {
        const TimerWatch watch;
        window->onTimerTick(0);
        QTRY_VERIFY_WITH_TIMEOUT(isHiddenPhase(*window), 2000);
        QTRY_VERIFY_WITH_TIMEOUT(!isHiddenPhase(*window), 2000);
        QCOMPARE(watch.fired.size(), 2); // the clock's and the blink's
        for (const QTimer *timer : watch.fired) {
            QCOMPARE(timer->interval(), 500);
            QVERIFY(!timer->isSingleShot());
        }
    }

    void zeros_doNotHoldUpThePhase()
    {
        window->onTimerTick(0);
        QTimer zeros;
        connect(&zeros, &QTimer::timeout, window.get(), [this] { window->onTimerTick(0); });
        zeros.start(100);
        QTRY_VERIFY_WITH_TIMEOUT(isHiddenPhase(*window), 2000);
    }

    void idle_doesNotBlinkByItself()
    {
        window->onTimerTick(0);
        window->onTimerTick(300);
        clockLabel(*window)->setText("stale");
        // The clock's timer is as slow as the blink's: once it has ticked, a blink would have.
        const TimerWatch watch;
        QTRY_VERIFY_WITH_TIMEOUT(clockLabel(*window)->text() != "stale", 2000);
        QVERIFY(!isHiddenPhase(*window));
        QCOMPARE(watch.fired.size(), 1);
    }

private:
    void hideFigure()
    {
        window->onTimerTick(0);
        window->tickBlink();
        QVERIFY(isHiddenPhase(*window));
    }

    AppSettings settings;
    std::unique_ptr<OutputWindow> window;
};

VELMORA_TEST_MAIN(OutputWindowBlinkTest)
#include "tst_OutputWindowBlink.moc"
