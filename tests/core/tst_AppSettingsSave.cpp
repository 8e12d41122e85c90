#include <algorithm>

#include <QCoreApplication>
#include <QFileInfo>
#include <QTest>

#include "AppSettings.h"
#include "RecordFields.h"
#include "Store.h"
#include "TestMain.h"

namespace {

QByteArrayList sortedStoreLines()
{
    QByteArrayList lines = storeBytes().split('\n');
    lines.removeAll(QByteArray());
    std::sort(lines.begin(), lines.end());
    return lines;
}

QByteArrayList sorted(QByteArrayList lines)
{
    std::sort(lines.begin(), lines.end());
    return lines;
}

AppSettings loaded()
{
    AppSettings settings;
    loadSettings(settings);
    return settings;
}

} // namespace

/// What a save leaves in the store's file, and what the next load makes of it.
class AppSettingsSaveTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void save_writesEveryKeyInItsFormat()
    {
        saveSettings(AppSettings());
        const QByteArrayList expected{
            "[General]",
            "clock24hr=true",
            "clockShowSeconds=true",
            "bgColor=#000000",
            "timerColorNormal=#00cc00",
            "timerColorWarning=#ff8800",
            "timerColorCritical=#ff2200",
            "clockColor=#ffffff",
            "messageColor=#ffff00",
            "timerFontSize=150",
            "clockFontSize=80",
            "messageFontSize=36",
            "defaultDuration=300",
            "warningThreshold=60",
            "overtimeEnabled=true",
            "blinkEnabled=true",
            "bgImagePath=",
            "bgImageEnabled=false",
            "soundFilePath=",
            "soundEnabled=false",
            "shortcutStartPause=Space",
            "shortcutReset=R",
            "shortcutPlusMin=Up",
            "shortcutMinusMin=Down",
            "shortcutToggleOutput=O",
            "[presets]",
            "1\\val=300",
            "2\\val=600",
            "3\\val=900",
            "4\\val=1800",
            "size=4",
        };
        QCOMPARE(sortedStoreLines(), sorted(expected));
    }

    void save_writesUnusualValuesInTheirFormat()
    {
        saveSettings(unusualRecord());
        const QByteArrayList expected{
            "[General]",
            "clock24hr=false",
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
            "shortcutToggleOutput=",
            "[presets]",
            "1\\val=45",
            "2\\val=90",
            "3\\val=45",
            "size=3",
        };
        QCOMPARE(sortedStoreLines(), sorted(expected));
    }

    void save_replacesWhatWasStored()
    {
        saveSettings(unusualRecord());
        AppSettings settings = unusualRecord();
        settings.clockFontSize = 42;
        saveSettings(settings);
        const QByteArray stored = storeBytes();
        QVERIFY(stored.contains("\nclockFontSize=42\n"));
        QCOMPARE(stored.count("clockFontSize"), 1);
    }

    void save_keepsKeysOfOthers()
    {
        writeStoreBytes("[General]\nzoom=3\nclockFontSize=99\n\n[window]\nx=17\n");
        saveSettings(AppSettings());
        const QByteArray stored = storeBytes();
        QVERIFY(stored.contains("\nzoom=3\n"));
        QVERIFY(stored.contains("[window]\nx=17\n"));
        QVERIFY(stored.contains("\nclockFontSize=80\n"));
    }

    void save_usesTheScopeOfItsOwn()
    {
        QVERIFY(!storeExists());
        QCoreApplication::setOrganizationName("Somebody");
        QCoreApplication::setApplicationName("Something");
        saveSettings(AppSettings());
        QCoreApplication::setOrganizationName({});
        QCoreApplication::setApplicationName({});
        QVERIFY(storeExists());
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
        const QByteArray stored = storeBytes();
        QVERIFY(stored.contains("\ntimerFontSize=9000\n"));
        QVERIFY(stored.contains("\nclockFontSize=-1\n"));
        QVERIFY(stored.contains("\nmessageFontSize=0\n"));
        QVERIFY(stored.contains("\ndefaultDuration=2147483647\n"));
        QVERIFY(stored.contains("\nwarningThreshold=-2147483648\n"));

        const AppSettings next = loaded();
        QCOMPARE(next.timerFontSize, 550);
        QCOMPARE(next.clockFontSize, 20);
        QCOMPARE(next.messageFontSize, 12);
        QCOMPARE(next.defaultDuration, 59940);
        QCOMPARE(next.warningThreshold, 1);
    }

    void save_dropsAlpha()
    {
        AppSettings settings;
        settings.bgColor = QColor(0x10, 0x20, 0x30, 0x40);
        saveSettings(settings);
        QVERIFY(storeBytes().contains("\nbgColor=#102030\n"));
        QCOMPARE(loaded().bgColor, QColor(0x10, 0x20, 0x30));
    }

    void save_writesColorsAsHashAndSixLowerCaseDigits()
    {
        AppSettings settings;
        settings.bgColor = QColor(Qt::darkGreen);
        settings.clockColor = QColor::fromHsv(0, 255, 255);
        settings.messageColor = QColor::fromRgba64(0xabff, 0xcdff, 0xefff);
        saveSettings(settings);
        const QByteArray stored = storeBytes();
        QVERIFY(stored.contains("\nbgColor=#008000\n"));
        QVERIFY(stored.contains("\nclockColor=#ff0000\n"));
        QVERIFY(stored.contains("\nmessageColor=#abcdef\n"));
    }

    void invalidColor_isSavedAsTheToolkitNamesIt()
    {
        writeStoreBytes("[General]\nclockColor=nocolour\n");
        const AppSettings settings = loaded();
        QVERIFY(!settings.clockColor.isValid());
        saveSettings(settings);
        QCOMPARE(QColor().name(), QStringLiteral("#000000"));
        QVERIFY(storeBytes().contains("\nclockColor=#000000\n"));
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
        QTest::newRow("blanks") << QStringLiteral("  /a folder/a file.png ");
        QTest::newRow("comma") << QStringLiteral("/one, two/three.wav");
        QTest::newRow("quotes") << QStringLiteral("/the \"big\" one's.png");
        QTest::newRow("backslashes") << QStringLiteral("C:\\new\\x41\\table.png");
        QTest::newRow("semicolon and equals") << QStringLiteral("/a;b=c.png");
        QTest::newRow("percent") << QStringLiteral("/100%/%1 %U0041.png");
        QTest::newRow("at sign") << QStringLiteral("@Invalid()");
        QTest::newRow("letters of the world") << QString::fromUtf8("/Bühne/舞台/🕐.png");
        QTest::newRow("line break") << QStringLiteral("/a\nb=c.png");
    }

    void roundTrip_keepsTexts()
    {
        QFETCH(QString, text);
        AppSettings settings;
        settings.bgImagePath = text;
        settings.soundFilePath = text;
        settings.shortcutStartPause = text;
        settings.shortcutReset = text;
        settings.shortcutPlusMin = text;
        settings.shortcutMinusMin = text;
        settings.shortcutToggleOutput = text;
        saveSettings(settings);
        // Read from the file, not from what the settings class remembers of the save.
        const QByteArray stored = storeBytes();
        removeStore();
        QCOMPARE(loaded().bgImagePath, QString());
        writeStoreBytes(stored);

        const AppSettings next = loaded();
        QCOMPARE(next.bgImagePath, text);
        QCOMPARE(next.soundFilePath, text);
        QCOMPARE(next.shortcutStartPause, text);
        QCOMPARE(next.shortcutReset, text);
        QCOMPARE(next.shortcutPlusMin, text);
        QCOMPARE(next.shortcutMinusMin, text);
        QCOMPARE(next.shortcutToggleOutput, text);
    }
};

VELMORA_TEST_MAIN(AppSettingsSaveTest)
#include "tst_AppSettingsSave.moc"
