#include <cstddef>
#include <type_traits>

#include <QTest>

#include "AppSettings.h"
#include "RecordFields.h"
#include "TestMain.h"

/// The record by itself, before anything was loaded.
class AppSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void record_isPlain()
    {
        QVERIFY(std::is_aggregate_v<AppSettings>);
        QVERIFY(!std::is_polymorphic_v<AppSettings>);
        QVERIFY(std::is_copy_constructible_v<AppSettings>);
    }

    void record_hasTheTypesOfItsFields()
    {
        const RecordFields fields = fieldsOf({});
        QStringList types;
        for (const QVariant &value : fields)
            types.append(QString::fromLatin1(value.typeName()));
        const QStringList expected{
            "QColor",     // bgColor
            "bool",       // bgImageEnabled
            "QString",    // bgImagePath
            "bool",       // blinkEnabled
            "bool",       // clock24hr
            "QColor",     // clockColor
            "int",        // clockFontSize
            "bool",       // clockShowSeconds
            "int",        // defaultDuration
            "QColor",     // messageColor
            "int",        // messageFontSize
            "bool",       // overtimeEnabled
            "QList<int>", // presets
            "QString",    // shortcutMinusMin
            "QString",    // shortcutPlusMin
            "QString",    // shortcutReset
            "QString",    // shortcutStartPause
            "QString",    // shortcutToggleOutput
            "bool",       // soundEnabled
            "QString",    // soundFilePath
            "QColor",     // timerColorCritical
            "QColor",     // timerColorNormal
            "QColor",     // timerColorWarning
            "int",        // timerFontSize
            "int",        // warningThreshold
        };
        QCOMPARE(types, expected);
        QCOMPARE(sizeof(AppSettings::timerFontSize), std::size_t{4});
    }

    void record_keepsTheOrderOfItsFields()
    {
        AppSettings settings;
        // There are exactly this many fields, or this would not compile.
        auto &[clock24hr, clockShowSeconds, bgColor, timerColorNormal, timerColorWarning,
               timerColorCritical, clockColor, messageColor, timerFontSize, clockFontSize,
               messageFontSize, defaultDuration, warningThreshold, overtimeEnabled, blinkEnabled,
               presets, bgImagePath, bgImageEnabled, soundFilePath, soundEnabled,
               shortcutStartPause, shortcutReset, shortcutPlusMin, shortcutMinusMin,
               shortcutToggleOutput] = settings;
        QCOMPARE(&clock24hr, &settings.clock24hr);
        QCOMPARE(&clockShowSeconds, &settings.clockShowSeconds);
        QCOMPARE(&bgColor, &settings.bgColor);
        QCOMPARE(&timerColorNormal, &settings.timerColorNormal);
        QCOMPARE(&timerColorWarning, &settings.timerColorWarning);
        QCOMPARE(&timerColorCritical, &settings.timerColorCritical);
        QCOMPARE(&clockColor, &settings.clockColor);
        QCOMPARE(&messageColor, &settings.messageColor);
        QCOMPARE(&timerFontSize, &settings.timerFontSize);
        QCOMPARE(&clockFontSize, &settings.clockFontSize);
        QCOMPARE(&messageFontSize, &settings.messageFontSize);
        QCOMPARE(&defaultDuration, &settings.defaultDuration);
        QCOMPARE(&warningThreshold, &settings.warningThreshold);
        QCOMPARE(&overtimeEnabled, &settings.overtimeEnabled);
        QCOMPARE(&blinkEnabled, &settings.blinkEnabled);
        QCOMPARE(&presets, &settings.presets);
        QCOMPARE(&bgImagePath, &settings.bgImagePath);
        QCOMPARE(&bgImageEnabled, &settings.bgImageEnabled);
        QCOMPARE(&soundFilePath, &settings.soundFilePath);
        QCOMPARE(&soundEnabled, &settings.soundEnabled);
        QCOMPARE(&shortcutStartPause, &settings.shortcutStartPause);
        QCOMPARE(&shortcutReset, &settings.shortcutReset);
        QCOMPARE(&shortcutPlusMin, &settings.shortcutPlusMin);
        QCOMPARE(&shortcutMinusMin, &settings.shortcutMinusMin);
        QCOMPARE(&shortcutToggleOutput, &settings.shortcutToggleOutput);
    }

    // The other tests compare records by this table, so its keys and fields are compared with words.
    void table_hasEachFieldUnderItsKeyInTheOrderOfTheFields()
    {
        const AppSettings settings;
        const QList<std::pair<QByteArray, const void *>> expected{
            {"clock24hr", &settings.clock24hr},
            {"clockShowSeconds", &settings.clockShowSeconds},
            {"bgColor", &settings.bgColor},
            {"timerColorNormal", &settings.timerColorNormal},
            {"timerColorWarning", &settings.timerColorWarning},
            {"timerColorCritical", &settings.timerColorCritical},
            {"clockColor", &settings.clockColor},
            {"messageColor", &settings.messageColor},
            {"timerFontSize", &settings.timerFontSize},
            {"clockFontSize", &settings.clockFontSize},
            {"messageFontSize", &settings.messageFontSize},
            {"defaultDuration", &settings.defaultDuration},
            {"warningThreshold", &settings.warningThreshold},
            {"overtimeEnabled", &settings.overtimeEnabled},
            {"blinkEnabled", &settings.blinkEnabled},
            {"bgImagePath", &settings.bgImagePath},
            {"bgImageEnabled", &settings.bgImageEnabled},
            {"soundFilePath", &settings.soundFilePath},
            {"soundEnabled", &settings.soundEnabled},
            {"shortcutStartPause", &settings.shortcutStartPause},
            {"shortcutReset", &settings.shortcutReset},
            {"shortcutPlusMin", &settings.shortcutPlusMin},
            {"shortcutMinusMin", &settings.shortcutMinusMin},
            {"shortcutToggleOutput", &settings.shortcutToggleOutput},
        };
        QCOMPARE(storedSettings.size(), std::size_t(expected.size()));
        for (std::size_t i = 0; i < storedSettings.size(); ++i) {
            const auto &[key, field] = expected.at(qsizetype(i));
            const void *address =
                std::visit([&settings](auto member) -> const void * { return &(settings.*member); },
                           storedSettings[i].field);
            QCOMPARE(QByteArray(storedSettings[i].key), key);
            QCOMPARE(address, field);
        }
    }

    void fresh_holdsTheStartUpDefaults()
    {
        RecordFields expected = firstRunFields();
        expected["timerFontSize"] = 150;
        QCOMPARE(differingFields(expected, fieldsOf({})), QStringList());
    }

    // 150 px before the first load and 300 px after it: the difference is intended.
    void fresh_isUnlikeAFirstRunOnlyInTheTimersFont()
    {
        AppSettings settings;
        loadSettings(settings);
        QCOMPARE(differingFields(fieldsOf({}), fieldsOf(settings)), QStringList{"timerFontSize"});
    }
};

VELMORA_TEST_MAIN(AppSettingsTest)
#include "tst_AppSettings.moc"
