#include <algorithm>
#include <memory>
#include <vector>

#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "ControlFixture.h"
#include "Costs.h"
#include "DialogView.h"
#include "Modal.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

const std::vector<int> sizes{1000, 2000, 5000, 10'000};
constexpr int repeats = 3;

QList<int> numbers(int count)
{
    QList<int> list;
    for (int i = 0; i < count; ++i)
        list.append(i + 1);
    return list;
}

QList<int> presetsOf(const QListWidget &list)
{
    QList<int> presets;
    for (int row = 0; row < list.count(); ++row)
        presets.append(list.item(row)->data(Qt::UserRole).toInt());
    return presets;
}

} // namespace

/// Thousands of presets in the store, the strip and the dialog: none is lost, and what they
/// cost grows with their number and not faster.
class PresetsLoadTest : public QObject
{
    Q_OBJECT

private slots:
    void thousandsOfPresets_costInProportion()
    {
        Costs costs("number of presets");
        for (int repeat = 0; repeat < repeats; ++repeat) {
            for (const int size : sizes) {
                AppSettings record;
                record.presets = numbers(size);
                removeStore();
                costs.measure("save", size, [&] { saveSettings(record); });
                AppSettings loaded;
                costs.measure("load", size, [&] { loadSettings(loaded); });
                QCOMPARE(loaded.presets, record.presets);

                std::unique_ptr<ControlFixture> fixture;
                costs.measure("build and show both windows", size, [&] {
                    fixture = std::make_unique<ControlFixture>(loaded);
                    fixture->show();
                    QCoreApplication::processEvents();
                });
                const auto *strip = fixture->named<QListWidget>("presetList");
                QCOMPARE(presetsOf(*strip), record.presets);
                costs.measure("fill the strip again", size, [&] {
                    fixture->window->onSettingsChanged();
                    QCoreApplication::processEvents();
                });
                QCOMPARE(presetsOf(*strip), record.presets);
                costs.measure("a tick", size, [&] {
                    passSecond(fixture->engine);
                    QCoreApplication::processEvents();
                });

                // One preset more, in the dialog; its OK saves, and fills the strip.
                QList<int> inDialog;
                const ModalScript<SettingsDialog> user([&](SettingsDialog &dialog) {
                    const DialogView view(dialog);
                    view.showPage("Timer");
                    inDialog = presetsOf(*view.presets());
                    const QList<QSpinBox *> row = view.spinBoxesUnder("PRESETS");
                    QVERIFY(!row.isEmpty());
                    row.at(0)->setValue(200);
                    view.presetButton("Add")->click();
                    view.okButton()->click();
                });
                costs.measure("open the dialog, add one, accept", size, [&] {
                    fixture->window->openSettings();
                    QCoreApplication::processEvents();
                });
                QVERIFY(user.hasPlayed());
                QCOMPARE(inDialog, record.presets);
                QCOMPARE(fixture->settings.presets.size(), size + 1);
                QCOMPARE(presetsOf(*strip), fixture->settings.presets);
                // The store is read up to ten thousand.
                AppSettings stored;
                loadSettings(stored);
                QCOMPARE(stored.presets,
                         fixture->settings.presets.first(std::min(size + 1, 10'000)));

                fixture->enterTime(999, 59);
                costs.measure("add one in the Control window", size,
                              [&] { fixture->button("Add to Preset")->click(); });
                QCOMPARE(fixture->settings.presets.size(), size + 2);
                QCOMPARE(presetsOf(*strip), fixture->settings.presets);
            }
        }
        QVERIFY2(costs.print(), "Something grows faster than the number of presets");
    }
};

VELMORA_TEST_MAIN(PresetsLoadTest, twoScreens())
#include "tst_PresetsLoad.moc"
