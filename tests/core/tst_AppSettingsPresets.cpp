#include <QTest>
#include <QVariant>

#include "AppSettings.h"
#include "Store.h"
#include "TestMain.h"

namespace {

const QList<int> defaultPresets{300, 600, 900, 1800};

QList<int> loadedPresets()
{
    AppSettings settings;
    loadSettings(settings);
    return settings.presets;
}

void savePresets(const QList<int> &presets)
{
    AppSettings settings;
    settings.presets = presets;
    saveSettings(settings);
}

} // namespace

/// The one list of the record: how it is stored, and which stored lists are taken.
class AppSettingsPresetsTest : public QObject
{
    Q_OBJECT

private slots:
    void damagedSize_doesNotHoldTheStart()
    {
        writeStoreBytes("[presets]\n1\\val=60\nsize=2000000000\n");
        AppSettings settings;
        loadSettings(settings);
        QCOMPARE(settings.presets.size(), 10000);
        QCOMPARE(settings.presets.constFirst(), 60);
    }

    void init() { removeStore(); }

    void storedList_isTaken_data()
    {
        QTest::addColumn<QByteArray>("group");
        QTest::addColumn<QList<int>>("expected");
        const auto add = [](const char *tag, const QByteArray &group, const QList<int> &expected) {
            QTest::newRow(tag) << group << expected;
        };
        add("one", "1\\val=90\nsize=1\n", {90});
        add("in the order of their numbers", "2\\val=20\n1\\val=10\n3\\val=5\nsize=3\n",
            {10, 20, 5});
        add("duplicates", "1\\val=60\n2\\val=60\nsize=2\n", {60, 60});
        add("zero and negative", "1\\val=0\n2\\val=-60\nsize=2\n", {0, -60});
        add("beyond any duration", "1\\val=2147483647\n2\\val=-2147483648\nsize=2\n",
            {2147483647, -2147483647 - 1});
        add("without a val", "1\\val=60\n3\\val=180\nsize=3\n", {60, 0, 180});
        add("without any element", "size=2\n", {0, 0});
        add("another key", "1\\value=60\nsize=1\n", {0});
        add("text for a val", "1\\val=ten\n2\\val=60\nsize=2\n", {0, 60});
        add("more elements than the size", "1\\val=1\n2\\val=2\n3\\val=3\nsize=2\n", {1, 2});
        add("eleven",
            "1\\val=1\n2\\val=2\n3\\val=3\n4\\val=4\n5\\val=5\n6\\val=6\n7\\val=7\n"
            "8\\val=8\n9\\val=9\n10\\val=10\n11\\val=11\nsize=11\n",
            {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    }

    void storedList_isTaken()
    {
        QFETCH(QByteArray, group);
        QFETCH(QList<int>, expected);
        writeStoreBytes("[presets]\n" + group);
        QCOMPARE(loadedPresets(), expected);
    }

    // Which number it becomes is Qt's affair; the list keeps its length and neighbours.
    void storedElementBeyond32Bits_isReadAsTheToolkitDoes()
    {
        writeStoreBytes("[presets]\n1\\val=60\n2\\val=99999999999\n3\\val=61\nsize=3\n");
        const int converted = QVariant(QStringLiteral("99999999999")).toInt();
        QCOMPARE(loadedPresets(), QList<int>({60, converted, 61}));
    }

    void storedListWithoutElements_leavesTheRecordsOwn_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::newRow("nothing stored") << QByteArray("[General]\nclock24hr=true\n");
        QTest::newRow("size 0") << QByteArray("[presets]\n1\\val=60\nsize=0\n");
        QTest::newRow("size -1") << QByteArray("[presets]\n1\\val=60\nsize=-1\n");
        QTest::newRow("size of text") << QByteArray("[presets]\n1\\val=60\nsize=many\n");
        QTest::newRow("no size") << QByteArray("[presets]\n1\\val=60\n2\\val=120\n");
        QTest::newRow("no array") << QByteArray("[General]\npresets=60\n");
    }

    void storedListWithoutElements_leavesTheRecordsOwn()
    {
        QFETCH(QByteArray, contents);
        writeStoreBytes(contents);
        AppSettings settings;
        loadSettings(settings);
        QCOMPARE(settings.presets, defaultPresets);
        settings.presets = {7, 8};
        loadSettings(settings);
        QCOMPARE(settings.presets, QList<int>({7, 8}));
    }

    void storedList_replacesWhatTheRecordHeld()
    {
        writeStoreBytes("[presets]\n1\\val=45\nsize=1\n");
        AppSettings settings;
        settings.presets = {7, 8, 9};
        loadSettings(settings);
        QCOMPARE(settings.presets, QList<int>{45});
    }

    void emptyList_isStoredAsSizeZero()
    {
        savePresets({});
        QVERIFY(storeBytes().contains("[presets]\nsize=0\n"));
        QVERIFY(!storeBytes().contains("val="));
    }

    // A stored size of 0 counts as no list, so the default presets hold.
    void emptyList_givesBackTheDefaultsAfterARestart()
    {
        savePresets({});
        QCOMPARE(loadedPresets(), defaultPresets);
    }

    // Intended: Qt removes no element, and only the size says how many are read.
    void shorterList_leavesStaleElementsBehind()
    {
        savePresets({10, 20, 30, 40});
        savePresets({50, 60});
        const QByteArray stored = storeBytes();
        for (const char *line : {"1\\val=50\n", "2\\val=60\n", "3\\val=30\n", "4\\val=40\n"})
            QVERIFY2(stored.contains(line), line);
        QVERIFY(stored.contains("size=2\n"));
    }

    void shorterList_isReadWithoutTheStaleElements()
    {
        savePresets({10, 20, 30, 40});
        savePresets({50, 60});
        QCOMPARE(loadedPresets(), QList<int>({50, 60}));
    }

    void longerList_isReadWhole()
    {
        savePresets({50, 60});
        savePresets({10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120});
        QCOMPARE(loadedPresets(), QList<int>({10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120}));
    }

    void emptyListAfterAFullOne_givesBackTheDefaults()
    {
        savePresets({10, 20});
        savePresets({});
        QCOMPARE(loadedPresets(), defaultPresets);
    }
};

VELMORA_TEST_MAIN(AppSettingsPresetsTest)
#include "tst_AppSettingsPresets.moc"
