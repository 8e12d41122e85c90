#include <climits>

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
        const QList<std::pair<int, const char *>> rows{{0, "00:00"},
                                                       {1, "00:01"},
                                                       {9, "00:09"},
                                                       {10, "00:10"},
                                                       {59, "00:59"},
                                                       {60, "01:00"},
                                                       {61, "01:01"},
                                                       {300, "05:00"},
                                                       {599, "09:59"},
                                                       {600, "10:00"},
                                                       {3599, "59:59"},
                                                       {3600, "60:00"},
                                                       {5999, "99:59"},
                                                       {6000, "100:00"},
                                                       {59940, "999:00"},
                                                       {59999, "999:59"},
                                                       {60000, "1000:00"},
                                                       {-1, "-00:01"},
                                                       {-59, "-00:59"},
                                                       {-60, "-01:00"},
                                                       {-61, "-01:01"},
                                                       {-6000, "-100:00"},
                                                       {INT_MAX, "35791394:07"},
                                                       {INT_MIN, "-35791394:08"}};
        for (const auto &[seconds, text] : rows)
            QTest::newRow(text) << seconds;
    }

    void figureText_isMinutesAndSeconds()
    {
        QFETCH(int, seconds);
        QCOMPARE(figureText(seconds), QString(QTest::currentDataTag()));
    }

    void thresholdColor_changesAtTheThresholdAndAtZero_data()
    {
        QTest::addColumn<int>("threshold");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QColor>("color");
        const auto add = [](int threshold, const QColor &color, const QList<int> &counts) {
            for (const int seconds : counts) {
                QTest::addRow("%d with threshold %d", seconds, threshold)
                    << threshold << seconds << color;
            }
        };
        const QColor normal(1, 2, 3);
        const QColor warning(4, 5, 6);
        const QColor critical; // any colour of the record, an invalid one too
        add(60, normal, {INT_MAX, 5400, 61});
        add(60, warning, {60, 59, 1});
        add(60, critical, {0, -1, INT_MIN});
        add(1, normal, {2});
        add(1, warning, {1});
        add(1, critical, {0});
        add(3600, normal, {3601});
        add(3600, warning, {3600, 61});
        // No load yields such a threshold; the comparison with it still comes first.
        add(-5, normal, {0, -4});
        add(-5, critical, {-5});
    }

    void thresholdColor_changesAtTheThresholdAndAtZero()
    {
        QFETCH(int, threshold);
        QFETCH(int, seconds);
        AppSettings settings;
        settings.warningThreshold = threshold;
        settings.timerColorNormal = QColor(1, 2, 3);
        settings.timerColorWarning = QColor(4, 5, 6);
        settings.timerColorCritical = QColor();
        QTEST(thresholdColor(settings, seconds), "color");
    }
};

VELMORA_TEST_MAIN(FigureTest)
#include "tst_Figure.moc"
