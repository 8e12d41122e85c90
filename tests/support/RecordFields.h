#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include "AppSettings.h"

/// The fields of a record by name, so that records can be compared field by field and a
/// difference is reported with the field's name.
using RecordFields = QMap<QString, QVariant>;

inline RecordFields fieldsOf(const AppSettings &settings)
{
    RecordFields fields{{"presets", QVariant::fromValue(settings.presets)}};
    for (const StoredSetting &setting : storedSettings) {
        fields[setting.key] =
            std::visit([&settings](auto field) { return QVariant::fromValue(settings.*field); },
                       setting.field);
    }
    return fields;
}

/// The fields in which two records differ, by name; empty for equal records.
inline QStringList differingFields(const RecordFields &left, const RecordFields &right)
{
    QStringList names;
    for (auto field = left.cbegin(); field != left.cend(); ++field) {
        if (field.value() != right.value(field.key()))
            names.append(field.key());
    }
    return names;
}

/// What a record holds after a first run's load.
inline RecordFields firstRunFields()
{
    return {
        {"clock24hr", true},
        {"clockShowSeconds", true},
        {"bgColor", QColor(0x00, 0x00, 0x00)},
        {"timerColorNormal", QColor(0x00, 0xcc, 0x00)},
        {"timerColorWarning", QColor(0xff, 0x88, 0x00)},
        {"timerColorCritical", QColor(0xff, 0x22, 0x00)},
        {"clockColor", QColor(0xff, 0xff, 0xff)},
        {"messageColor", QColor(0xff, 0xff, 0x00)},
        {"timerFontSize", 300},
        {"clockFontSize", 80},
        {"messageFontSize", 36},
        {"defaultDuration", 300},
        {"warningThreshold", 60},
        {"overtimeEnabled", true},
        {"blinkEnabled", true},
        {"presets", QVariant::fromValue(QList<int>{300, 600, 900, 1800})},
        {"bgImagePath", QString()},
        {"bgImageEnabled", false},
        {"soundFilePath", QString()},
        {"soundEnabled", false},
        {"shortcutStartPause", QStringLiteral("Space")},
        {"shortcutReset", QStringLiteral("R")},
        {"shortcutPlusMin", QStringLiteral("Up")},
        {"shortcutMinusMin", QStringLiteral("Down")},
        {"shortcutToggleOutput", QStringLiteral("O")},
    };
}

/// A record in which every field differs from its default, all within bounds.
inline AppSettings unusualRecord()
{
    AppSettings settings;
    settings.clock24hr = false;
    settings.clockShowSeconds = false;
    settings.bgColor = QColor(1, 2, 3);
    settings.timerColorNormal = QColor(4, 5, 6);
    settings.timerColorWarning = QColor(7, 8, 9);
    settings.timerColorCritical = QColor(10, 11, 12);
    settings.clockColor = QColor(13, 14, 15);
    settings.messageColor = QColor(16, 17, 18);
    settings.timerFontSize = 31;
    settings.clockFontSize = 21;
    settings.messageFontSize = 13;
    settings.defaultDuration = 754;
    settings.warningThreshold = 17;
    settings.overtimeEnabled = false;
    settings.blinkEnabled = false;
    settings.presets = {45, 90, 45};
    settings.bgImagePath = QStringLiteral("/pictures/Stage left.png");
    settings.bgImageEnabled = true;
    settings.soundFilePath = QStringLiteral("/sounds/gong.wav");
    settings.soundEnabled = true;
    settings.shortcutStartPause = QStringLiteral("F1");
    settings.shortcutReset = QStringLiteral("Ctrl+R");
    settings.shortcutPlusMin = QStringLiteral("Num+5");
    settings.shortcutMinusMin = QStringLiteral("Ctrl+K, Ctrl+C");
    settings.shortcutToggleOutput = QString();
    return settings;
}
