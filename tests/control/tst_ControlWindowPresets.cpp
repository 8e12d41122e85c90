#include <QDir>
#include <QListWidget>
#include <QSignalSpy>
#include <QTest>

#include "ControlFixture.h"
#include "Store.h"
#include "TestMain.h"

namespace {

QListWidget *strip(const ControlFixture &fixture)
{
    return fixture.named<QListWidget>("presetList");
}

AppSettings recordWith(const QList<int> &presets)
{
    AppSettings record;
    record.presets = presets;
    return record;
}

QList<int> shownPresets(const ControlFixture &fixture)
{
    QList<int> presets;
    for (int row = 0; row < strip(fixture)->count(); ++row)
        presets.append(strip(fixture)->item(row)->data(Qt::UserRole).toInt());
    return presets;
}

void clickPreset(const ControlFixture &fixture, int row)
{
    QListWidget *list = strip(fixture);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(row)).center());
}

} // namespace

class ControlWindowPresetsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void strip_isOneRowThatReorders()
    {
        const ControlFixture fixture;
        const QListWidget *list = strip(fixture);
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

    void strip_isAlways38High_data()
    {
        QTest::addColumn<QList<int>>("presets");
        QTest::newRow("empty") << QList<int>();
        QTest::newRow("four") << QList<int>({300, 600, 900, 1800});
        QTest::newRow("more than fit") << QList<int>(60, 3725);
    }

    void strip_isAlways38High()
    {
        QFETCH(QList<int>, presets);
        ControlFixture fixture(recordWith(presets));
        fixture.showControl();
        QCOMPARE(strip(fixture)->height(), 38);
        QCOMPARE(strip(fixture)->count(), presets.size());
    }

    void item_isLabelled_data()
    {
        QTest::addColumn<int>("duration");
        QTest::addColumn<QString>("label");
        QTest::newRow("minutes and seconds") << 90 << "1:30";
        QTest::newRow("seconds") << 45 << "0:45";
        QTest::newRow("one second") << 1 << "0:01";
        QTest::newRow("padded seconds") << 3725 << "62:05";
        QTest::newRow("last before a minute") << 59 << "0:59";
        QTest::newRow("a minute") << 60 << "1 min";
        QTest::newRow("five minutes") << 300 << "5 min";
        QTest::newRow("an hour") << 3600 << "60 min";
        QTest::newRow("largest") << 59999 << "999:59";
        QTest::newRow("zero") << 0 << "0 min";
        QTest::newRow("negative") << -90 << "-1 min";
    }

    void item_isLabelled()
    {
        QFETCH(int, duration);
        const ControlFixture fixture(recordWith({duration}));
        QTEST(strip(fixture)->item(0)->text(), "label");
    }

    void item_carriesItsDuration()
    {
        const ControlFixture fixture(recordWith({90}));
        const QListWidgetItem *item = strip(fixture)->item(0);
        QCOMPARE(item->data(Qt::UserRole), QVariant(90));
        QCOMPARE(item->data(Qt::UserRole).typeId(), int(QMetaType::Int));
        QCOMPARE(item->data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignCenter));
    }

    void strip_showsThePresetsInOrder()
    {
        const QList<int> presets{600, 60, 600, 5};
        const ControlFixture fixture(recordWith(presets));
        QCOMPARE(shownPresets(fixture), presets);
    }

    void click_loadsThePreset()
    {
        ControlFixture fixture(recordWith({300, 754}));
        fixture.showControl();
        clickPreset(fixture, 1);
        QCOMPARE(fixture.engine.remaining(), 754);
        QVERIFY(!fixture.engine.isRunning());
        QCOMPARE(fixture.minutes()->value(), 12);
        QCOMPARE(fixture.seconds()->value(), 34);
        QCOMPARE(fixture.outputBar()->value(), 1000);
        fixture.engine.addSeconds(-377); // half of it
        QCOMPARE(fixture.outputBar()->value(), 500);
    }

    void click_stopsARunningCount()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.engine.start();
        passSecond(fixture.engine);
        clickPreset(fixture, 1);
        QVERIFY(!fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 600);
        QCOMPARE(fixture.figure()->text(), QStringLiteral("10:00"));
    }

    void click_selectsTheItemAlone()
    {
        ControlFixture fixture;
        fixture.showControl();
        clickPreset(fixture, 2);
        clickPreset(fixture, 1);
        QCOMPARE(strip(fixture)->selectedItems(),
                 QList<QListWidgetItem *>{strip(fixture)->item(1)});
    }

    void selectedItem_isGreen()
    {
        ControlFixture fixture;
        fixture.showControl();
        QListWidget *list = strip(fixture);
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
    }

    void onPreset_marksNoItem()
    {
        const ControlFixture fixture;
        fixture.window->onPreset(600);
        QVERIFY(strip(fixture)->selectedItems().isEmpty());
    }

    void add_appendsAndSaves()
    {
        ControlFixture fixture;
        fixture.enterTime(7, 30);
        fixture.button("Add to Preset")->click();
        const QList<int> expected{300, 600, 900, 1800, 450};
        QCOMPARE(fixture.settings.presets, expected);
        QCOMPARE(shownPresets(fixture), expected);
        QCOMPARE(loadedSettings().presets, expected);
        const QListWidgetItem *item = strip(fixture)->item(4);
        QCOMPARE(item->text(), QStringLiteral("7:30"));
        QCOMPARE(item->data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignCenter));
    }

    void add_hasNoLimitAndDoesNotSort()
    {
        ControlFixture fixture(recordWith({}));
        QList<int> expected;
        for (int minutes = 100; minutes > 0; --minutes) {
            fixture.enterTime(minutes, 0);
            fixture.button("Add to Preset")->click();
            expected.append(minutes * 60);
        }
        QCOMPARE(shownPresets(fixture), expected);
        QCOMPARE(loadedSettings().presets, expected);
    }

    void add_zero_doesNothing()
    {
        ControlFixture fixture;
        fixture.enterTime(0, 0);
        fixture.button("Add to Preset")->click();
        QCOMPARE(fixture.settings.presets, QList<int>({300, 600, 900, 1800}));
        QCOMPARE(strip(fixture)->count(), 4);
        QCOMPARE(storeBytes(), QByteArray());
    }

    void add_duplicate_writesNothing()
    {
        const QByteArray stored("[General]\nstrange=kept\n");
        writeStoreBytes(stored);
        ControlFixture fixture;
        fixture.enterTime(5, 0);
        fixture.button("Add to Preset")->click();
        QCOMPARE(fixture.settings.presets, QList<int>({300, 600, 900, 1800}));
        QCOMPARE(strip(fixture)->count(), 4);
        QCOMPARE(storeBytes(), stored);
    }

    void add_doesNotLoad()
    {
        ControlFixture fixture;
        fixture.engine.start();
        fixture.enterTime(7, 30);
        fixture.button("Add to Preset")->click();
        QVERIFY(fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 300);
        QVERIFY(strip(fixture)->selectedItems().isEmpty());
    }

    void add_withoutWritableStore_keepsThePresetForTheRun()
    {
        blockStore();
        ControlFixture fixture;
        fixture.enterTime(7, 30);
        fixture.button("Add to Preset")->click();
        QCOMPARE(shownPresets(fixture), QList<int>({300, 600, 900, 1800, 450}));
        QCOMPARE(fixture.settings.presets, QList<int>({300, 600, 900, 1800, 450}));
    }

    void reorder_isStoredAtOnce()
    {
        const ControlFixture fixture;
        QVERIFY(strip(fixture)->model()->moveRow(QModelIndex(), 2, QModelIndex(), 0));
        const QList<int> expected{900, 300, 600, 1800};
        QCOMPARE(fixture.settings.presets, expected);
        QCOMPARE(loadedSettings().presets, expected);
    }

    void reorder_keepsTheItems()
    {
        const ControlFixture fixture;
        const QListWidgetItem *moved = strip(fixture)->item(2);
        QVERIFY(strip(fixture)->model()->moveRow(QModelIndex(), 2, QModelIndex(), 0));
        QCOMPARE(strip(fixture)->item(0), moved);
        QCOMPARE(shownPresets(fixture), QList<int>({900, 300, 600, 1800}));
    }

    void reorder_isShownAfterARestart()
    {
        {
            const ControlFixture fixture;
            QVERIFY(strip(fixture)->model()->moveRow(QModelIndex(), 2, QModelIndex(), 0));
        }
        const ControlFixture restarted;
        QCOMPARE(shownPresets(restarted), QList<int>({900, 300, 600, 1800}));
    }

    void settingsChange_rebuildsWithoutSelection()
    {
        ControlFixture fixture;
        fixture.showControl();
        clickPreset(fixture, 1);
        fixture.settings.presets = {90, 600};
        fixture.window->onSettingsChanged();
        QCOMPARE(shownPresets(fixture), QList<int>({90, 600}));
        QVERIFY(strip(fixture)->selectedItems().isEmpty());
        QCOMPARE(strip(fixture)->item(0)->text(), QStringLiteral("1:30"));
    }
};

VELMORA_TEST_MAIN(ControlWindowPresetsTest)
#include "tst_ControlWindowPresets.moc"
