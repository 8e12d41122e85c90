#include <ctime>
#include <limits>

#include <QDateTime>
#include <QRegularExpression>
#include <QTest>
#include <QTime>

#include "AppSettings.h"
#include "OutputParts.h"
#include "TestMain.h"

namespace {

const QString stale = QStringLiteral("stale");

bool isFigureShown(const OutputWindow &window)
{
    return figureLabel(window)->isVisibleTo(&window);
}

bool isClockShown(const OutputWindow &window)
{
    return clockLabel(window)->isVisibleTo(&window);
}

/// Lets it be an hour of the day in this process while it lives, whatever the hour is: a time
/// zone is made up for it. Windows has one zone for all processes, and keeps its hour.
class HourOfDay
{
public:
    explicit HourOfDay(int hour)
    {
        const int ahead = (hour - QDateTime::currentDateTimeUtc().time().hour() + 24) % 24;
        // Counted westwards from Greenwich; no zone is farther than half a day.
        const int west = ahead > 12 ? 24 - ahead : -ahead;
        setZone("TEST" + QByteArray::number(west));
    }
    ~HourOfDay() { setZone(before); }
    Q_DISABLE_COPY_MOVE(HourOfDay)

private:
    static void setZone(const QByteArray &zone)
    {
#ifndef Q_OS_WIN
        if (zone.isNull())
            qunsetenv("TZ");
        else
            qputenv("TZ", zone);
        tzset();
#else
        Q_UNUSED(zone)
#endif
    }

    const QByteArray before = qgetenv("TZ");
};

// The time now in the 24-hour form with seconds, by other means than the clock's.
QString now()
{
    const QTime time = QTime::currentTime();
    return QString::asprintf("%02d:%02d:%02d", time.hour(), time.minute(), time.second());
}

} // namespace

class OutputWindowClockTest : public QObject
{
    Q_OBJECT

private slots:
    void tickClock_showsThePresentTime_data()
    {
        QTest::addColumn<bool>("hours24");
        QTest::addColumn<bool>("seconds");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("pattern");
        QTest::newRow("24 h with seconds") << true << true << "HH:mm:ss"
                                           << "^([01]\\d|2[0-3]):[0-5]\\d:[0-5]\\d$";
        QTest::newRow("24 h") << true << false << "HH:mm"
                              << "^([01]\\d|2[0-3]):[0-5]\\d$";
        QTest::newRow("12 h with seconds") << false << true << "hh:mm:ss AP"
                                           << "^(0[1-9]|1[0-2]):[0-5]\\d:[0-5]\\d (AM|PM)$";
        QTest::newRow("12 h") << false << false << "hh:mm AP"
                              << "^(0[1-9]|1[0-2]):[0-5]\\d (AM|PM)$";
    }

    // At an hour of one digit and at one that a clock of 12 hours knows by another number.
    void tickClock_showsThePresentTime()
    {
        QFETCH(bool, hours24);
        QFETCH(bool, seconds);
        QFETCH(QString, format);
        QFETCH(QString, pattern);
        AppSettings settings;
        OutputWindow window(&settings);
        settings.clock24hr = hours24;
        settings.clockShowSeconds = seconds;

        for (const int hour : {5, 17}) {
            const HourOfDay hourOfDay(hour);
            const QString before = QTime::currentTime().toString(format);
            window.tickClock();
            const QString after = QTime::currentTime().toString(format);

            const QString text = clockLabel(window)->text();
            QVERIFY2(QRegularExpression(pattern).match(text).hasMatch(), qPrintable(text));
            QVERIFY2(text == before || text == after, qPrintable(text));
        }
    }

    void fresh_showsThePresentTime()
    {
        const AppSettings settings;
        const QString before = now();
        const OutputWindow window(&settings);
        const QString after = now();
        const QString text = clockLabel(window)->text();
        QVERIFY2(text == before || text == after, qPrintable(text));
    }

    void refreshSettings_changesTheFormatAtOnce()
    {
        AppSettings settings;
        OutputWindow window(&settings);
        settings.clock24hr = false;
        settings.clockShowSeconds = false;
        window.refreshSettings();
        const QString text = clockLabel(window)->text();
        QVERIFY2(QRegularExpression("^\\d\\d:\\d\\d (AM|PM)$").match(text).hasMatch(),
                 qPrintable(text));
    }

    void tickClock_onlyTheFigureShown_leavesTheTextStale()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setViewMode(0);
        clockLabel(window)->setText(stale);
        window.tickClock();
        QCOMPARE(clockLabel(window)->text(), stale);
    }

    void refreshSettings_onlyTheFigureShown_leavesTheTextStale()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setViewMode(0);
        clockLabel(window)->setText(stale);
        window.refreshSettings();
        QCOMPARE(clockLabel(window)->text(), stale);
    }

    void setViewMode_keepsTheStaleTextUntilTheNextTick_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("clock only") << 1;
        QTest::newRow("both") << 2;
    }

    void setViewMode_keepsTheStaleTextUntilTheNextTick()
    {
        QFETCH(int, mode);
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setViewMode(0);
        clockLabel(window)->setText(stale);
        window.setViewMode(mode);
        QVERIFY(isClockShown(window));
        QCOMPARE(clockLabel(window)->text(), stale);
        QTRY_VERIFY_WITH_TIMEOUT(clockLabel(window)->text() != stale, 1000);
    }

    void tickClock_inAnUnknownMode_setsTheText()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setViewMode(0);
        clockLabel(window)->setText(stale);
        window.setViewMode(7); // kept, and it is not the one that leaves the clock alone
        window.tickClock();
        QVERIFY(clockLabel(window)->text() != stale);
    }

    void clock_ticksByItself()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.show();
        clockLabel(window)->setText(stale);
        QTRY_VERIFY_WITH_TIMEOUT(clockLabel(window)->text() != stale, 1000);
    }

    void clock_ticksWhileTheWindowIsHidden()
    {
        const AppSettings settings;
        const OutputWindow window(&settings);
        clockLabel(window)->setText(stale);
        QTRY_VERIFY_WITH_TIMEOUT(clockLabel(window)->text() != stale, 1000);
    }

    void viewMode_choosesWhatIsShown_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("figure");
        QTest::addColumn<bool>("clock");
        for (int before = 0; before <= 2; ++before) {
            QTest::addRow("%d to figure", before) << before << 0 << true << false;
            QTest::addRow("%d to clock", before) << before << 1 << false << true;
            QTest::addRow("%d to both", before) << before << 2 << true << true;
        }
    }

    void viewMode_choosesWhatIsShown()
    {
        QFETCH(int, before);
        QFETCH(int, mode);
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setViewMode(before);
        window.setViewMode(mode);
        QTEST(isFigureShown(window), "figure");
        QTEST(isClockShown(window), "clock");
    }

    void unknownViewMode_changesNoVisibility_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("mode");
        for (int before = 0; before <= 2; ++before) {
            for (int mode :
                 {-1, 3, 4, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
                QTest::addRow("%d to %d", before, mode) << before << mode;
        }
    }

    void unknownViewMode_changesNoVisibility()
    {
        QFETCH(int, before);
        QFETCH(int, mode);
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setViewMode(before);
        const bool figure = isFigureShown(window);
        const bool clock = isClockShown(window);
        window.setViewMode(mode);
        QCOMPARE(isFigureShown(window), figure);
        QCOMPARE(isClockShown(window), clock);
    }

    void viewMode_leavesMessageAndBarAlone_data()
    {
        QTest::addColumn<int>("mode");
        for (int mode = 0; mode <= 2; ++mode)
            QTest::addRow("%d", mode) << mode;
    }

    void viewMode_leavesMessageAndBarAlone()
    {
        QFETCH(int, mode);
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setMessage("Please wrap up");
        window.setViewMode(mode);
        QVERIFY(messageLabel(window)->isVisibleTo(&window));
        QVERIFY(progressBar(window)->isVisibleTo(&window));
        QCOMPARE(messageLabel(window)->text(), QStringLiteral("Please wrap up"));
        QCOMPARE(progressBar(window)->value(), 1000);
    }

    void viewMode_survivesHideAndShow()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setViewMode(1);
        window.show();
        window.hide();
        window.show();
        QVERIFY(!isFigureShown(window));
        QVERIFY(isClockShown(window));
    }
};

VELMORA_TEST_MAIN(OutputWindowClockTest)
#include "tst_OutputWindowClock.moc"
