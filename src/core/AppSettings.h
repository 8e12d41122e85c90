#pragma once

#include <algorithm>
#include <array>
#include <variant>

#include <QColor>
#include <QList>
#include <QString>

/// Every preference of the program, in one plain record.
///
/// One instance lives for the whole run; windows and dialogs share it by pointer
/// and see the live values. The record reports no change: the code that changes a
/// field saves it and has the windows read it again.
///
/// The values here are the defaults, which a load also takes where a key is absent. Only
/// `timerFontSize` differs there; see firstRunTimerFontSize. Keys and ranges are in the table
/// `storedSettings`.
struct AppSettings
{
    bool clock24hr = true;        ///< the clock is shown in 24-hour form
    bool clockShowSeconds = true; ///< the clock shows seconds

    QColor bgColor{QStringLiteral("#000000")};            ///< ground of the Output window
    QColor timerColorNormal{QStringLiteral("#00cc00")};   ///< figure above the warning threshold
    QColor timerColorWarning{QStringLiteral("#ff8800")};  ///< figure from 1 s to the threshold
    QColor timerColorCritical{QStringLiteral("#ff2200")}; ///< figure at zero and in overtime
    QColor clockColor{QStringLiteral("#ffffff")};         ///< text of the clock
    QColor messageColor{QStringLiteral("#ffff00")};       ///< text of the message

    int timerFontSize = 150;  ///< pixels in a window 1080 pixels high
    int clockFontSize = 80;   ///< pixels in a window 1080 pixels high
    int messageFontSize = 36; ///< pixels in a window 1080 pixels high

    int defaultDuration = 300;   ///< seconds on the timer at start-up
    int warningThreshold = 60;   ///< seconds; the warning colour begins here
    bool overtimeEnabled = true; ///< a count-down goes on below zero
    bool blinkEnabled = true;    ///< the figure blinks from zero on

    QList<int> presets{300, 600, 900, 1800}; ///< seconds, in display order; never range-checked

    QString bgImagePath;         ///< background picture; empty: none; not checked for existence
    bool bgImageEnabled = false; ///< the picture is shown instead of `bgColor`

    QString soundFilePath;     ///< audio cue; empty: none; not checked for existence
    bool soundEnabled = false; ///< the cue plays at zero

    /// Key sequences in the portable text form, never checked; empty, or a text that names
    /// no key: the action has no key.
    ///@{
    QString shortcutStartPause = QStringLiteral("Space");
    QString shortcutReset = QStringLiteral("R");
    QString shortcutPlusMin = QStringLiteral("Up");
    QString shortcutMinusMin = QStringLiteral("Down");
    QString shortcutToggleOutput = QStringLiteral("O");
    ///@}
};

/// What a load takes for an absent `timerFontSize`. Deliberately not the record's own value, which
/// is seen only before the load: a first run shows a figure of this size.
inline constexpr int firstRunTimerFontSize = 300;

/// The smallest and the largest value of a number.
struct Range
{
    int minimum;
    int maximum;
};

/// Where a field is kept in the store. A load brings a number into its range. The Settings dialog
/// offers the same range, except that its default duration goes up to 999 min 59 sec.
struct StoredSetting
{
    using Field = std::variant<bool AppSettings::*, int AppSettings::*, QColor AppSettings::*,
                               QString AppSettings::*>;
    const char *key; ///< the field's own name
    Field field;
    Range range{};
};

/// Every field but `presets`, in the order of the fields, in which they are loaded and saved.
inline constexpr std::array<StoredSetting, 24> storedSettings{{
    {"clock24hr", &AppSettings::clock24hr},
    {"clockShowSeconds", &AppSettings::clockShowSeconds},
    {"bgColor", &AppSettings::bgColor},
    {"timerColorNormal", &AppSettings::timerColorNormal},
    {"timerColorWarning", &AppSettings::timerColorWarning},
    {"timerColorCritical", &AppSettings::timerColorCritical},
    {"clockColor", &AppSettings::clockColor},
    {"messageColor", &AppSettings::messageColor},
    {"timerFontSize", &AppSettings::timerFontSize, {30, 550}},
    {"clockFontSize", &AppSettings::clockFontSize, {20, 300}},
    {"messageFontSize", &AppSettings::messageFontSize, {12, 150}},
    {"defaultDuration", &AppSettings::defaultDuration, {0, 59940}},
    {"warningThreshold", &AppSettings::warningThreshold, {1, 3600}},
    {"overtimeEnabled", &AppSettings::overtimeEnabled},
    {"blinkEnabled", &AppSettings::blinkEnabled},
    {"bgImagePath", &AppSettings::bgImagePath},
    {"bgImageEnabled", &AppSettings::bgImageEnabled},
    {"soundFilePath", &AppSettings::soundFilePath},
    {"soundEnabled", &AppSettings::soundEnabled},
    {"shortcutStartPause", &AppSettings::shortcutStartPause},
    {"shortcutReset", &AppSettings::shortcutReset},
    {"shortcutPlusMin", &AppSettings::shortcutPlusMin},
    {"shortcutMinusMin", &AppSettings::shortcutMinusMin},
    {"shortcutToggleOutput", &AppSettings::shortcutToggleOutput},
}};

/// The range of a number.
constexpr Range rangeOf(int AppSettings::*number)
{
    const StoredSetting::Field field = number;
    return std::ranges::find(storedSettings, field, &StoredSetting::field)->range;
}

/// Fills every field from the per-user store and brings the numbers into their ranges.
///
/// A key that is absent yields the field's default, or `firstRunTimerFontSize`, a number that
/// does not convert its minimum, a colour that does not parse an invalid QColor. `presets` is
/// left alone when the stored list is empty; a size of more than 10000 counts as 10000. Writes
/// nothing to the store.
void loadSettings(AppSettings &settings);

/// Writes every field to the per-user store as it stands, without clamping.
///
/// A store that cannot be written is not reported.
void saveSettings(const AppSettings &settings);
