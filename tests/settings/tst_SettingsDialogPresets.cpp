#include <limits>

#include <QDrag>
#include <QItemSelectionModel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "Editor.h"
#include "Record.h"
#include "Store.h"
#include "TestMain.h"

namespace {

// Qt's drag is a loop of its own: what follows the first moves is played from it.
// `toTop`: before the first item; else behind the last one.
void drag(QListWidget &list, int row, bool toTop)
{
    QWindow *window = list.window()->windowHandle();
    const auto onWindow = [&list](const QPoint &pos) {
        return list.viewport()->mapTo(list.window(), pos);
    };
    const QRect source = list.visualItemRect(list.item(row));
    const QRect end = list.visualItemRect(list.item(toTop ? 0 : list.count() - 1));
    const QPoint apart(0, (toTop ? -1 : 1) * (QApplication::startDragDistance() + 4));
    const QPoint grip = onWindow(source.center());
    const int edge = toTop ? end.top() + 1 : end.bottom() - 1;
    const QPoint target = onWindow(QPoint(end.center().x(), edge));
    QVERIFY(list.viewport()->rect().contains(end.center().x(), edge));
    QTimer release;
    release.setInterval(0);
    int step = 0;
    QObject::connect(&release, &QTimer::timeout, &release, [&] {
        if (!list.findChild<QDrag *>())
            return;
        switch (step++) {
        case 0:
            QTest::mouseMove(window, target + QPoint(1, 0));
            break;
        case 1:
            QTest::mouseMove(window, target);
            break;
        default:
            release.stop();
            QTest::mouseRelease(window, Qt::LeftButton, {}, target);
        }
    });
    release.start();
    QTest::mousePress(window, Qt::LeftButton, {}, grip);
    QTest::mouseMove(window, grip + apart / 4);
    QTest::mouseMove(window, grip + apart);
    QTRY_VERIFY(!release.isActive());
}

} // namespace

/// The presets of the Timer page.
class SettingsDialogPresetsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void list_showsTheRecordInItsOrder()
    {
        AppSettings start;
        start.presets = {1800, 45, 300, 45};
        const Editor editor(start);
        const QStringList labels{"30 min", "0 min 45 sec", "5 min", "0 min 45 sec"};
        QCOMPARE(editor.presetLabels(), labels);
        QCOMPARE(editor.presetSeconds(), start.presets);
        QVERIFY(!editor.presets()->currentItem());
        QCOMPARE(editor.presets()->maximumHeight(), 120);
        QCOMPARE(editor.presets()->dragDropMode(), QAbstractItemView::InternalMove);
        QCOMPARE(editor.presets()->defaultDropAction(), Qt::MoveAction);
    }

    void preset_isLabelledAndKept_data()
    {
        QTest::addColumn<int>("secs");
        QTest::addColumn<QString>("label");
        const auto add = [](int secs, const char *label) {
            QTest::addRow("%d", secs) << secs << QString(label);
        };
        add(90, "1 min 30 sec");
        add(1, "0 min 1 sec");
        add(59, "0 min 59 sec");
        add(60, "1 min");
        add(61, "1 min 1 sec");
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
        AppSettings start;
        start.presets = {secs};
        Editor editor(start);
        QTEST(editor.presets()->item(0)->text(), "label");
        QCOMPARE(editor.presets()->item(0)->data(Qt::UserRole).typeId(), int(QMetaType::Int));
        editor.runToOk();
        QCOMPARE(editor.record.presets, QList<int>{secs});
    }

    void add_appendsTheDuration_data()
    {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QList<int>>("added");
        QTest::newRow("both") << 1 << 30 << QList<int>{90};
        QTest::newRow("minutes only") << 2 << 0 << QList<int>{120};
        QTest::newRow("one second") << 0 << 1 << QList<int>{1};
        QTest::newRow("longest") << 999 << 59 << QList<int>{59999};
        QTest::newRow("nothing") << 0 << 0 << QList<int>();
    }

    void add_appendsTheDuration()
    {
        QFETCH(const int, minutes);
        QFETCH(const int, seconds);
        QFETCH(const QList<int>, added);
        const Editor editor;
        const QList<QSpinBox *> spinBoxes = editor.spinBoxesUnder("PRESETS");
        spinBoxes.at(0)->setValue(minutes);
        spinBoxes.at(1)->setValue(seconds);
        editor.presetButton("Add")->click();
        QCOMPARE(editor.presetSeconds(), editor.record.presets + added);
        QCOMPARE(spinBoxes.at(0)->value(), minutes);
        QCOMPARE(spinBoxes.at(1)->value(), seconds);
    }

    // Unlike "Add to Preset" in the Control window, which takes no duplicate.
    void add_takesDuplicatesUnsorted()
    {
        AppSettings start;
        start.presets = {600};
        Editor editor(start);
        editor.dialog.addPreset();
        editor.dialog.addPreset();
        QCOMPARE(editor.presetLabels(), QStringList({"10 min", "5 min", "5 min"}));
        QCOMPARE(editor.presetSeconds(), QList<int>({600, 300, 300}));
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
        const Editor editor;
        editor.presets()->setCurrentRow(1, selection);
        editor.presetButton("Remove")->click();
        QCOMPARE(editor.presetSeconds(), QList<int>({300, 900, 1800}));
        QCOMPARE(fieldLines(editor.record), fieldLines(AppSettings()));
    }

    void remove_withoutCurrentItem_takesNothing()
    {
        Editor editor;
        editor.dialog.removePreset();
        QCOMPARE(editor.presetSeconds(), editor.record.presets);
        editor.presets()->clear();
        editor.dialog.removePreset();
        QCOMPARE(editor.presetSeconds(), QList<int>());
    }

    void ok_storesAnEmptyList()
    {
        AppSettings start;
        start.presets.clear();
        Editor editor(start);
        editor.runToOk();
        QCOMPARE(editor.record.presets, QList<int>());
        QVERIFY(storeBytes().contains("[presets]\nsize=0\n"));
        AppSettings next;
        loadSettings(next);
        QCOMPARE(next.presets, QList<int>({300, 600, 900, 1800}));
    }

    void dragged_changesTheOrder_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<bool>("toTop");
        QTest::addColumn<QStringList>("labels");
        QTest::addColumn<QList<int>>("presets");
        QTest::newRow("to the top")
            << 2 << true << QStringList{"15 min", "5 min", "10 min", "30 min"}
            << QList<int>{900, 300, 600, 1800};
        QTest::newRow("to the end")
            << 0 << false << QStringList{"10 min", "15 min", "30 min", "5 min"}
            << QList<int>{600, 900, 1800, 300};
    }

    void dragged_changesTheOrder()
    {
        QFETCH(const int, row);
        QFETCH(const bool, toTop);
        for (const bool accept : {true, false}) {
            Editor editor;
            editor.dialog.resize(500, 800); // high enough for the last preset to be in sight
            editor.run([&] {
                editor.showPage("Timer");
                drag(*editor.presets(), row, toTop);
                QTEST(editor.presetLabels(), "labels");
                QCOMPARE(editor.record.presets, AppSettings().presets);
                (accept ? editor.okButton() : editor.cancelButton())->click();
            });
            QFETCH(const QList<int>, presets);
            QCOMPARE(editor.record.presets, accept ? presets : AppSettings().presets);
        }
    }
};

int main(int argc, char *argv[])
{
    // The offscreen platform drops every drag at once; this one runs Qt's own.
    if (qEnvironmentVariable("QT_QPA_PLATFORM", "offscreen").startsWith("offscreen"))
        qputenv("QT_QPA_PLATFORM", "minimal");
    return runTest(argc, argv, TestPlatform(), [] { return new SettingsDialogPresetsTest; });
}
#include "tst_SettingsDialogPresets.moc"
