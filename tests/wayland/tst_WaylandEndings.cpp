#include <QElapsedTimer>
#include <QTest>

#include "Compositor.h"
#include "Program.h"
#include "Store.h"
#include "TestMain.h"

/// Starts the built program on a Wayland desktop and closes it by the × of the Control window's
/// frame, again and again: VELMORA_ENDINGS times, or 5 times. Each time the process has to end.
class WaylandEndings : public QObject
{
    Q_OBJECT

private slots:
    void cross_endsTheProcess();

private:
    WaylandProgram program;
};

namespace {

/// Whether the Control window stands where it stood at the last look, and all of it is drawn.
bool hasSettled(QImage &lastLook)
{
    const QImage now = compositor::picture(0);
    const bool same = now == lastLook;
    lastLook = now;
    return same && !compositor::controlWindow(0).isNull();
}

} // namespace

void WaylandEndings::cross_endsTheProcess()
{
    const int asked = qEnvironmentVariableIntValue("VELMORA_ENDINGS");
    const int rounds = asked > 0 ? asked : 5;
    qint64 longestMs = 0;
    int leftBehind = 0;
    for (int round = 0; round < rounds; ++round) {
        removeStore();
        program.start();
        AWAIT(compositor::isCovered(1));
        QImage lastLook;
        AWAIT(hasSettled(lastLook));
        QElapsedTimer sinceClick;
        sinceClick.start();
        if (!program.close()) {
            ++leftBehind;
            program.kill();
        }
        longestMs = qMax(longestMs, sinceClick.elapsed());
    }
    qInfo("%d of %d processes ended, the slowest %lld ms after the search for the ×",
          rounds - leftBehind, rounds, longestMs);
    QCOMPARE(leftBehind, 0);
}

VELMORA_TEST_MAIN(WaylandEndings)
#include "tst_WaylandEndings.moc"
