#include <limits>

#include <QTest>

#include "AppSettings.h"
#include "Figure.h"
#include "TestMain.h"

class FigureTest : public QObject
{
    Q_OBJECT

private slots:
    void figureText_isMinutesAndSeconds_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("text");
        const auto add = [](int seconds, const char *text) {
            QTest::newRow(text) << seconds << QString::fromLatin1(text);
        };
        add(0, "00:00");
        add(1, "00:01");
        add(9, "00:09");
        add(10, "00:10");
        add(59, "00:59");
        add(60, "01:00");
        add(61, "01:01");
        add(300, "05:00");
        add(599, "09:59");
        add(600, "10:00");
        add(3599, "59:59");
        add(3600, "60:00");
        add(5999, "99:59");
        add(6000, "100:00");
        add(59940, "999:00");
        add(59999, "999:59");
        add(60000, "1000:00");
        add(-1, "-00:01");
        add(-59, "-00:59");
        add(-60, "-01:00");
        add(-61, "-01:01");
        add(-6000, "-100:00");
        add(std::numeric_limits<int>::max(), "35791394:07");
        add(std::numeric_limits<int>::min(), "-35791394:08");
    }

    void figureText_isMinutesAndSeconds()
    {
        QFETCH(int, seconds);
        QFETCH(QString, text);
        QCOMPARE(figureText(seconds), text);
    }

    void thresholdColor_changesAtTheThresholdAndAtZero_data()
    {
        QTest::addColumn<int>("threshold");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("color");
        const QString normal = "#00cc00";
        const QString warning = "#ff8800";
        const QString critical = "#ff2200";
        const auto add = [](int threshold, int seconds, const QString &color) {
            QTest::addRow("%d with threshold %d", seconds, threshold)
                << threshold << seconds << color;
        };
        add(60, std::numeric_limits<int>::max(), normal);
        add(60, 300, normal);
        add(60, 61, normal);
        add(60, 60, warning);
        add(60, 59, warning);
        add(60, 1, warning);
        add(60, 0, critical);
        add(60, -1, critical);
        add(60, std::numeric_limits<int>::min(), critical);
        add(1, 2, normal);
        add(1, 1, warning);
        add(1, 0, critical);
        add(3600, 3601, normal);
        add(3600, 3600, warning);
        add(3600, 61, warning);
    }

    void thresholdColor_changesAtTheThresholdAndAtZero()
    {
        QFETCH(int, threshold);
        QFETCH(int, seconds);
        QFETCH(QString, color);
        AppSettings settings;
        settings.warningThreshold = threshold;
        QCOMPARE(thresholdColor(settings, seconds).name(), color);
    }

    void thresholdColor_isTheRecordsLiveColor()
    {
        AppSettings settings;
        settings.timerColorNormal = QColor(1, 2, 3);
        settings.timerColorWarning = QColor(4, 5, 6);
        settings.timerColorCritical = QColor();
        QCOMPARE(thresholdColor(settings, 61), QColor(1, 2, 3));
        QCOMPARE(thresholdColor(settings, 60), QColor(4, 5, 6));
        QVERIFY(!thresholdColor(settings, 0).isValid());
    }
};

VELMORA_TEST_MAIN(FigureTest)
#include "tst_Figure.moc"
