#include <climits>

#include <QDateTime>
#include <QTest>

#include "AppSettings.h"
#include "RecordFields.h"
#include "Store.h"
#include "TestMain.h"

namespace {

AppSettings loaded(const QByteArray &storeContents)
{
    writeStoreBytes(storeContents);
    AppSettings settings;
    settings.presets = {7, 8};
    loadSettings(settings);
    return settings;
}

void savePresets(const QList<int> &presets)
{
    AppSettings settings;
    settings.presets = presets;
    saveSettings(settings);
}

QList<int> loadedPresets()
{
    AppSettings settings;
    loadSettings(settings);
    return settings.presets;
}

} // namespace

/// What a load makes of values that the program itself may never have stored, and of lists.
class AppSettingsLoadTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void load_leavesTheStoreAsItIs()
    {
        writeStoreBytes("; a remark\n[General]\ntimerFontSize=9000\nbgColor=nothing\n"
                        "unknown=1\n\n[presets]\nsize=1\n1\\val=60\n4\\val=7\n");
        const QByteArray stored = storeBytes();
        const QDateTime written = storeChanged();
        QCOMPARE(loadedPresets(), QList<int>{60});
        QCOMPARE(storeBytes(), stored);
        QCOMPARE(storeChanged(), written);
    }

    void number_isBroughtIntoItsRange_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("expected");
        const auto addKey = [](const QString &key, int minimum, int maximum) {
            const auto add = [&key](const QString &stored, int expected) {
                QTest::addRow("%s '%s'", qPrintable(key), qPrintable(stored))
                    << key << stored << expected;
            };
            for (const int stored : {INT_MIN, -5, minimum - 1, minimum})
                add(QString::number(stored), minimum);
            for (const int stored : {minimum + 1, maximum - 1})
                add(QString::number(stored), stored);
            for (const int stored : {maximum, maximum + 1, INT_MAX})
                add(QString::number(stored), maximum);
            for (const char *text : {"", "abc", "12x", "0x40", "1,000", "#00cc00", "1, 2",
                                     "99999999999999999999", "@Invalid()"})
                add(text, minimum);
            // What these become is Qt's affair, and is brought into the range.
            for (const char *beyond : {"2147483648", "-2147483649", "4294967396", "99999999999",
                                       "-99999999999", "9223372036854775807"})
                add(beyond, qBound(minimum, QVariant(QString(beyond)).toInt(), maximum));
        };
        addKey("timerFontSize", 30, 550);
        addKey("clockFontSize", 20, 300);
        addKey("messageFontSize", 12, 150);
        addKey("defaultDuration", 0, 59940);
        addKey("warningThreshold", 1, 3600);
    }

    void number_isBroughtIntoItsRange()
    {
        QFETCH(QString, key);
        QFETCH(QString, stored);
        const AppSettings settings = loaded("[General]\n" + (key + '=' + stored).toUtf8() + '\n');
        QTEST(fieldsOf(settings).value(key).toInt(), "expected");
    }

    void flag_isReadAsQtReadsIt_data()
    {
        QTest::addColumn<bool>("expected");
        for (const char *text : {"true", "1", "perhaps"})
            QTest::newRow(text) << true;
        for (const char *text : {"false", "FALSE", "0", ""})
            QTest::newRow(text) << false;
    }

    void flag_isReadAsQtReadsIt()
    {
        const QByteArray stored = QTest::currentDataTag();
        const AppSettings settings =
            loaded("[General]\nclock24hr=" + stored + "\nsoundEnabled=" + stored + '\n');
        QTEST(settings.clock24hr, "expected");
        QTEST(settings.soundEnabled, "expected");
    }

    void color_isReadInAnyNotation_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QColor>("expected");
        QTest::newRow("3 digits") << QByteArray("#f80") << QColor("#ff8800");
        QTest::newRow("6 digits") << QByteArray("#fe8801") << QColor("#fe8801");
        QTest::newRow("6 capitals") << QByteArray("#FE8801") << QColor("#fe8801");
        QTest::newRow("9 digits") << QByteArray("#fff800000") << QColor("#ff8000");
        QTest::newRow("12 digits") << QByteArray("#fefe88880101") << QColor("#fe8801");
        QTest::newRow("named") << QByteArray("orange") << QColor("#ffa500");
        QTest::newRow("named in mixed case") << QByteArray("DarkGreen") << QColor("#006400");
        // All else is taken for no colour, not for the default one.
        for (const char *text :
             {"nocolour", "00cc00", "#00cc0", "#gg0000", "", "12", "\"rgb(1,2,3)\""})
            QTest::addRow("'%s'", text) << QByteArray(text) << QColor();
    }

    void color_isReadInAnyNotation()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QColor, expected);
        QByteArray contents = "[General]\n";
        for (const StoredSetting &setting : storedSettings) {
            if (std::holds_alternative<QColor AppSettings::*>(setting.field))
                contents += setting.key + ('=' + stored) + '\n';
        }
        const AppSettings settings = loaded(contents);
        for (const QColor &color :
             {settings.bgColor, settings.timerColorNormal, settings.timerColorWarning,
              settings.timerColorCritical, settings.clockColor, settings.messageColor}) {
            QCOMPARE(color.isValid(), expected.isValid());
            QCOMPARE(color.name(), expected.name());
        }
    }

    void storedList_isTakenUnlessItIsEmpty_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::addColumn<QList<int>>("expected");
        const auto add = [](const char *tag, const QByteArray &list, const QList<int> &expected) {
            QTest::newRow(tag) << "[presets]\n" + list << expected;
        };
        add("one", "1\\val=90\nsize=1\n", {90});
        add("by number", "2\\val=20\n1\\val=10\n3\\val=5\nsize=3\n", {10, 20, 5});
        add("duplicates", "1\\val=60\n2\\val=60\nsize=2\n", {60, 60});
        add("zero and negative", "1\\val=0\n2\\val=-60\nsize=2\n", {0, -60});
        add("extremes", "1\\val=2147483647\n2\\val=-2147483648\nsize=2\n", {INT_MAX, INT_MIN});
        add("beyond 32 bits", "1\\val=60\n2\\val=99999999999\n3\\val=61\nsize=3\n",
            {60, QVariant(QStringLiteral("99999999999")).toInt(), 61});
        add("without a val", "1\\val=60\n3\\val=180\nsize=3\n", {60, 0, 180});
        add("without any element", "size=2\n", {0, 0});
        add("another key", "1\\value=60\nsize=1\n", {0});
        add("text for a val", "1\\val=ten\n2\\val=60\nsize=2\n", {0, 60});
        add("more elements than the size", "1\\val=1\n2\\val=2\n3\\val=3\nsize=2\n", {1, 2});
        // Without an element, what the record held stays.
        const QList<int> own{7, 8};
        add("size 0", "1\\val=60\nsize=0\n", own);
        add("size -1", "1\\val=60\nsize=-1\n", own);
        add("size of text", "1\\val=60\nsize=many\n", own);
        add("no size", "1\\val=60\n2\\val=120\n", own);
        QTest::newRow("nothing") << QByteArray("[General]\nclock24hr=true\n") << own;
        QTest::newRow("no list") << QByteArray("[General]\npresets=60\n") << own;
    }

    void storedList_isTakenUnlessItIsEmpty()
    {
        QFETCH(QByteArray, contents);
        QTEST(loaded(contents).presets, "expected");
    }

    void damagedSize_doesNotHoldTheStart()
    {
        const AppSettings settings = loaded("[presets]\n1\\val=60\nsize=2000000000\n");
        QCOMPARE(settings.presets.size(), 10000);
        QCOMPARE(settings.presets.constFirst(), 60);
    }

    // Intended: Qt removes no element, and only the size says how many are read.
    void shorterList_leavesStaleElementsThatNoLoadReads()
    {
        savePresets({10, 20, 30, 40});
        savePresets({50, 60});
        for (const char *line : {"1\\val=50", "2\\val=60", "3\\val=30", "4\\val=40", "size=2"})
            QVERIFY2(storeBytes().split('\n').contains(line), line);
        QCOMPARE(loadedPresets(), QList<int>({50, 60}));
        const QList<int> longer{10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120};
        savePresets(longer);
        QCOMPARE(loadedPresets(), longer);
    }

    void emptyList_givesBackTheDefaultsAfterARestart()
    {
        savePresets({});
        QVERIFY(storeBytes().contains("[presets]\nsize=0\n"));
        QCOMPARE(loadedPresets(), QList<int>({300, 600, 900, 1800}));
        savePresets({10, 20});
        savePresets({});
        QCOMPARE(loadedPresets(), QList<int>({300, 600, 900, 1800}));
    }
};

VELMORA_TEST_MAIN(AppSettingsLoadTest)
#include "tst_AppSettingsLoad.moc"
