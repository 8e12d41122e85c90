#include <algorithm>
#include <array>

#include <QElapsedTimer>
#include <QTest>

#include "Operated.h"
#include "TestMain.h"
#include "Usage.h"

namespace {

constexpr int presses = 60'000;

// More up than down, so that the count does not come near the floor at zero.
constexpr std::array keys{Qt::Key_Up,    Qt::Key_Up,   Qt::Key_Down, Qt::Key_Up,   Qt::Key_Space,
                          Qt::Key_Space, Qt::Key_Down, Qt::Key_Up,   Qt::Key_Down, Qt::Key_Up};

} // namespace

/// A thousand key presses a second for a minute, on the shortcuts of the real windows: each
/// has its effect.
class KeysLoadTest : public QObject
{
    Q_OBJECT

private slots:
    void thousandASecond_allHaveTheirEffect()
    {
        ControlFixture fixture;
        fixture.show();
        QVERIFY(focus(*fixture.window));
        int ticks = 0;
        int changes = 0;
        connect(&fixture.engine, &TimerEngine::tick, this, [&ticks] { ++ticks; });
        connect(&fixture.engine, &TimerEngine::stateChanged, this, [&changes] { ++changes; });

        int up = 0;
        int down = 0;
        int space = 0;
        qint64 milliseconds = 0;
        int longestQueue = 0;
        const double cost = usage::cpuSeconds([&] {
            QElapsedTimer time;
            time.start();
            // As from a desktop: what came in meanwhile is handled, then what is to be drawn.
            for (int sent = 0; sent < presses;) {
                const int due = int(std::min<qint64>(presses, time.elapsed() + 1));
                longestQueue = std::max(longestQueue, due - sent);
                for (; sent < due; ++sent) {
                    const Qt::Key key = keys[std::size_t(sent) % keys.size()];
                    up += key == Qt::Key_Up ? 1 : 0;
                    down += key == Qt::Key_Down ? 1 : 0;
                    space += key == Qt::Key_Space ? 1 : 0;
                    press(*fixture.window, key);
                }
                QCoreApplication::processEvents();
            }
            milliseconds = time.elapsed();
        });
        qInfo("%d presses in %.1f s (%.0f a second; at most %d at once), %.3f ms of processor time "
              "each, drawing included",
              presses, double(milliseconds) / 1000, presses * 1000.0 / double(milliseconds),
              longestQueue, cost * 1000 / presses);
        qInfo("%d up and %d down gave %d changes of the count, %d start/pause gave %d changes of "
              "state",
              up, down, ticks, space, changes);
        QCOMPARE(ticks, up + down);
        QCOMPARE(changes, space);
        QCOMPARE(fixture.engine.remaining(), 300 + 60 * (up - down));
        QCOMPARE(fixture.outputFigure()->text(), fixture.figure()->text());
    }
};

VELMORA_TEST_MAIN(KeysLoadTest, twoScreens())
#include "tst_KeysLoad.moc"
