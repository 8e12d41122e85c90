#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
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
    loadSettings(settings);
    return settings;
}

AppSettings loaded(const char *key, const QByteArray &value)
{
    return loaded("[General]\n" + QByteArray(key) + '=' + value + '\n');
}

const QStringList colorKeys{"bgColor",           "timerColorNormal",
                            "timerColorWarning", "timerColorCritical",
                            "clockColor",        "messageColor"};

} // namespace

/// What a load makes of the store, which is written here past the settings class.
class AppSettingsLoadTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void emptyStore_yieldsTheFallbacks()
    {
        AppSettings settings;
        loadSettings(settings);
        QCOMPARE(settings.timerFontSize, 300);
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(settings)), QStringList());
    }

    void emptyStore_overwritesAllButThePresets()
    {
        AppSettings settings = unusualRecord();
        loadSettings(settings);
        QCOMPARE(settings.presets, QList<int>({45, 90, 45}));
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(settings)), QStringList{"presets"});
    }

    void load_writesNothingToAnEmptyStore()
    {
        AppSettings settings;
        loadSettings(settings);
        QVERIFY(!storeExists());
        QVERIFY(!QFileInfo::exists(storeFilePath() + ".lock"));
    }

    void load_writesNothingToAFilledStore()
    {
        const QByteArray contents = "; a remark\n[General]\ntimerFontSize=9000\nbgColor=nothing\n"
                                    "unknown=1\n\n[presets]\nsize=1\n1\\val=60\n4\\val=7\n";
        writeStoreBytes(contents);
        const QByteArray stored = storeBytes();
        const QDateTime written = storeChanged();
        AppSettings settings;
        loadSettings(settings);
        QCOMPARE(settings.timerFontSize, 550);
        QCOMPARE(storeBytes(), stored);
        QCOMPARE(storeChanged(), written);
    }

    void load_readsTheScopeOfItsOwn()
    {
        writeStoreBytes("[General]\nclockFontSize=99\n");
        QCoreApplication::setOrganizationName("Somebody");
        QCoreApplication::setApplicationName("Something");
        AppSettings settings;
        loadSettings(settings);
        QCoreApplication::setOrganizationName({});
        QCoreApplication::setApplicationName({});
        QCOMPARE(settings.clockFontSize, 99);
        QCOMPARE(QFileInfo(storeFilePath()).dir().dirName(), QStringLiteral("Velmora"));
        QCOMPARE(QFileInfo(storeFilePath()).completeBaseName(), QStringLiteral("Velmora"));
    }

    void eachKey_fillsItsFieldOnly_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QVariant>("expected");
        const auto add = [](const char *key, const char *value, const QVariant &expected) {
            QTest::newRow(key) << QByteArray(value) << expected;
        };
        add("clock24hr", "false", false);
        add("clockShowSeconds", "false", false);
        add("bgColor", "#123456", QColor(0x12, 0x34, 0x56));
        add("timerColorNormal", "#123456", QColor(0x12, 0x34, 0x56));
        add("timerColorWarning", "#123456", QColor(0x12, 0x34, 0x56));
        add("timerColorCritical", "#123456", QColor(0x12, 0x34, 0x56));
        add("clockColor", "#123456", QColor(0x12, 0x34, 0x56));
        add("messageColor", "#123456", QColor(0x12, 0x34, 0x56));
        add("timerFontSize", "77", 77);
        add("clockFontSize", "77", 77);
        add("messageFontSize", "77", 77);
        add("defaultDuration", "77", 77);
        add("warningThreshold", "77", 77);
        add("overtimeEnabled", "false", false);
        add("blinkEnabled", "false", false);
        add("bgImagePath", "/nowhere/a.png", "/nowhere/a.png");
        add("bgImageEnabled", "true", true);
        add("soundFilePath", "/nowhere/a.wav", "/nowhere/a.wav");
        add("soundEnabled", "true", true);
        add("shortcutStartPause", "Ctrl+Alt+Del", "Ctrl+Alt+Del");
        add("shortcutReset", "no key at all", "no key at all");
        add("shortcutPlusMin", "F7", "F7");
        add("shortcutMinusMin", "F8", "F8");
        add("shortcutToggleOutput", "F9", "F9");
    }

    void eachKey_fillsItsFieldOnly()
    {
        QFETCH(QByteArray, value);
        QFETCH(QVariant, expected);
        const char *key = QTest::currentDataTag();
        const RecordFields fields = fieldsOf(loaded(key, value));
        QCOMPARE(fields.value(key), expected);
        QCOMPARE(differingFields(firstRunFields(), fields), QStringList{key});
    }

    // A shortcut that was taken away stays away.
    void emptyText_isNoAbsentKey()
    {
        QCOMPARE(loaded("shortcutStartPause", "").shortcutStartPause, QString());
    }

    void number_isClamped_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("expected");
        const auto addBounds = [](const char *key, int minimum, int maximum) {
            const auto add = [key](int stored, int expected) {
                QTest::addRow("%s %d", key, stored)
                    << QString::fromLatin1(key) << stored << expected;
            };
            add(-2147483647 - 1, minimum);
            add(-5, minimum);
            add(minimum - 1, minimum);
            add(minimum, minimum);
            add(minimum + 1, minimum + 1);
            add(maximum - 1, maximum - 1);
            add(maximum, maximum);
            add(maximum + 1, maximum);
            add(2147483647, maximum);
        };
        addBounds("timerFontSize", 30, 550);
        addBounds("clockFontSize", 20, 300);
        addBounds("messageFontSize", 12, 150);
        addBounds("defaultDuration", 0, 59940);
        addBounds("warningThreshold", 1, 3600);
        QTest::newRow("a small figure") << "timerFontSize" << 10 << 30;
        QTest::newRow("a huge figure") << "timerFontSize" << 9000 << 550;
        QTest::newRow("no threshold") << "warningThreshold" << 0 << 1;
    }

    void number_isClamped()
    {
        QFETCH(QString, key);
        QFETCH(int, stored);
        QFETCH(int, expected);
        const AppSettings settings = loaded(key.toLatin1().constData(), QByteArray::number(stored));
        QCOMPARE(fieldsOf(settings).value(key).toInt(), expected);
    }

    void number_thatDoesNotConvert_isTheMinimum_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<int>("expected");
        const auto addKey = [](const char *key, int minimum) {
            const QList<QByteArray> texts{"",          "abc",     "12x",  "0x40",
                                          "1,000",     "#00cc00", "1, 2", "99999999999999999999",
                                          "@Invalid()"};
            for (const QByteArray &text : texts) {
                QTest::addRow("%s '%s'", key, text.constData())
                    << QString::fromLatin1(key) << text << minimum;
            }
        };
        addKey("timerFontSize", 30);
        addKey("clockFontSize", 20);
        addKey("messageFontSize", 12);
        addKey("defaultDuration", 0);
        addKey("warningThreshold", 1);
    }

    void number_thatDoesNotConvert_isTheMinimum()
    {
        QFETCH(QString, key);
        QFETCH(QByteArray, stored);
        QFETCH(int, expected);
        const AppSettings settings = loaded(key.toLatin1().constData(), stored);
        QCOMPARE(fieldsOf(settings).value(key).toInt(), expected);
    }

    void number_beyond32Bits_isReadAsTheToolkitDoesAndClamped_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::newRow("just beyond") << "2147483648";
        QTest::newRow("just below") << "-2147483649";
        QTest::newRow("a small number in its lower half") << "4294967396";
        QTest::newRow("far beyond") << "99999999999";
        QTest::newRow("far below") << "-99999999999";
        QTest::newRow("largest of 64 bits") << "9223372036854775807";
    }

    void number_beyond32Bits_isReadAsTheToolkitDoesAndClamped()
    {
        QFETCH(QString, stored);
        const AppSettings settings = loaded("timerFontSize", stored.toLatin1());
        QCOMPARE(settings.timerFontSize, qBound(30, QVariant(stored).toInt(), 550));
    }

    void flag_isReadAsTheToolkitDoes_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<bool>("expected");
        QTest::newRow("true") << QByteArray("true") << true;
        QTest::newRow("1") << QByteArray("1") << true;
        QTest::newRow("any text") << QByteArray("perhaps") << true;
        QTest::newRow("false") << QByteArray("false") << false;
        QTest::newRow("FALSE") << QByteArray("FALSE") << false;
        QTest::newRow("0") << QByteArray("0") << false;
        QTest::newRow("empty") << QByteArray("") << false;
    }

    void flag_isReadAsTheToolkitDoes()
    {
        QFETCH(QByteArray, stored);
        QFETCH(bool, expected);
        const QByteArray contents =
            "[General]\nclock24hr=" + stored + "\nsoundEnabled=" + stored + '\n';
        const AppSettings settings = loaded(contents);
        QCOMPARE(settings.clock24hr, expected);
        QCOMPARE(settings.soundEnabled, expected);
    }

    void color_inAnyNotation_isRead_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("name");
        QTest::newRow("3 digits") << QByteArray("#f80") << "#ff8800";
        QTest::newRow("6 digits") << QByteArray("#fe8801") << "#fe8801";
        QTest::newRow("6 capitals") << QByteArray("#FE8801") << "#fe8801";
        QTest::newRow("9 digits") << QByteArray("#fff800000") << "#ff8000";
        QTest::newRow("12 digits") << QByteArray("#fefe88880101") << "#fe8801";
        QTest::newRow("named") << QByteArray("orange") << "#ffa500";
        QTest::newRow("named in mixed case") << QByteArray("DarkGreen") << "#006400";
    }

    void color_inAnyNotation_isRead()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QString, name);
        for (const QString &key : colorKeys) {
            const AppSettings settings = loaded(key.toLatin1().constData(), stored);
            QCOMPARE(fieldsOf(settings).value(key).value<QColor>().name(), name);
            removeStore();
        }
    }

    void color_ofUnknownText_isInvalid_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::newRow("no colour's name") << QByteArray("nocolour");
        QTest::newRow("without the hash") << QByteArray("00cc00");
        QTest::newRow("five digits") << QByteArray("#00cc0");
        QTest::newRow("no digits") << QByteArray("#gg0000");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("a number") << QByteArray("12");
        QTest::newRow("a function") << QByteArray("\"rgb(1,2,3)\"");
    }

    void color_ofUnknownText_isInvalid()
    {
        QFETCH(QByteArray, stored);
        for (const QString &key : colorKeys) {
            const AppSettings settings = loaded(key.toLatin1().constData(), stored);
            QVERIFY2(!fieldsOf(settings).value(key).value<QColor>().isValid(), qPrintable(key));
            QCOMPARE(differingFields(firstRunFields(), fieldsOf(settings)), QStringList{key});
            removeStore();
        }
    }
};

VELMORA_TEST_MAIN(AppSettingsLoadTest)
#include "tst_AppSettingsLoad.moc"
