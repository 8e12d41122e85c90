#include <QSignalSpy>
#include <QTest>

#include "TestMain.h"
#include "TimerEngine.h"

class TimerEngineTest : public QObject
{
    Q_OBJECT

private slots:
    void fresh_holdsFiveMinutesAndIsStopped();
};

void TimerEngineTest::fresh_holdsFiveMinutesAndIsStopped()
{
    const TimerEngine engine;
    QCOMPARE(engine.remaining(), 300);
    QVERIFY(!engine.isRunning());
    QVERIFY(!engine.isCountUp());
}

VELMORA_TEST_MAIN(TimerEngineTest)
#include "tst_TimerEngine.moc"
