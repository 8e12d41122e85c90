#include <climits>
#include <functional>
#include <utility>

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "TestMain.h"
#include "Timeouts.h"
#include "TimerEngine.h"

namespace {

/// Writes down what an engine emits, over both signals in one list, so that their order can
/// be compared: "tick 299", "running", "stopped".
class EngineRecorder
{
public:
    explicit EngineRecorder(const TimerEngine &engine)
    {
        QObject::connect(&engine, &TimerEngine::tick, &context,
                         [this](int seconds) { mark(QStringLiteral("tick %1").arg(seconds)); });
        QObject::connect(&engine, &TimerEngine::stateChanged, &context,
                         [this](bool running) { mark(running ? "running" : "stopped"); });
    }

    /// Adds a line of the test's own between the emissions.
    void mark(const QString &text) { entries.append(text); }

    /// What was written since the last call.
    QStringList take() { return std::exchange(entries, {}); }

private:
    QObject context;
    QStringList entries;
};

using Command = std::function<void(TimerEngine &)>;
using Commands = QList<Command>;

const Command starts = &TimerEngine::start;
const Command pauses = &TimerEngine::pause;
const Command resets = &TimerEngine::reset;

/// Lets seconds pass for the engine, as its timer does: the timer's handler is run.
Command seconds(int count)
{
    return [count](TimerEngine &engine) {
        for (int i = 0; i < count; ++i)
            QMetaObject::invokeMethod(&engine, "onTimeout", Qt::DirectConnection);
    };
}

Command duration(int seconds)
{
    return [seconds](TimerEngine &engine) { engine.setDuration(seconds); };
}

Command add(int delta)
{
    return [delta](TimerEngine &engine) { engine.addSeconds(delta); };
}

Command up(bool countUp)
{
    return [countUp](TimerEngine &engine) { engine.setCountUp(countUp); };
}

Command overtime(bool enabled)
{
    return [enabled](TimerEngine &engine) { engine.setOvertimeEnabled(enabled); };
}

void give(TimerEngine &engine, const Commands &commands)
{
    for (const Command &command : commands)
        command(engine);
}

/// Has a listener give the engine the commands once, at its next tick.
void answerTheNextTick(TimerEngine &engine, const Commands &commands)
{
    QObject::connect(
        &engine, &TimerEngine::tick, &engine, [&engine, commands] { give(engine, commands); },
        Qt::SingleShotConnection);
}

} // namespace

class TimerEngineTest : public QObject
{
    Q_OBJECT

private slots:
    void fresh_isStoppedAtFiveMinutesAndCountsDown()
    {
        const TimerEngine engine;
        QCOMPARE(engine.remaining(), 300);
        QVERIFY(!engine.isRunning());
        QVERIFY(!engine.isCountUp());
    }

    void command_movesTheCountAndReports_data()
    {
        QTest::addColumn<Commands>("before");
        QTest::addColumn<Commands>("commands");
        QTest::addColumn<QStringList>("emitted");
        QTest::addColumn<int>("remaining");
        QTest::addColumn<bool>("running");
        const auto row = [](const char *name, const Commands &before, const Commands &commands,
                            const QStringList &emitted, int remaining, bool running) {
            QTest::newRow(name) << before << commands << emitted << remaining << running;
        };

        row("start", {}, {starts}, {"running"}, 300, true);
        row("start again: silent", {starts}, {starts}, {}, 300, true);
        row("start at zero, overtime off: not refused, ends with its tick",
            {duration(0), overtime(false)}, {starts}, {"running"}, 0, true);
        row("pause", {starts}, {pauses}, {"stopped"}, 300, false);
        row("pause while stopped: silent", {}, {pauses}, {}, 300, false);
        row("pause keeps the count", {starts, seconds(1), pauses, starts}, {seconds(1)},
            {"tick 298"}, 298, true);
        row("reset", {duration(90), starts, seconds(1)}, {resets}, {"tick 90", "stopped"}, 90,
            false);
        row("reset while stopped: still reported", {}, {resets}, {"tick 300", "stopped"}, 300,
            false);
        row("reset of a fresh engine", {seconds(1)}, {resets}, {"tick 300", "stopped"}, 300, false);
        row("reset to the last duration", {duration(600), duration(45), seconds(1)}, {resets},
            {"tick 45", "stopped"}, 45, false);

        row("duration", {}, {duration(120)}, {"tick 120"}, 120, false);
        row("duration while running: stops", {starts}, {duration(120)}, {"tick 120", "stopped"},
            120, false);
        for (const int any : {0, 1, -75, 123456789, INT_MAX, INT_MIN}) {
            const QString tick = QStringLiteral("tick %1").arg(any);
            row(qPrintable(QStringLiteral("duration of any value: %1").arg(any)), {},
                {duration(any), resets}, {tick, tick, "stopped"}, any, false);
        }

        // Count and duration are moved separately, each with a floor of zero.
        const auto added = [&row](const char *name, int secs, int passed, int delta, int count,
                                  int restored) {
            row(name, {duration(secs), seconds(passed)}, {add(delta), resets},
                {QStringLiteral("tick %1").arg(count), QStringLiteral("tick %1").arg(restored),
                 "stopped"},
                restored, false);
        };
        added("add a minute", 300, 0, 60, 360, 360);
        added("add a minute less", 300, 10, -60, 230, 240);
        added("add nothing: still reported", 300, 10, 0, 290, 300);
        added("add down to exactly zero", 60, 0, -60, 0, 0);
        added("add to one below zero", 59, 0, -60, 0, 0);
        added("add, count floored, duration not", 300, 270, -60, 0, 240);
        added("add, overtime back above zero", 10, 40, 60, 30, 70);
        added("add, overtime by less", 10, 40, -60, 0, 0);
        added("add too little in overtime", 10, 40, 20, 0, 30);
        added("add, overtime to exactly zero", 10, 40, 30, 0, 40);
        row("add, duration floored, count not", {up(true), duration(30), seconds(100)},
            {add(-60), resets}, {"tick 70", "tick 0", "stopped"}, 0, false);
        row("add while running: runs on, and ends with its next tick",
            {overtime(false), duration(30), starts}, {add(-60)}, {"tick 0"}, 0, true);
        row("add in overtime while running", {duration(10), starts, seconds(40)}, {add(60), resets},
            {"tick 30", "tick 70", "stopped"}, 70, false);

        for (const bool on : {true, false}) {
            row(on ? "up: silent" : "down: silent", {up(!on)}, {up(on)}, {}, 300, false);
            row(on ? "up while running: silent" : "down while running: silent", {up(!on), starts},
                {up(on)}, {}, 300, true);
            row(on ? "overtime on: silent" : "overtime off: silent", {overtime(!on)},
                {overtime(on)}, {}, 300, false);
            row(on ? "overtime on while running: silent" : "overtime off while running: silent",
                {overtime(!on), starts}, {overtime(on)}, {}, 300, true);
        }

        row("a fresh engine counts into overtime", {starts, seconds(300)}, {seconds(2)},
            {"tick -1", "tick -2"}, -2, true);
        row("down, overtime on: goes on below zero", {overtime(true), duration(2), starts},
            {seconds(4)}, {"tick 1", "tick 0", "tick -1", "tick -2"}, -2, true);
        row("down, overtime off: runs above zero", {overtime(false), duration(2), starts},
            {seconds(1)}, {"tick 1"}, 1, true);
        row("down, overtime off: stops at zero", {overtime(false), duration(1), starts},
            {seconds(1)}, {"tick 0", "stopped"}, 0, false);
        row("down from zero, overtime off: one tick", {overtime(false), duration(0), starts},
            {seconds(1)}, {"tick -1", "stopped"}, -1, false);
        row("down below zero, overtime off: one tick", {overtime(false), duration(-30), starts},
            {seconds(1)}, {"tick -31", "stopped"}, -31, false);
        row("overtime off below zero: not stopped at once", {duration(-5), starts},
            {overtime(false)}, {}, -5, true);
        row("overtime off below zero: one tick", {duration(-5), starts, overtime(false)},
            {seconds(1)}, {"tick -6", "stopped"}, -6, false);
        row("up passes zero, overtime off", {overtime(false), up(true), duration(-2), starts},
            {seconds(3)}, {"tick -1", "tick 0", "tick 1"}, 1, true);
        row("up passes the duration", {up(true), duration(2), starts}, {seconds(2)},
            {"tick 3", "tick 4"}, 4, true);
        row("up and down from the next tick", {starts},
            {seconds(1), up(true), seconds(1), up(false), seconds(1)},
            {"tick 299", "tick 300", "tick 299"}, 299, true);
        row("down below zero after up, overtime off: one tick",
            {overtime(false), up(true), duration(-5), starts, up(false)}, {seconds(1)},
            {"tick -6", "stopped"}, -6, false);

        row("beyond 32 bits: wraps round", {duration(INT_MIN)}, {seconds(1)}, {"tick 2147483647"},
            INT_MAX, false);
        row("beyond 32 bits: count and duration", {duration(INT_MAX)}, {add(60), resets},
            {"tick 0", "tick 0", "stopped"}, 0, false);
    }

    void command_movesTheCountAndReports()
    {
        QFETCH(Commands, before);
        QFETCH(Commands, commands);
        TimerEngine engine;
        give(engine, before);
        EngineRecorder recorder(engine);
        give(engine, commands);
        QTEST(recorder.take(), "emitted");
        QTEST(engine.remaining(), "remaining");
        QTEST(engine.isRunning(), "running");
    }

    void setCountUp_isWhatIsRead()
    {
        TimerEngine engine;
        for (const bool countUp : {true, false}) {
            engine.setCountUp(countUp);
            QCOMPARE(engine.isCountUp(), countUp);
        }
    }

    void metaObject_keepsTheOrderOfMethods()
    {
        const QMetaObject &meta = TimerEngine::staticMetaObject;
        QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
        QByteArrayList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QMetaMethod method = meta.method(i);
            QCOMPARE(method.returnMetaType(), QMetaType::fromType<void>());
            const bool isSignal = method.methodType() == QMetaMethod::Signal;
            QVERIFY(isSignal || method.methodType() == QMetaMethod::Slot);
            methods.append((isSignal ? "signal " : "slot ") + method.methodSignature() + ' '
                           + method.parameterNames().join(' '));
        }
        const QByteArrayList expected{"signal tick(int) seconds",
                                      "signal stateChanged(bool) running",
                                      "slot start() ",
                                      "slot pause() ",
                                      "slot reset() ",
                                      "slot setDuration(int) secs",
                                      "slot addSeconds(int) delta",
                                      "slot setCountUp(bool) countUp",
                                      "slot setOvertimeEnabled(bool) enabled",
                                      "slot onTimeout() "};
        QCOMPARE(methods, expected);
    }

    void slots_canBeInvokedByName()
    {
        TimerEngine engine;
        EngineRecorder recorder(engine);
        QVERIFY(QMetaObject::invokeMethod(&engine, "setDuration", Q_ARG(int, 20)));
        QVERIFY(QMetaObject::invokeMethod(&engine, "addSeconds", Q_ARG(int, 5)));
        QVERIFY(QMetaObject::invokeMethod(&engine, "setCountUp", Q_ARG(bool, true)));
        QVERIFY(QMetaObject::invokeMethod(&engine, "setOvertimeEnabled", Q_ARG(bool, false)));
        for (const char *name : {"start", "onTimeout", "pause", "reset"})
            QVERIFY(QMetaObject::invokeMethod(&engine, name));
        const QStringList emitted{"tick 20", "tick 25", "running", "tick 26",
                                  "stopped", "tick 25", "stopped"};
        QCOMPARE(recorder.take(), emitted);
    }

    // Every signal comes after the change. Reset and setDuration have stopped when they tick; the
    // last tick is not yet the stop.
    void signals_reportWhatCanBeRead()
    {
        TimerEngine engine;
        QStringList seen;
        connect(&engine, &TimerEngine::tick, this, [&](int seconds) {
            seen += QStringLiteral("%1, %2")
                        .arg(seconds - engine.remaining())
                        .arg(engine.isRunning() ? "runs" : "stands");
        });
        connect(&engine, &TimerEngine::stateChanged, this,
                [&](bool running) { seen += running == engine.isRunning() ? "same" : "other"; });
        const auto seenAt = [&](const Commands &commands) {
            give(engine, commands);
            return std::exchange(seen, {});
        };
        QCOMPARE(seenAt({overtime(false), starts, pauses, starts}), QStringList(3, "same"));
        QCOMPARE(seenAt({add(60), seconds(1)}), QStringList(2, "0, runs"));
        QCOMPARE(seenAt({resets}), QStringList({"0, stands", "same"}));
        QCOMPARE(seenAt({starts, duration(1)}), QStringList({"same", "0, stands", "same"}));
        QCOMPARE(seenAt({starts, seconds(1)}), QStringList({"same", "0, runs", "same"}));
    }

    void lastTick_isJudgedAsAListenerLeavesIt_data()
    {
        QTest::addColumn<Commands>("answer");
        QTest::addColumn<QStringList>("emitted");
        using List = QStringList;
        QTest::newRow("time added") << Commands{add(60)} << List{"tick 0", "tick 60"};
        QTest::newRow("overtime on") << Commands{overtime(true)} << List{"tick 0"};
        QTest::newRow("counting up") << Commands{up(true)} << List{"tick 0"};
        // It still runs at its last tick, so that a start does nothing.
        QTest::newRow("start") << Commands{starts} << List{"tick 0", "stopped"};
        // The stop is reported even if a pause from within the tick has reported one.
        QTest::newRow("pause") << Commands{pauses} << List{"tick 0", "stopped", "stopped"};
        QTest::newRow("pause and start")
            << Commands{pauses, starts} << List{"tick 0", "stopped", "running", "stopped"};
    }

    // The count is judged after the tick has been delivered, as a neighbour has left it.
    void lastTick_isJudgedAsAListenerLeavesIt()
    {
        QFETCH(Commands, answer);
        QFETCH(QStringList, emitted);
        TimerEngine engine;
        give(engine, {overtime(false), duration(1), starts});
        EngineRecorder recorder(engine);
        answerTheNextTick(engine, answer);
        give(engine, {seconds(1)});
        QCOMPARE(recorder.take(), emitted);
        QCOMPARE(engine.isRunning(), emitted.last() != "stopped");
    }

    void resetFromTheTick_restoresTheNewDuration()
    {
        for (const auto &[command, restored] :
             {std::pair{duration(120), 120}, std::pair{add(60), 360}}) {
            TimerEngine engine;
            answerTheNextTick(engine, {resets});
            command(engine);
            QCOMPARE(engine.remaining(), restored);
        }
    }

    void startFromTheTick_leavesTheReportOfTheStop_data()
    {
        QTest::addColumn<Commands>("before");
        QTest::addColumn<Command>("command");
        QTest::addColumn<bool>("reported");
        QTest::newRow("reset while running") << Commands{starts} << resets << true;
        QTest::newRow("reset while stopped") << Commands{} << resets << true;
        QTest::newRow("setDuration while running") << Commands{starts} << duration(300) << true;
        QTest::newRow("setDuration while stopped") << Commands{} << duration(300) << false;
    }

    // The stop is that of the command; the start that came between it and its report holds.
    void startFromTheTick_leavesTheReportOfTheStop()
    {
        QFETCH(Commands, before);
        QFETCH(Command, command);
        QFETCH(bool, reported);
        TimerEngine engine;
        give(engine, before);
        EngineRecorder recorder(engine);
        answerTheNextTick(engine, {starts});
        command(engine);
        const QStringList emitted{"tick 300", "running", "stopped"};
        QCOMPARE(recorder.take(), emitted.first(reported ? 3 : 2));
        QVERIFY(engine.isRunning());
    }

    // Marks between the ticks instead of a clock: however late a busy machine delivers them,
    // the event loop delivers them in the order in which they are due.
    void start_ticksEveryRealSecond()
    {
        TimerEngine engine;
        EngineRecorder recorder(engine);
        for (const int milliseconds : {800, 1400, 1800, 2400}) {
            QTimer::singleShot(milliseconds, Qt::PreciseTimer, this, [&recorder, milliseconds] {
                recorder.mark(QString::number(milliseconds));
            });
        }
        // A second start while running does not begin the second again.
        QTimer::singleShot(700, Qt::PreciseTimer, &engine, &TimerEngine::start);
        engine.start();
        QStringList seen;
        const auto isOver = [&] {
            seen += recorder.take();
            return seen.contains("2400");
        };
        QTRY_VERIFY(isOver());
        QCOMPARE(seen,
                 QStringList({"running", "800", "tick 299", "1400", "1800", "tick 298", "2400"}));
    }

    // The interval itself is looked at: a millisecond more would show only in a long show. An
    // engine that was paused is silent until another one, started later, has ticked.
    void second_isOfAThousandMillisecondsAndNoneAfterAPause()
    {
        TimerEngine paused;
        EngineRecorder recorder(paused);
        give(paused, {starts, pauses});
        TimerEngine engine;
        QSignalSpy ticks(&engine, &TimerEngine::tick);
        const Timeouts timeouts;
        engine.start();
        QVERIFY(ticks.wait());
        QVERIFY(timeouts.seen.contains(Timeout{1000, Qt::CoarseTimer}));
        QCOMPARE(recorder.take(), QStringList({"running", "stopped"}));
    }
};

VELMORA_TEST_MAIN(TimerEngineTest)
#include "tst_TimerEngine.moc"
