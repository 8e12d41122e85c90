#include <QTest>

#include "ControlFixture.h"
#include "Store.h"
#include "TestMain.h"

namespace {

const QList<int> defaults{300, 600, 900, 1800};
const QList<int> withSevenThirty{300, 600, 900, 1800, 450};

QList<int> shownPresets(const ControlFixture &fixture)
{
    QList<int> presets;
    for (int row = 0; row < fixture.strip()->count(); ++row)
        presets.append(fixture.strip()->item(row)->data(Qt::UserRole).toInt());
    return presets;
}

void clickPreset(const ControlFixture &fixture, int row)
{
    QListWidget *list = fixture.strip();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(row)).center());
}

void addPreset(ControlFixture &fixture, int minutes, int seconds)
{
    fixture.enterTime(minutes, seconds);
    fixture.button("Add to Preset")->click();
}

} // namespace

class PresetStripTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void strip_isOneRowThatReorders()
    {
        const ControlFixture fixture;
        const QListWidget *list = fixture.strip();
        QCOMPARE(list->flow(), QListView::LeftToRight);
        QCOMPARE(list->dragDropMode(), QAbstractItemView::InternalMove);
        QCOMPARE(list->defaultDropAction(), Qt::MoveAction);
        QCOMPARE(list->selectionMode(), QAbstractItemView::SingleSelection);
        QVERIFY(!list->isWrapping());
        QCOMPARE(list->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(list->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(list->spacing(), 3);
        QCOMPARE(list->minimumHeight(), 38);
        QCOMPARE(list->maximumHeight(), 38);
    }

    void strip_showsThePresetsInOrder_data()
    {
        QTest::addColumn<QList<int>>("presets");
        QTest::newRow("empty") << QList<int>();
        QTest::newRow("unsorted, and one twice") << QList<int>({600, 60, 600, 5});
        QTest::newRow("more than fit") << QList<int>(60, 3725);
    }

    void strip_showsThePresetsInOrder()
    {
        QFETCH(QList<int>, presets);
        ControlFixture fixture(recordWith(&AppSettings::presets, presets));
        fixture.showControl();
        QCOMPARE(shownPresets(fixture), presets);
        QCOMPARE(fixture.strip()->height(), 38);
    }

    void item_isLabelledAndCarriesItsDuration_data()
    {
        QTest::addColumn<int>("duration");
        QTest::addColumn<QString>("label");
        QTest::newRow("minutes and seconds") << 90 << "1:30";
        QTest::newRow("one second") << 1 << "0:01";
        QTest::newRow("padded seconds") << 3725 << "62:05";
        QTest::newRow("last before a minute") << 59 << "0:59";
        QTest::newRow("a minute") << 60 << "1 min";
        QTest::newRow("an hour") << 3600 << "60 min";
        QTest::newRow("largest") << 59999 << "999:59";
        QTest::newRow("zero") << 0 << "0 min";
        QTest::newRow("negative") << -90 << "-1 min";
    }

    void item_isLabelledAndCarriesItsDuration()
    {
        QFETCH(int, duration);
        const ControlFixture fixture(recordWith(&AppSettings::presets, QList<int>{duration}));
        const QListWidgetItem *item = fixture.strip()->item(0);
        QTEST(item->text(), "label");
        QCOMPARE(item->data(Qt::UserRole), QVariant(duration));
        QCOMPARE(item->data(Qt::UserRole).typeId(), int(QMetaType::Int));
        QCOMPARE(item->data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignCenter));
    }

    void click_loadsThePreset()
    {
        ControlFixture fixture(recordWith(&AppSettings::presets, QList<int>{300, 754}));
        fixture.showControl();
        fixture.engine.start();
        clickPreset(fixture, 1);
        QVERIFY(!fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 754);
        QCOMPARE(fixture.figure()->text(), "12:34");
        QCOMPARE(fixture.minutes()->value(), 12);
        QCOMPARE(fixture.seconds()->value(), 34);
        QCOMPARE(fixture.outputBar()->value(), 1000);
        fixture.engine.addSeconds(-377); // half of it
        QCOMPARE(fixture.outputBar()->value(), 500);
    }

    void click_selectsTheItemAlone()
    {
        ControlFixture fixture;
        fixture.showControl();
        clickPreset(fixture, 2);
        clickPreset(fixture, 1);
        QCOMPARE(fixture.strip()->selectedItems(),
                 QList<QListWidgetItem *>{fixture.strip()->item(1)});
        // A change of the settings makes the items again.
        fixture.settings.presets = {90, 600};
        fixture.window->onSettingsChanged();
        QCOMPARE(shownPresets(fixture), QList<int>({90, 600}));
        QVERIFY(fixture.strip()->selectedItems().isEmpty());
    }

    void selectedItem_isGreen()
    {
        ControlFixture fixture;
        fixture.showControl();
        QListWidget *list = fixture.strip();
        list->setCurrentRow(1); // by no click, so that the pointer does not hover over it
        const QImage picture = list->viewport()->grab().toImage();
        const QRect other = list->visualItemRect(list->item(0));
        const QRect selected = list->visualItemRect(list->item(1));
        QCOMPARE(picture.pixelColor(selected.topLeft() + QPoint(3, 3)), QColor("#1a5c2a"));
        QCOMPARE(picture.pixelColor(selected.center().x(), selected.top()), QColor("#2a9c4a"));
        QCOMPARE(picture.pixelColor(other.topLeft() + QPoint(3, 3)), QColor("#2b2b2b"));
        QCOMPARE(picture.pixelColor(other.center().x(), other.top()), QColor("#444444"));
    }

    void onPreset_loadsAsAClickDoes_data()
    {
        QTest::addColumn<int>("duration");
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::newRow("listed") << 600 << 10 << 0;
        QTest::newRow("not listed") << 95 << 1 << 35;
        QTest::newRow("beyond the row") << 60000 << 999 << 0;
    }

    // But it marks no item.
    void onPreset_loadsAsAClickDoes()
    {
        QFETCH(int, duration);
        ControlFixture fixture;
        fixture.engine.start();
        fixture.window->onPreset(duration);
        QVERIFY(!fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), duration);
        QCOMPARE(fixture.outputBar()->value(), 1000);
        QTEST(fixture.minutes()->value(), "minutes");
        QTEST(fixture.seconds()->value(), "seconds");
        QVERIFY(fixture.strip()->selectedItems().isEmpty());
    }

    void add_appendsAndSavesButDoesNotLoad()
    {
        ControlFixture fixture;
        fixture.engine.start();
        addPreset(fixture, 7, 30);
        QCOMPARE(fixture.settings.presets, withSevenThirty);
        QCOMPARE(shownPresets(fixture), withSevenThirty);
        QCOMPARE(loadedSettings().presets, withSevenThirty);
        QCOMPARE(fixture.strip()->item(4)->text(), "7:30");
        QVERIFY(fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 300);
        QVERIFY(fixture.strip()->selectedItems().isEmpty());
    }

    void add_hasNoLimitAndDoesNotSort()
    {
        ControlFixture fixture(recordWith(&AppSettings::presets, QList<int>{}));
        QList<int> expected;
        for (int minutes = 100; minutes > 0; --minutes) {
            addPreset(fixture, minutes, 0);
            expected.append(minutes * 60);
        }
        QCOMPARE(shownPresets(fixture), expected);
        QCOMPARE(loadedSettings().presets, expected);
    }

    void add_zeroOrDuplicate_writesNothing()
    {
        const QByteArray stored("[General]\nstrange=kept\n");
        writeStoreBytes(stored);
        ControlFixture fixture;
        for (const int minutes : {0, 5, 30}) {
            addPreset(fixture, minutes, 0);
            QCOMPARE(fixture.settings.presets, defaults);
            QCOMPARE(shownPresets(fixture), defaults);
            QCOMPARE(storeBytes(), stored);
        }
    }

    void add_withoutWritableStore_keepsThePresetForTheRun()
    {
        blockStore();
        ControlFixture fixture;
        addPreset(fixture, 7, 30);
        QCOMPARE(shownPresets(fixture), withSevenThirty);
        QCOMPARE(fixture.settings.presets, withSevenThirty);
    }

    void reorder_isStoredAtOnceAndKeepsTheItems()
    {
        const QList<int> expected{900, 300, 600, 1800};
        const ControlFixture fixture;
        const QListWidgetItem *moved = fixture.strip()->item(2);
        QVERIFY(fixture.strip()->model()->moveRow(QModelIndex(), 2, QModelIndex(), 0));
        QCOMPARE(fixture.settings.presets, expected);
        QCOMPARE(shownPresets(fixture), expected);
        QCOMPARE(fixture.strip()->item(0), moved);
        const ControlFixture restarted;
        QCOMPARE(shownPresets(restarted), expected);
    }
};

VELMORA_TEST_MAIN(PresetStripTest)
#include "tst_PresetStrip.moc"
