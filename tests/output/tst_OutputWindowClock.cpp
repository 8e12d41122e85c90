#include <climits>
#include <ctime>

#include <QDateTime>
#include <QRegularExpression>
#include <QTest>
#include <QTime>

#include "AppSettings.h"
#include "OutputParts.h"
#include "TestMain.h"

namespace {

const QString stale = QStringLiteral("stale");

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

} // namespace

/// The clock, and which of figure and clock is shown.
class OutputWindowClockTest : public QObject
{
    Q_OBJECT

private slots:
    void clock_showsThePresentTime_data()
    {
        QTest::addColumn<bool>("hours24");
        QTest::addColumn<bool>("seconds");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("pattern");
        const QString hours24 = "^([01]\\d|2[0-3])";
        const QString hours12 = "^(0[1-9]|1[0-2])";
        const QString sixty = ":[0-5]\\d";
        QTest::newRow("24 h with seconds") << true << true << "HH:mm:ss" << hours24 + sixty + sixty;
        QTest::newRow("24 h") << true << false << "HH:mm" << hours24 + sixty;
        QTest::newRow("12 h with seconds")
            << false << true << "hh:mm:ss AP" << hours12 + sixty + sixty + " (AM|PM)";
        QTest::newRow("12 h") << false << false << "hh:mm AP" << hours12 + sixty + " (AM|PM)";
    }

    // At an hour of one digit and at one that a clock of 12 hours knows by another number; as the
    // window is made, and as the settings change.
    void clock_showsThePresentTime()
    {
        QFETCH(bool, hours24);
        QFETCH(bool, seconds);
        QFETCH(QString, format);
        QFETCH(QString, pattern);
        AppSettings settings;
        OutputWindow other(&settings);
        settings.clock24hr = hours24;
        settings.clockShowSeconds = seconds;
        for (const int hour : {5, 17}) {
            const HourOfDay hourOfDay(hour);
            const QString before = QTime::currentTime().toString(format);
            const OutputWindow fresh(&settings);
            other.refreshSettings();
            const QString after = QTime::currentTime().toString(format);
            for (const OutputWindow *window : {&fresh, &std::as_const(other)}) {
                const QString text = clockLabel(*window)->text();
                QVERIFY2(QRegularExpression(pattern + '$').match(text).hasMatch(),
                         qPrintable(text));
                QVERIFY2(text == before || text == after, qPrintable(text));
            }
        }
    }

    void onlyTheFigureShown_leavesTheClockStale()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setViewMode(0);
        clockLabel(window)->setText(stale);
        window.tickClock();
        window.refreshSettings();
        QCOMPARE(clockLabel(window)->text(), stale);
        window.setViewMode(7); // kept, and it is not the one that leaves the clock alone
        QCOMPARE(clockLabel(window)->text(), stale);
        window.tickClock();
        QVERIFY(clockLabel(window)->text() != stale);
    }

    void clock_ticksByItself_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("shown");
        QTest::newRow("clock only, hidden window") << 1 << false;
        QTest::newRow("both, hidden window") << 2 << false;
        QTest::newRow("both") << 2 << true;
    }

    // A mode that shows the clock leaves the stale text until the next tick.
    void clock_ticksByItself()
    {
        QFETCH(int, mode);
        QFETCH(bool, shown);
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setVisible(shown);
        window.setViewMode(0);
        clockLabel(window)->setText(stale);
        window.setViewMode(mode);
        QCOMPARE(clockLabel(window)->text(), stale);
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
            for (const int unknown : {-1, 3, 4, INT_MIN, INT_MAX})
                QTest::addRow("%d to %d, unknown", before, unknown)
                    << before << unknown << (before != 1) << (before != 0);
        }
    }

    // Message and bar do not depend on it.
    void viewMode_choosesWhatIsShown()
    {
        QFETCH(int, before);
        QFETCH(int, mode);
        const AppSettings settings;
        OutputWindow window(&settings);
        QVERIFY(figureLabel(window)->isVisibleTo(&window));
        QVERIFY(clockLabel(window)->isVisibleTo(&window));
        window.setMessage("Please wrap up");
        window.setViewMode(before);
        window.setViewMode(mode);
        for (const bool shownAgain : {false, true}) {
            QTEST(figureLabel(window)->isVisibleTo(&window), "figure");
            QTEST(clockLabel(window)->isVisibleTo(&window), "clock");
            QVERIFY(messageLabel(window)->isVisibleTo(&window));
            QVERIFY(progressBar(window)->isVisibleTo(&window));
            QCOMPARE(messageLabel(window)->text(), QStringLiteral("Please wrap up"));
            QCOMPARE(progressBar(window)->value(), 1000);
            window.setVisible(!shownAgain);
            window.hide();
        }
    }
};

VELMORA_TEST_MAIN(OutputWindowClockTest)
#include "tst_OutputWindowClock.moc"
