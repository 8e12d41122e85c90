#include <vector>

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QRandomGenerator>
#include <QSpinBox>
#include <QTest>

#include "ControlFixture.h"
#include "DialogView.h"
#include "Modal.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Statistics.h"
#include "TestMain.h"
#include "Usage.h"

namespace {

constexpr int trips = 500;
// The first trips fill Qt's caches of fonts and pictures.
constexpr int warmUpTrips = 50;
constexpr int mostHeapKiB = 256;

} // namespace

/// Five hundred times from the store through the dialog and back: nothing is lost on the way,
/// and the last trip costs what the first one did.
class SettingsLoadTest : public QObject
{
    Q_OBJECT

private slots:
    void fiveHundredRoundTrips_loseNothing()
    {
        saveSettings(unusualRecord());
        QRandomGenerator random(4711);
        std::vector<double> number;
        std::vector<double> cost;
        double heapBefore = 0;
        for (int trip = 0; trip < trips; ++trip) {
            AppSettings wanted;
            loadSettings(wanted);
            wanted.timerFontSize = random.bounded(30, 551);
            wanted.warningThreshold = random.bounded(1, 3601);
            wanted.clock24hr = !wanted.clock24hr;
            wanted.overtimeEnabled = !wanted.overtimeEnabled;

            AppSettings record;
            loadSettings(record);
            const double seconds = usage::cpuSeconds([&] {
                SettingsDialog dialog(&record);
                execWith(dialog, [&] {
                    const DialogView view(dialog);
                    view.fontSize("Timer font size")->setValue(wanted.timerFontSize);
                    view.spinBoxesUnder("WARNING THRESHOLD")
                        .at(0)
                        ->setValue(wanted.warningThreshold);
                    view.radio(wanted.clock24hr ? "24-hour  (14:30)" : "12-hour  (2:30 PM)")
                        ->click();
                    view.checkBox("Overtime — continue counting in red past zero")->click();
                    view.okButton()->click();
                });
            });
            if (trip == warmUpTrips)
                heapBefore = usage::heapKiB();
            if (trip >= warmUpTrips) {
                number.push_back(trip);
                cost.push_back(seconds);
            }
            QCOMPARE(fieldLines(record), fieldLines(wanted));
            QCOMPARE(storedLines(), fieldLines(wanted));
        }
        const statistics::Line line = statistics::fit(number, cost);
        qInfo(
            "%d round trips, each dialog opened, changed, accepted: median %.2f ms, p99 %.2f ms of "
            "processor time",
            trips, statistics::percentile(cost, 0.5) * 1000,
            statistics::percentile(cost, 0.99) * 1000);
        const double heap = usage::heapKiB() - heapBefore;
        qInfo("Slope of the cost: %.5f +- %.5f ms a trip (95 %%); heap %.0f KiB more after the "
              "last trip than after number %d",
              line.slope * 1000, line.margin * 1000, heap, warmUpTrips);
        QVERIFY(heap < mostHeapKiB);
    }
};

VELMORA_TEST_MAIN(SettingsLoadTest)
#include "tst_SettingsLoad.moc"
