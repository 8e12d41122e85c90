#pragma once

#include <QCoreApplication>

struct AppSettings;
class AudioCue;
class PresetStrip;
class QLabel;
class QLayout;
class QLineEdit;
class QMainWindow;
class QPushButton;
class QSpinBox;
class QWidget;

/// The Control window's widgets and where they stand, from top to bottom.
///
/// The widgets belong to the window. Buttons that are checkable do not uncheck one another. What
/// a button does is connected by ControlWindow; the presets and the cue's rows work by themselves.
class ControlWindowUi
{
    Q_DECLARE_TR_FUNCTIONS(ControlWindowUi)

public:
    /// Fills @p window. @p settings and @p cue, which adds its own rows, must outlive the window.
    ControlWindowUi(QMainWindow *window, AppSettings *settings, AudioCue *cue);

    /// What the "Set Time" row holds, in seconds: 0 to 59,999.
    int enteredTime() const;
    /// Puts @p secs seconds into the "Set Time" row, which keeps to its ranges.
    void enterTime(int secs) const;
    /// What the bottom button offers next: to show the Output window, or to hide it.
    void offerOutput(bool showing) const;

    QPushButton *titleBtn = nullptr;
    QPushButton *settingsBtn = nullptr;
    QLabel *timerPreview = nullptr;
    QPushButton *countdownBtn = nullptr;
    QPushButton *countUpBtn = nullptr;
    QPushButton *startBtn = nullptr;
    QPushButton *pauseBtn = nullptr;
    QPushButton *resetBtn = nullptr;
    QPushButton *plusMinBtn = nullptr;
    QPushButton *minusMinBtn = nullptr;
    QSpinBox *minSpin = nullptr;
    QSpinBox *secSpin = nullptr;
    QPushButton *setBtn = nullptr;
    QPushButton *addToPresetBtn = nullptr;
    PresetStrip *presetList = nullptr;
    QPushButton *viewTimerBtn = nullptr;
    QPushButton *viewClockBtn = nullptr;
    QPushButton *viewBothBtn = nullptr;
    QLineEdit *messageEdit = nullptr;
    QPushButton *pushBtn = nullptr;
    QPushButton *clearBtn = nullptr;
    QPushButton *outputToggleBtn = nullptr;
    QPushButton *previewBtn = nullptr;

private:
    QLayout *makeHeaderRow();
    QWidget *makeScrollArea(QWidget *parent, AppSettings *settings, AudioCue *cue);
    QLayout *makeDirectionRow();
    QLayout *makeTransportRow();
    QLayout *makeAdjustRow();
    QLayout *makeSetTimeRow(int secs);
    QLayout *makeViewRow();
    QLayout *makeMessageRow();
    QLayout *makeBottomRow();
};
