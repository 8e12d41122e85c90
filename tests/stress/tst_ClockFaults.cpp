#include <functional>

#include <QDateTime>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include "AppSettings.h"
#include "Desktop.h"
#include "Journey.h"
#include "TestMain.h"

/// The system's clock is set back and forth an hour while the built program counts. The
/// machine's own clock is left alone: a library between the program and the system moves the
/// time of day for this one process, and leaves the monotonic clock as it is.
class ClockFaults : public Journey
{
    Q_OBJECT

private slots:
    void initTestCase();
    void clockSet_movesTheClockAndNotTheCount_data();
    void clockSet_movesTheClockAndNotTheCount();

private:
    void setClock(int offsetSeconds);
    bool showsClock(int offsetSeconds) const;

    QTemporaryDir directory;
    QString library;
};

namespace {

constexpr int duration = 1800;
constexpr int figurePixels = 300;
constexpr int clockPixels = 80;
// The screen is read while the count goes on, and a machine that does other things is slow.
constexpr int toleranceSeconds = 3;
constexpr QRect clockArea(1920, 620, 1920, 200);

const QStringList libraryPlaces{
    "/usr/lib/x86_64-linux-gnu/faketime/libfaketimeMT.so.1",
    "/usr/lib/aarch64-linux-gnu/faketime/libfaketimeMT.so.1",
    "/usr/lib/faketime/libfaketimeMT.so.1",
};

const desktop::Lettering clockLettering{
    "color:%1;font-size:80px;font-weight:bold;font-family:monospace;", Qt::black, 1920 - 60};

} // namespace

void ClockFaults::initTestCase()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("Not tried: the library that moves the clock cannot be loaded before the sanitizer");
#endif
    for (const QString &place : libraryPlaces) {
        if (QFileInfo::exists(place))
            library = place;
    }
    if (library.isEmpty())
        QSKIP("Not tried: libfaketime is not installed");
}

/// From now on the program reads the time of day with this offset.
void ClockFaults::setClock(int offsetSeconds)
{
    // In place of the old one at once: the program may read it at any time.
    const QString path = directory.filePath("offset");
    QFile file(path + ".new");
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(QByteArray(offsetSeconds < 0 ? "" : "+") + QByteArray::number(offsetSeconds))
            > 0);
    file.close();
    QFile::remove(path);
    QVERIFY(file.rename(path));
}

/// Whether the Output window's clock shows the time with the offset.
bool ClockFaults::showsClock(int offsetSeconds) const
{
    const QImage image = desktop::grab(clockArea);
    const QTime now = QTime::currentTime().addSecs(offsetSeconds);
    for (int late = 0; late <= toleranceSeconds; ++late) {
        if (desktop::isText(image, now.addSecs(-late).toString("HH:mm:ss"), Qt::white,
                            clockLettering))
            return true;
    }
    return false;
}

void ClockFaults::clockSet_movesTheClockAndNotTheCount_data()
{
    QTest::addColumn<QList<int>>("offsets");
    QTest::newRow("an hour forth and back again") << QList<int>{3600, 0};
    QTest::newRow("an hour back and forth again") << QList<int>{-3600, 0};
    QTest::newRow("from one hour late to one early, and over") << QList<int>{-3600, 3600, -3600};
    QTest::newRow("a day on, a year back") << QList<int>{86'400 + 60, -31'536'000};
}

void ClockFaults::clockSet_movesTheClockAndNotTheCount()
{
    QFETCH(QList<int>, offsets);
    AppSettings settings;
    settings.timerFontSize = figurePixels;
    settings.clockFontSize = clockPixels;
    settings.defaultDuration = duration;
    saveSettings(settings);

    setClock(0);
    qputenv("FAKETIME_TIMESTAMP_FILE", directory.filePath("offset").toUtf8());
    qputenv("FAKETIME_NO_CACHE", "1");
    qputenv("FAKETIME_DONT_FAKE_MONOTONIC", "1");
    qputenv("LD_PRELOAD", library.toUtf8());
    const bool hasStarted = program.start();
    qunsetenv("LD_PRELOAD");
    QVERIFY(hasStarted);
    AWAIT(outputShows("30:00", normalColour));
    AWAIT(showsClock(0));
    desktop::press("space");
    QElapsedTimer sinceStart;
    sinceStart.start();

    for (const int offset : std::as_const(offsets)) {
        setClock(offset);
        AWAIT(showsClock(offset));
        int seconds = -1;
        AWAIT((seconds = outputSeconds(duration, normalColour, figurePixels)) >= 0);
        const int wanted = duration - int(sinceStart.elapsed() / 1000);
        qInfo("Clock set by %+d s: the clock shows it, the count has %d s left, by the monotonic "
              "clock %d s",
              offset, seconds, wanted);
        QVERIFY(qAbs(seconds - wanted) <= toleranceSeconds);
        // And it goes on from there, second by second.
        AWAIT(outputSeconds(seconds, normalColour, figurePixels) == seconds - 2);
    }
}

VELMORA_TEST_MAIN(ClockFaults)
#include "tst_ClockFaults.moc"
