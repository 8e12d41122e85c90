#pragma once

#include <memory>

#include <QMainWindow>

#include "AudioCue.h"
#include "ControlWindowUi.h"
#include "OperatorShortcuts.h"
#include "OutputPreview.h"

class OutputWindow;
class QTimer;

/// The operator's window: figure, transport, time, presets, view, message, cue.
///
/// It keeps no time of its own. It drives the one engine and the one Output window,
/// which hold the truth; its buttons carry no state beyond checked and enabled. What it
/// changes in the settings record, it saves at once. Closing it closes the Output window,
/// and with the last window the program ends.
class ControlWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Builds the window, installs the application-wide style sheet and connects to
    /// @p engine. Nothing is owned; all three must outlive the window.
    ControlWindow(AppSettings *settings, TimerEngine *engine, OutputWindow *output,
                  QWidget *parent = nullptr);

public slots:
    /// The engine's count is now @p seconds: at 0 checks the cue, then starts or ends the blink
    /// and redraws the figure.
    void onTimerTick(int seconds);
    /// The engine was started or stopped: START and PAUSE follow; a stop re-arms the cue.
    void onStateChanged(bool running);
    /// Loads the "Set Time" row into the engine, which stops, and re-arms the cue.
    void onSetTime();
    /// Passes the direction on to engine and Output window; the buttons stay as they are.
    void onCountModeChanged(bool countUp);
    /// Checks the button of @p mode, an OutputWindow::ViewMode, and passes it on to the Output
    /// window. Any other mode unchecks all three and is not passed on.
    void onViewChanged(int mode);
    /// Shows the trimmed message on the Output window; a blank one changes nothing.
    void onPushMessage();
    /// Clears the message on the Output window, then the edit.
    void onClearMessage();
    /// Loads a duration of @p secs seconds as a click on its preset does.
    void onPreset(int secs);
    /// The record has changed and is saved: presets, Set Time row, Output window,
    /// figure and shortcuts follow. The running count does not.
    void onSettingsChanged();
    /// Runs the settings dialog; returns when it has been closed.
    void openSettings();
    /// Hides the Output window, or shows it on the first screen that is not this window's.
    void toggleOutput();
    /// Lets the operator choose the cue's file and saves the record; does not switch the cue
    /// on. Cancelling changes nothing.
    void browseSoundFile();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildUi();
    void loadDuration(int secs);
    void chooseDirection(bool countUp);
    void redrawFigure(int seconds);
    void updateBlink(int seconds);
    void toggleBlink();

    AppSettings *settings;
    TimerEngine *engine;
    OutputWindow *output;
    std::unique_ptr<AudioCue> cue;
    std::unique_ptr<ControlWindowUi> ui;
    OperatorShortcuts shortcuts;
    OutputPreview preview;
    QTimer *previewTimer = nullptr;
    QTimer *blinkTimer = nullptr;
    bool blinkVisible = true;
};
