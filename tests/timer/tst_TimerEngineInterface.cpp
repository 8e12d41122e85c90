#include <functional>

#include <QMetaMethod>
#include <QTest>

#include "EngineRecorder.h"
#include "TestMain.h"
#include "TimerEngine.h"

namespace {

using Command = std::function<void(TimerEngine &)>;

/// Has a listener give the engine @p command once, at its next tick.
void answerTheNextTick(TimerEngine &engine, const Command &command)
{
    QObject::connect(
        &engine, &TimerEngine::tick, &engine, [&engine, command] { command(engine); },
        Qt::SingleShotConnection);
}

} // namespace

/// What neighbours rely on besides the commands: the construction values, the meta-object,
/// what can be read at the moment of a signal, and what a command from within it does.
class TimerEngineInterfaceTest : public QObject
{
    Q_OBJECT

private slots:
    void fresh_holdsFiveMinutesAndIsStopped()
    {
        const TimerEngine engine;
        QCOMPARE(engine.remaining(), 300);
        QVERIFY(!engine.isRunning());
        QVERIFY(!engine.isCountUp());
    }

    void fresh_hasFiveMinutesAsDuration()
    {
        TimerEngine engine;
        passOneSecond(engine);
        engine.reset();
        QCOMPARE(engine.remaining(), 300);
    }

    void fresh_countsDownIntoOvertime()
    {
        TimerEngine engine;
        engine.start();
        for (int i = 0; i < 302; ++i)
            passOneSecond(engine);
        QCOMPARE(engine.remaining(), -2);
        QVERIFY(engine.isRunning());
    }

    void metaObject_hasTenMethodsOfItsOwn()
    {
        const QMetaObject &meta = TimerEngine::staticMetaObject;
        QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 10);
    }

    void metaObject_keepsTheOrderOfMethods_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QMetaMethod::MethodType>("kind");
        QTest::addColumn<QByteArray>("signature");
        const auto add = [](int index, QMetaMethod::MethodType kind, const char *signature) {
            QTest::newRow(signature) << index << kind << QByteArray(signature);
        };
        add(0, QMetaMethod::Signal, "tick(int)");
        add(1, QMetaMethod::Signal, "stateChanged(bool)");
        add(2, QMetaMethod::Slot, "start()");
        add(3, QMetaMethod::Slot, "pause()");
        add(4, QMetaMethod::Slot, "reset()");
        add(5, QMetaMethod::Slot, "setDuration(int)");
        add(6, QMetaMethod::Slot, "addSeconds(int)");
        add(7, QMetaMethod::Slot, "setCountUp(bool)");
        add(8, QMetaMethod::Slot, "setOvertimeEnabled(bool)");
        add(9, QMetaMethod::Slot, "onTimeout()");
    }

    void metaObject_keepsTheOrderOfMethods()
    {
        QFETCH(int, index);
        QFETCH(QMetaMethod::MethodType, kind);
        QFETCH(QByteArray, signature);
        const QMetaObject &meta = TimerEngine::staticMetaObject;
        const QMetaMethod method = meta.method(meta.methodOffset() + index);
        QCOMPARE(method.methodType(), kind);
        QCOMPARE(method.methodSignature(), signature);
        QCOMPARE(method.returnMetaType(), QMetaType::fromType<void>());
    }

    void metaObject_namesTheArguments_data()
    {
        QTest::addColumn<QByteArray>("signature");
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("tick") << QByteArray("tick(int)") << QByteArray("seconds");
        QTest::newRow("stateChanged") << QByteArray("stateChanged(bool)") << QByteArray("running");
        QTest::newRow("setDuration") << QByteArray("setDuration(int)") << QByteArray("secs");
        QTest::newRow("addSeconds") << QByteArray("addSeconds(int)") << QByteArray("delta");
    }

    void metaObject_namesTheArguments()
    {
        QFETCH(QByteArray, signature);
        QFETCH(QByteArray, name);
        const QMetaObject &meta = TimerEngine::staticMetaObject;
        const int index = meta.indexOfMethod(signature.constData());
        QVERIFY(index >= 0);
        QCOMPARE(meta.method(index).parameterNames(), QList<QByteArray>{name});
    }

    void slots_canBeInvokedByName()
    {
        TimerEngine engine;
        EngineRecorder recorder(engine);
        QVERIFY(QMetaObject::invokeMethod(&engine, "setDuration", Q_ARG(int, 20)));
        QVERIFY(QMetaObject::invokeMethod(&engine, "addSeconds", Q_ARG(int, 5)));
        QVERIFY(QMetaObject::invokeMethod(&engine, "setCountUp", Q_ARG(bool, true)));
        QVERIFY(QMetaObject::invokeMethod(&engine, "setOvertimeEnabled", Q_ARG(bool, false)));
        QVERIFY(QMetaObject::invokeMethod(&engine, "start"));
        QVERIFY(QMetaObject::invokeMethod(&engine, "onTimeout"));
        QVERIFY(QMetaObject::invokeMethod(&engine, "pause"));
        QVERIFY(QMetaObject::invokeMethod(&engine, "reset"));
        const QStringList emitted{"tick 20", "tick 25", "running", "tick 26",
                                  "stopped", "tick 25", "stopped"};
        QCOMPARE(recorder.take(), emitted);
    }

    void tick_carriesTheCountThatCanBeRead()
    {
        TimerEngine engine;
        QList<int> differences;
        connect(&engine, &TimerEngine::tick, this,
                [&](int seconds) { differences.append(seconds - engine.remaining()); });
        engine.setDuration(7);
        passOneSecond(engine);
        engine.addSeconds(60);
        engine.reset();
        QCOMPARE(differences, QList<int>(4, 0));
    }

    void stateChanged_comesAfterTheChange()
    {
        TimerEngine engine;
        engine.setOvertimeEnabled(false);
        QStringList seen;
        connect(&engine, &TimerEngine::stateChanged, this, [&](bool running) {
            seen.append(running == engine.isRunning() ? "same" : "other");
        });
        engine.start();
        engine.pause();
        engine.start();
        engine.reset();
        engine.start();
        engine.setDuration(1);
        engine.start();
        passOneSecond(engine);
        QCOMPARE(seen, QStringList(8, "same"));
    }

    void reset_isStoppedWhenItTicks()
    {
        TimerEngine engine;
        engine.start();
        QList<bool> running;
        connect(&engine, &TimerEngine::tick, this, [&] { running.append(engine.isRunning()); });
        engine.reset();
        QCOMPARE(running, QList<bool>{false});
    }

    void setDuration_isStoppedWhenItTicks()
    {
        TimerEngine engine;
        engine.start();
        QList<bool> running;
        connect(&engine, &TimerEngine::tick, this, [&] { running.append(engine.isRunning()); });
        engine.setDuration(10);
        QCOMPARE(running, QList<bool>{false});
    }

    void lastTick_comesBeforeTheStop()
    {
        TimerEngine engine;
        engine.setOvertimeEnabled(false);
        engine.setDuration(1);
        engine.start();
        QList<bool> running;
        connect(&engine, &TimerEngine::tick, this, [&] { running.append(engine.isRunning()); });
        passOneSecond(engine);
        QCOMPARE(running, QList<bool>{true});
        QVERIFY(!engine.isRunning());
    }

    void lastTick_isJudgedAsAListenerLeavesIt_data()
    {
        QTest::addColumn<Command>("answer");
        QTest::addColumn<QStringList>("emitted");
        const auto add = [](const char *name, const Command &answer, const QStringList &emitted) {
            QTest::newRow(name) << answer << emitted;
        };
        add("time added", [](TimerEngine &engine) { engine.addSeconds(60); },
            {"tick 0", "tick 60"});
        add("overtime switched on", [](TimerEngine &engine) { engine.setOvertimeEnabled(true); },
            {"tick 0"});
        add("turned to counting up", [](TimerEngine &engine) { engine.setCountUp(true); },
            {"tick 0"});
        // It still runs at its last tick, so that a start does nothing.
        add("started", [](TimerEngine &engine) { engine.start(); }, {"tick 0", "stopped"});
        add("paused", [](TimerEngine &engine) { engine.pause(); },
            {"tick 0", "stopped", "stopped"});
        add("started anew",
            [](TimerEngine &engine) {
                engine.pause();
                engine.start();
            },
            {"tick 0", "stopped", "running", "stopped"});
    }

    // The count is judged after the tick has been delivered, as a neighbour has left it.
    // The stop is reported even if a pause from within the tick has reported one.
    void lastTick_isJudgedAsAListenerLeavesIt()
    {
        QFETCH(Command, answer);
        QFETCH(QStringList, emitted);
        TimerEngine engine;
        engine.setOvertimeEnabled(false);
        engine.setDuration(1);
        engine.start();
        EngineRecorder recorder(engine);
        answerTheNextTick(engine, answer);
        passOneSecond(engine);
        QCOMPARE(recorder.take(), emitted);
        QCOMPARE(engine.isRunning(), emitted.last() != "stopped");
    }

    void resetFromTheTick_restoresTheNewDuration_data()
    {
        QTest::addColumn<Command>("command");
        QTest::addColumn<int>("duration");
        QTest::newRow("setDuration")
            << Command([](TimerEngine &engine) { engine.setDuration(120); }) << 120;
        QTest::newRow("addSeconds")
            << Command([](TimerEngine &engine) { engine.addSeconds(60); }) << 360;
    }

    void resetFromTheTick_restoresTheNewDuration()
    {
        QFETCH(Command, command);
        QFETCH(int, duration);
        TimerEngine engine;
        answerTheNextTick(engine, &TimerEngine::reset);
        command(engine);
        QCOMPARE(engine.remaining(), duration);
    }

    void startFromTheTick_leavesTheReportOfTheStop_data()
    {
        QTest::addColumn<bool>("running");
        QTest::addColumn<Command>("command");
        QTest::addColumn<QStringList>("emitted");
        const Command reset = &TimerEngine::reset;
        const Command setDuration = [](TimerEngine &engine) { engine.setDuration(300); };
        const QStringList withTheStop{"tick 300", "running", "stopped"};
        QTest::newRow("reset while running") << true << reset << withTheStop;
        QTest::newRow("reset while stopped") << false << reset << withTheStop;
        QTest::newRow("setDuration while running") << true << setDuration << withTheStop;
        QTest::newRow("setDuration while stopped")
            << false << setDuration << QStringList{"tick 300", "running"};
    }

    // The stop is that of the command; the start that came between it and its report holds.
    void startFromTheTick_leavesTheReportOfTheStop()
    {
        QFETCH(bool, running);
        QFETCH(Command, command);
        QFETCH(QStringList, emitted);
        TimerEngine engine;
        if (running)
            engine.start();
        EngineRecorder recorder(engine);
        answerTheNextTick(engine, &TimerEngine::start);
        command(engine);
        QCOMPARE(recorder.take(), emitted);
        QVERIFY(engine.isRunning());
    }
};

VELMORA_TEST_MAIN(TimerEngineInterfaceTest)
#include "tst_TimerEngineInterface.moc"
