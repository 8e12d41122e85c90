#include <limits>

#include <QFile>
#include <QItemSelectionModel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

QStringList labelsIn(const QListWidget &list)
{
    QStringList labels;
    for (int row = 0; row < list.count(); ++row)
        labels << list.item(row)->text();
    return labels;
}

QList<int> secondsIn(const QListWidget &list)
{
    QList<int> seconds;
    for (int row = 0; row < list.count(); ++row)
        seconds << list.item(row)->data(Qt::UserRole).toInt();
    return seconds;
}

} // namespace

class SettingsDialogPresetsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void list_isReorderedByDragging()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const QListWidget *list = DialogView(dialog).presets();
        QCOMPARE(list->maximumHeight(), 120);
        QCOMPARE(list->dragDropMode(), QAbstractItemView::InternalMove);
        QCOMPARE(list->defaultDropAction(), Qt::MoveAction);
    }

    void list_showsTheRecordInItsOrder()
    {
        AppSettings record;
        record.presets = {1800, 45, 300, 45};
        SettingsDialog dialog(&record, nullptr);
        const QListWidget *list = DialogView(dialog).presets();
        QCOMPARE(labelsIn(*list), QStringList({"30 min", "0 min 45 sec", "5 min", "0 min 45 sec"}));
        QCOMPARE(secondsIn(*list), record.presets);
        QVERIFY(!list->currentItem());
    }

    void preset_isLabelledAndKept_data()
    {
        QTest::addColumn<int>("secs");
        QTest::addColumn<QString>("label");
        const auto add = [](int secs, const char *label) {
            QTest::addRow("%d", secs) << secs << QString::fromLatin1(label);
        };
        add(90, "1 min 30 sec");
        add(300, "5 min");
        add(45, "0 min 45 sec");
        add(1, "0 min 1 sec");
        add(59, "0 min 59 sec");
        add(60, "1 min");
        add(61, "1 min 1 sec");
        add(3600, "60 min");
        add(59999, "999 min 59 sec");
        add(360000, "6000 min");
        add(0, "0 min");
        add(-1, "0 min");
        add(-59, "0 min");
        add(-60, "-1 min");
        add(-90, "-1 min");
        add(std::numeric_limits<int>::max(), "35791394 min 7 sec");
        add(std::numeric_limits<int>::min(), "-35791394 min");
    }

    void preset_isLabelledAndKept()
    {
        QFETCH(const int, secs);
        AppSettings record;
        record.presets = {secs};
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QTEST(view.presets()->item(0)->text(), "label");
        QCOMPARE(view.presets()->item(0)->data(Qt::UserRole).typeId(), int(QMetaType::Int));
        execWith(dialog, [&] { view.okButton()->click(); });
        QCOMPARE(record.presets, QList<int>{secs});
        QCOMPARE(storedLines(), fieldLines(record));
    }

    void newPreset_startsAtFiveMinutes()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        const QList<QSpinBox *> spinBoxes =
            DialogView(dialog).spinBoxesUnder(QStringLiteral("PRESETS"));
        QCOMPARE(spinBoxes.size(), 2);
        QCOMPARE(spinBoxes.at(0)->minimum(), 0);
        QCOMPARE(spinBoxes.at(0)->maximum(), 999);
        QCOMPARE(spinBoxes.at(0)->suffix(), QStringLiteral(" min"));
        QCOMPARE(spinBoxes.at(0)->value(), 5);
        QCOMPARE(spinBoxes.at(1)->minimum(), 0);
        QCOMPARE(spinBoxes.at(1)->maximum(), 59);
        QCOMPARE(spinBoxes.at(1)->suffix(), QStringLiteral(" sec"));
        QCOMPARE(spinBoxes.at(1)->value(), 0);
    }

    void add_appendsTheDuration_data()
    {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("label");
        QTest::addColumn<int>("secs");
        QTest::newRow("both") << 1 << 30 << "1 min 30 sec" << 90;
        QTest::newRow("minutes only") << 2 << 0 << "2 min" << 120;
        QTest::newRow("seconds only") << 0 << 45 << "0 min 45 sec" << 45;
        QTest::newRow("one second") << 0 << 1 << "0 min 1 sec" << 1;
        QTest::newRow("longest") << 999 << 59 << "999 min 59 sec" << 59999;
    }

    void add_appendsTheDuration()
    {
        QFETCH(const int, minutes);
        QFETCH(const int, seconds);
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        view.spinBoxesUnder(QStringLiteral("PRESETS")).at(0)->setValue(minutes);
        view.spinBoxesUnder(QStringLiteral("PRESETS")).at(1)->setValue(seconds);
        view.presetButton(QStringLiteral("Add"))->click();
        QCOMPARE(view.presets()->count(), 5);
        QTEST(view.presets()->item(4)->text(), "label");
        QTEST(view.presets()->item(4)->data(Qt::UserRole).toInt(), "secs");
    }

    void add_ofNothing_addsNothing()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        view.spinBoxesUnder(QStringLiteral("PRESETS")).at(0)->setValue(0);
        view.presetButton(QStringLiteral("Add"))->click();
        QCOMPARE(secondsIn(*view.presets()), record.presets);
    }

    // Unlike "Add to Preset" in the Control window, which takes no duplicate.
    void add_takesDuplicatesUnsorted()
    {
        AppSettings record;
        record.presets = {600};
        SettingsDialog dialog(&record, nullptr);
        const QListWidget *list = DialogView(dialog).presets();
        dialog.addPreset();
        dialog.addPreset();
        QCOMPARE(labelsIn(*list), QStringList({"10 min", "5 min", "5 min"}));
        QCOMPARE(secondsIn(*list), QList<int>({600, 300, 300}));
    }

    void add_keepsTheSpinBoxes()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        const QList<QSpinBox *> spinBoxes = view.spinBoxesUnder(QStringLiteral("PRESETS"));
        spinBoxes.at(0)->setValue(7);
        spinBoxes.at(1)->setValue(8);
        view.presetButton(QStringLiteral("Add"))->click();
        QCOMPARE(spinBoxes.at(0)->value(), 7);
        QCOMPARE(spinBoxes.at(1)->value(), 8);
    }

    void remove_takesTheCurrentItem_data()
    {
        QTest::addColumn<QItemSelectionModel::SelectionFlag>("selection");
        QTest::newRow("selected") << QItemSelectionModel::ClearAndSelect;
        QTest::newRow("not selected") << QItemSelectionModel::NoUpdate;
    }

    void remove_takesTheCurrentItem()
    {
        QFETCH(const QItemSelectionModel::SelectionFlag, selection);
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        view.presets()->setCurrentRow(1, selection);
        view.presetButton(QStringLiteral("Remove"))->click();
        QCOMPARE(secondsIn(*view.presets()), QList<int>({300, 900, 1800}));
        QCOMPARE(fieldLines(record), fieldLines(AppSettings()));
    }

    void remove_withoutCurrentItem_takesNothing()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        dialog.removePreset();
        view.presetButton(QStringLiteral("Remove"))->click();
        QCOMPARE(secondsIn(*view.presets()), record.presets);
    }

    void remove_fromEmptyList_takesNothing()
    {
        AppSettings record;
        record.presets = {300};
        SettingsDialog dialog(&record, nullptr);
        const QListWidget *list = DialogView(dialog).presets();
        DialogView(dialog).presets()->setCurrentRow(0);
        dialog.removePreset();
        QCOMPARE(list->count(), 0);
        dialog.removePreset();
        QCOMPARE(list->count(), 0);
    }

    void ok_storesTheList()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.presets()->setCurrentRow(0);
            view.presetButton(QStringLiteral("Remove"))->click();
            view.presetButton(QStringLiteral("Add"))->click();
            view.okButton()->click();
        });
        QCOMPARE(record.presets, QList<int>({600, 900, 1800, 300}));
        QCOMPARE(storedLines(), fieldLines(record));
    }

    void ok_storesAnEmptyList()
    {
        AppSettings record;
        record.presets.clear();
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QCOMPARE(view.presets()->count(), 0);
        execWith(dialog, [&] { view.okButton()->click(); });
        QCOMPARE(record.presets, QList<int>());
        QVERIFY(storeBytes().contains("[presets]\nsize=0\n"));
        AppSettings next;
        loadSettings(next);
        QCOMPARE(next.presets, QList<int>({300, 600, 900, 1800}));
    }

    void cancel_keepsTheList()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.presetButton(QStringLiteral("Add"))->click();
            view.presets()->setCurrentRow(0);
            view.presetButton(QStringLiteral("Remove"))->click();
            view.cancelButton()->click();
        });
        QCOMPARE(record.presets, QList<int>({300, 600, 900, 1800}));
        QVERIFY(!storeExists());
    }

    void reordering_keepsTheSecondsWithTheirLabels()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            QAbstractItemModel *model = view.presets()->model();
            QVERIFY(model->moveRow({}, 3, {}, 1));
            QCOMPARE(labelsIn(*view.presets()),
                     QStringList({"5 min", "30 min", "10 min", "15 min"}));
            view.okButton()->click();
        });
        QCOMPARE(record.presets, QList<int>({300, 1800, 600, 900}));
    }
};

VELMORA_TEST_MAIN(SettingsDialogPresetsTest)
#include "tst_SettingsDialogPresets.moc"
