#include <algorithm>
#include <tuple>
#include <type_traits>

#include <QCoreApplication>
#include <QFileInfo>
#include <QTest>

#include "AppSettings.h"
#include "RecordFields.h"
#include "Store.h"
#include "TestMain.h"

static_assert(std::is_aggregate_v<AppSettings>);

namespace {

// unusualRecord() in the store, its presets aside.
const QByteArrayList unusualLines{"clock24hr=false",
                                  "clockShowSeconds=false",
                                  "bgColor=#010203",
                                  "timerColorNormal=#040506",
                                  "timerColorWarning=#070809",
                                  "timerColorCritical=#0a0b0c",
                                  "clockColor=#0d0e0f",
                                  "messageColor=#101112",
                                  "timerFontSize=31",
                                  "clockFontSize=21",
                                  "messageFontSize=13",
                                  "defaultDuration=754",
                                  "warningThreshold=17",
                                  "overtimeEnabled=false",
                                  "blinkEnabled=false",
                                  "bgImagePath=/pictures/Stage left.png",
                                  "bgImageEnabled=true",
                                  "soundFilePath=/sounds/gong.wav",
                                  "soundEnabled=true",
                                  "shortcutStartPause=F1",
                                  "shortcutReset=Ctrl+R",
                                  "shortcutPlusMin=Num+5",
                                  "shortcutMinusMin=\"Ctrl+K, Ctrl+C\"",
                                  "shortcutToggleOutput="};

AppSettings loaded()
{
    AppSettings settings;
    loadSettings(settings);
    return settings;
}

} // namespace

/// The record, its table, and what a save leaves in the store for the next load.
class AppSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    // The other tests compare records by this table, so its keys and fields are compared with
    // words.
    void table_hasEachFieldUnderItsKeyInTheOrderOfTheFields()
    {
        AppSettings settings;
        // There are exactly this many fields, or this would not compile.
        auto &[clock24hr, clockShowSeconds, bgColor, timerColorNormal, timerColorWarning,
               timerColorCritical, clockColor, messageColor, timerFontSize, clockFontSize,
               messageFontSize, defaultDuration, warningThreshold, overtimeEnabled, blinkEnabled,
               presets, bgImagePath, bgImageEnabled, soundFilePath, soundEnabled,
               shortcutStartPause, shortcutReset, shortcutPlusMin, shortcutMinusMin,
               shortcutToggleOutput] = settings;
        const QList<std::tuple<QByteArray, QByteArray, const void *>> expected{
            {"bool", "clock24hr", &clock24hr},
            {"bool", "clockShowSeconds", &clockShowSeconds},
            {"QColor", "bgColor", &bgColor},
            {"QColor", "timerColorNormal", &timerColorNormal},
            {"QColor", "timerColorWarning", &timerColorWarning},
            {"QColor", "timerColorCritical", &timerColorCritical},
            {"QColor", "clockColor", &clockColor},
            {"QColor", "messageColor", &messageColor},
            {"int", "timerFontSize", &timerFontSize},
            {"int", "clockFontSize", &clockFontSize},
            {"int", "messageFontSize", &messageFontSize},
            {"int", "defaultDuration", &defaultDuration},
            {"int", "warningThreshold", &warningThreshold},
            {"bool", "overtimeEnabled", &overtimeEnabled},
            {"bool", "blinkEnabled", &blinkEnabled},
            {"QString", "bgImagePath", &bgImagePath},
            {"bool", "bgImageEnabled", &bgImageEnabled},
            {"QString", "soundFilePath", &soundFilePath},
            {"bool", "soundEnabled", &soundEnabled},
            {"QString", "shortcutStartPause", &shortcutStartPause},
            {"QString", "shortcutReset", &shortcutReset},
            {"QString", "shortcutPlusMin", &shortcutPlusMin},
            {"QString", "shortcutMinusMin", &shortcutMinusMin},
            {"QString", "shortcutToggleOutput", &shortcutToggleOutput},
        };
        QCOMPARE(&presets, &settings.presets);
        QCOMPARE(qsizetype(storedSettings.size()), expected.size());
        for (qsizetype i = 0; i < expected.size(); ++i) {
            const StoredSetting &row = storedSettings.at(std::size_t(i));
            const auto &[type, key, address] = expected.at(i);
            QCOMPARE(QByteArray(row.key), key);
            std::visit(
                [&, &type = type, &address = address](auto field) {
                    const void *found = &(settings.*field);
                    QCOMPARE(found, address);
                    QCOMPARE(QVariant::fromValue(settings.*field).typeName(), type);
                },
                row.field);
        }
    }

    // 150 px before the first load and 300 px after it: the difference is intended.
    void fresh_holdsTheDefaults()
    {
        RecordFields expected = firstRunFields();
        expected["timerFontSize"] = 150;
        QCOMPARE(differingFields(expected, fieldsOf({})), QStringList());
    }

    void emptyStore_yieldsTheDefaultsAndLeavesThePresets()
    {
        AppSettings settings = unusualRecord();
        loadSettings(settings);
        QCOMPARE(settings.presets, QList<int>({45, 90, 45}));
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(settings)), QStringList{"presets"});
        QCOMPARE(settings.timerFontSize, 300);
        QVERIFY(!storeExists());
        QVERIFY(!QFileInfo::exists(storeFilePath() + ".lock"));
    }

    void save_writesEveryKeyInItsFormat()
    {
        saveSettings(unusualRecord());
        QByteArrayList expected = unusualLines;
        expected += {"[General]", "[presets]", "1\\val=45", "2\\val=90", "3\\val=45", "size=3"};
        QByteArrayList found = storeBytes().split('\n');
        found.removeAll(QByteArray());
        std::ranges::sort(expected);
        std::ranges::sort(found);
        QCOMPARE(found, expected);
    }

    void eachLine_fillsItsFieldOnly_data()
    {
        QTest::addColumn<QByteArray>("line");
        for (const QByteArray &line : unusualLines)
            QTest::newRow(line.split('=').constFirst().constData()) << line;
    }

    // An empty shortcut among them, which is no absent one: what was taken away stays away.
    void eachLine_fillsItsFieldOnly()
    {
        QFETCH(QByteArray, line);
        writeStoreBytes("[General]\n" + line + '\n');
        const RecordFields fields = fieldsOf(loaded());
        const char *key = QTest::currentDataTag();
        QCOMPARE(fields.value(key), fieldsOf(unusualRecord()).value(key));
        QCOMPARE(differingFields(firstRunFields(), fields), QStringList{key});
    }

    void store_isOfTheProgramWhateverItsNames()
    {
        QCoreApplication::setOrganizationName("Somebody");
        QCoreApplication::setApplicationName("Something");
        saveSettings(unusualRecord());
        const AppSettings settings = loaded();
        QCoreApplication::setOrganizationName({});
        QCoreApplication::setApplicationName({});
        QVERIFY(storeExists());
        QCOMPARE(settings.clockFontSize, 21);
    }

    void save_replacesItsKeysAndKeepsThoseOfOthers()
    {
        writeStoreBytes("[General]\nzoom=3\nclockFontSize=99\n\n[window]\nx=17\n");
        saveSettings(AppSettings());
        const QByteArray stored = storeBytes();
        QVERIFY(stored.contains("\nzoom=3\n"));
        QVERIFY(stored.contains("[window]\nx=17\n"));
        QVERIFY(stored.contains("\nclockFontSize=80\n"));
        QCOMPARE(stored.count("clockFontSize"), 1);
    }

    void save_doesNotClamp()
    {
        AppSettings settings;
        settings.timerFontSize = 9000;
        settings.clockFontSize = -1;
        settings.messageFontSize = 0;
        settings.defaultDuration = 2147483647;
        settings.warningThreshold = -2147483647 - 1;
        saveSettings(settings);
        for (const char *line : {"timerFontSize=9000", "clockFontSize=-1", "messageFontSize=0",
                                 "defaultDuration=2147483647", "warningThreshold=-2147483648"})
            QVERIFY2(storeBytes().split('\n').contains(line), line);
    }

    void save_writesColorsAsHashAndSixLowerCaseDigits()
    {
        AppSettings settings;
        settings.bgColor = QColor(0x10, 0x20, 0x30, 0x40); // without the last, the alpha
        settings.timerColorNormal = QColor(Qt::darkGreen);
        settings.timerColorWarning = QColor::fromHsv(0, 255, 255);
        settings.timerColorCritical = QColor::fromRgba64(0xabff, 0xcdff, 0xefff);
        settings.clockColor = QColor(); // as a text that names none is loaded
        saveSettings(settings);
        for (const char *line :
             {"bgColor=#102030", "timerColorNormal=#008000", "timerColorWarning=#ff0000",
              "timerColorCritical=#abcdef", "clockColor=#000000"})
            QVERIFY2(storeBytes().split('\n').contains(line), line);
    }

    void roundTrip_keepsEveryField()
    {
        AppSettings settings = unusualRecord();
        settings.presets = {90, -5, 0, 90, 12345}; // nothing about a preset is checked
        saveSettings(settings);
        QCOMPARE(differingFields(fieldsOf(settings), fieldsOf(loaded())), QStringList());
    }

    void roundTrip_keepsTexts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("blanks") << "  /a folder/a file.png ";
        QTest::newRow("comma") << "/one, two/three.wav";
        QTest::newRow("quotes") << "/the \"big\" one's.png";
        QTest::newRow("backslashes") << "C:\\new\\x41\\table.png";
        QTest::newRow("semicolon and equals") << "/a;b=c.png";
        QTest::newRow("percent") << "/100%/%1 %U0041.png";
        QTest::newRow("at sign") << "@Invalid()";
        QTest::newRow("letters of the world") << "/Bühne/舞台/🕐.png";
        QTest::newRow("line break") << "/a\nb=c.png";
    }

    void roundTrip_keepsTexts()
    {
        QFETCH(QString, text);
        AppSettings settings = unusualRecord();
        for (const StoredSetting &setting : storedSettings) {
            if (const auto *field = std::get_if<QString AppSettings::*>(&setting.field))
                settings.**field = text;
        }
        saveSettings(settings);
        // Read from the file, not from what the settings class remembers of the save.
        const QByteArray stored = storeBytes();
        removeStore();
        QCOMPARE(loaded().bgImagePath, QString());
        writeStoreBytes(stored);
        QCOMPARE(differingFields(fieldsOf(settings), fieldsOf(loaded())), QStringList());
    }
};

VELMORA_TEST_MAIN(AppSettingsTest)
#include "tst_AppSettings.moc"
