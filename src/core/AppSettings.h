#pragma once

#include <QColor>
#include <QList>
#include <QString>

/// Every preference of the program, in one plain record.
///
/// One instance lives for the whole run; windows and dialogs share it by pointer
/// and see the live values. The record reports no change: whoever changes a field
/// saves it and tells the windows. Each field is named after its storage key.
///
/// The values here are those before anything was loaded. loadSettings() has
/// fallbacks of its own, which differ for `timerFontSize`.
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

    int timerFontSize = 150;  ///< pixels in a window 1080 pixels high; 30 to 550 when loaded
    int clockFontSize = 80;   ///< pixels in a window 1080 pixels high; 20 to 300 when loaded
    int messageFontSize = 36; ///< pixels in a window 1080 pixels high; 12 to 150 when loaded

    int defaultDuration = 300;   ///< seconds on the timer at start-up; 0 to 59940 when loaded
    int warningThreshold = 60;   ///< seconds; the warning colour begins here; 1 to 3600 when loaded
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

/// Fills every field from the per-user store and clamps the five sizes and times.
///
/// A key that is absent yields the field's fallback, a number that does not
/// convert its minimum, a colour that does not parse an invalid QColor. `presets`
/// is left alone when the stored list is empty; a size of more than 10000 counts as 10000. Writes nothing to the store.
void loadSettings(AppSettings &settings);

/// Writes every field to the per-user store as it stands, without clamping.
///
/// A store that cannot be written is not reported.
void saveSettings(const AppSettings &settings);
