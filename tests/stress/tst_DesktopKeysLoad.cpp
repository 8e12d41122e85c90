#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include "AppSettings.h"
#include "Desktop.h"
#include "Journey.h"
#include "TestMain.h"

/// A thousand key presses a second for a minute, sent through the real X server to the built
/// program: each adds its minute.
class DesktopKeysLoad : public Journey
{
    Q_OBJECT

private slots:
    void thousandASecond_allHaveTheirEffect();
};

namespace {

constexpr int bursts = 60;
constexpr int burstPresses = 1000;
constexpr int figurePixels = 300;
constexpr int longestMs = 900'000;

} // namespace

void DesktopKeysLoad::thousandASecond_allHaveTheirEffect()
{
    AppSettings settings;
    settings.timerFontSize = figurePixels;
    saveSettings(settings);
    QVERIFY(program.start());
    AWAIT(outputShows("05:00", normalColour));

    QElapsedTimer time;
    time.start();
    for (int burst = 0; burst < bursts; ++burst) {
        if (const qint64 early = burst * 1000 - time.elapsed(); early > 0)
            QTest::qWait(int(early));
        QProcess sender;
        sender.start("xdotool",
                     QStringList{"key", "--delay", "0"}
                         + QStringList(burstPresses, QStringLiteral("Up")));
        QVERIFY(sender.waitForFinished(longestMs));
        QCOMPARE(sender.exitCode(), 0);
    }
    const qint64 sent = time.elapsed();
    // What the server has queued is still to be drawn.
    const QString figure = QStringLiteral("%1:00").arg(5 + bursts * burstPresses);
    QVERIFY(QTest::qWaitFor([&] { return outputShows(figure, normalColour); }, longestMs));
    qInfo(
        "%d presses sent in %.1f s (%.0f a second); the figure was %s, as it must be, %.1f s after "
        "the last",
        bursts * burstPresses, double(sent) / 1000, bursts * burstPresses * 1000.0 / double(sent),
        qPrintable(figure), double(time.elapsed() - sent) / 1000);
}

VELMORA_TEST_MAIN(DesktopKeysLoad)
#include "tst_DesktopKeysLoad.moc"
