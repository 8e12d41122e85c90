#include "ControlWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

#include "AppSettings.h"
#include "Figure.h"
#include "OutputWindow.h"
#include "PresetStrip.h"
#include "ScreenPlacement.h"
#include "SettingsDialog.h"
#include "StyleSheet.h"
#include "TimerEngine.h"

namespace {

constexpr int previewIntervalMs = 500;
constexpr int blinkIntervalMs = 500;

// "%1" is the colour; "transparent" keeps the text, so that the layout does not move.
const QString figureStyle = QStringLiteral(
    "color:%1;font-size:48px;font-weight:bold;font-family:monospace;padding:4px 16px;");

} // namespace

ControlWindow::ControlWindow(AppSettings *settings, TimerEngine *engine, OutputWindow *output,
                             QWidget *parent)
    : QMainWindow(parent)
    , settings(settings)
    , engine(engine)
    , output(output)
    , preview(output)
{
    setWindowTitle(tr("Velmora — Control"));
    setMinimumSize(480, 420);
    qApp->setStyleSheet(applicationStyleSheet());

    cue = std::make_unique<AudioCue>(settings, this);
    buildUi();

    connect(engine, &TimerEngine::tick, this, &ControlWindow::onTimerTick);
    connect(engine, &TimerEngine::stateChanged, this, &ControlWindow::onStateChanged);
    qApp->installEventFilter(this);
    setupShortcuts();

    previewTimer = new QTimer(this);
    connect(previewTimer, &QTimer::timeout, this, [this] { preview.refresh(); });
    previewTimer->start(previewIntervalMs);

    blinkTimer = new QTimer(this);
    blinkTimer->setInterval(blinkIntervalMs);
    connect(blinkTimer, &QTimer::timeout, this, &ControlWindow::toggleBlink);

    redrawFigure(engine->remaining());
}

// Only a tick checks the cue. The blink's return, a settings change and the first drawing
// only redraw: a count-down that stops at zero has re-armed the cue by then, and would
// otherwise be heard again one second later.
void ControlWindow::onTimerTick(int seconds)
{
    if (seconds == 0)
        cue->fire();
    redrawFigure(seconds);
}

// The only place that enables or disables START and PAUSE; both are enabled at start.
void ControlWindow::onStateChanged(bool running)
{
    startBtn->setEnabled(!running);
    pauseBtn->setEnabled(running);
    if (!running)
        cue->rearm();
}

void ControlWindow::onSetTime()
{
    loadDuration(setTimeSeconds());
}

// The cue is re-armed last: at a duration of zero it has just been heard.
void ControlWindow::loadDuration(int secs)
{
    engine->setDuration(secs);
    output->setTotalSeconds(secs);
    cue->rearm();
}

void ControlWindow::onCountModeChanged(bool countUp)
{
    engine->setCountUp(countUp);
    output->setCountUp(countUp);
}

void ControlWindow::onViewChanged(int mode)
{
    viewTimerBtn->setChecked(mode == OutputWindow::TimerView);
    viewClockBtn->setChecked(mode == OutputWindow::ClockView);
    viewBothBtn->setChecked(mode == OutputWindow::BothViews);
    if (mode >= OutputWindow::TimerView && mode <= OutputWindow::BothViews)
        output->setViewMode(mode);
}

void ControlWindow::onSettingsChanged()
{
    presetList->refill();
    // The engine keeps its duration: a new default takes effect when "Set" is pressed.
    showInSetTimeRow(settings->defaultDuration);
    engine->setOvertimeEnabled(settings->overtimeEnabled);
    output->refreshSettings();
    redrawFigure(engine->remaining());
    setupShortcuts();
}

void ControlWindow::openSettings()
{
    SettingsDialog dialog(settings, this);
    connect(&dialog, &SettingsDialog::settingsChanged, this, &ControlWindow::onSettingsChanged);
    dialog.exec();
}

// Installed on the application, it filters nothing: keys reach the actions through the
// application-wide shortcuts.
bool ControlWindow::eventFilter(QObject *watched, QEvent *event)
{
    return QObject::eventFilter(watched, event);
}

void ControlWindow::keyPressEvent(QKeyEvent *event)
{
    QWidget::keyPressEvent(event);
}

// The preview is not closed here. It closes by itself once it finds the Output window
// gone, and the program ends with it at the latest.
void ControlWindow::closeEvent(QCloseEvent *event)
{
    output->close();
    QWidget::closeEvent(event);
}

void ControlWindow::chooseDirection(bool countUp)
{
    countdownBtn->setChecked(!countUp);
    countUpBtn->setChecked(countUp);
    onCountModeChanged(countUp);
}

void ControlWindow::toggleOutput()
{
    if (output->isVisible()) {
        output->hide();
        offerOutput(true);
        return;
    }
    showOnOtherScreen(*output, *this);
    offerOutput(false);
}

// What the button offers next: to show the Output window, or to hide it.
void ControlWindow::offerOutput(bool showing)
{
    outputToggleBtn->setText(showing ? tr("▶  Show Output Window") : tr("■  Hide Output Window"));
    outputToggleBtn->setAccessibleName(showing ? tr("Show Output Window")
                                               : tr("Hide Output Window"));
}

// Loading never starts the timer; a running count stops at the new value.
void ControlWindow::onPreset(int secs)
{
    loadDuration(secs);
    showInSetTimeRow(secs);
}

void ControlWindow::browseSoundFile()
{
    cue->browse();
}

int ControlWindow::setTimeSeconds() const
{
    return minSpin->value() * 60 + secSpin->value();
}

void ControlWindow::showInSetTimeRow(int secs)
{
    minSpin->setValue(secs / 60);
    secSpin->setValue(secs % 60);
}

void ControlWindow::redrawFigure(int seconds)
{
    updateBlink(seconds);
    if (!blinkVisible)
        return; // the blink's return shows it again

    timerPreview->setText(figureText(seconds));
    // Unlike the Output window's figure, a count-up is always drawn in the normal colour.
    const QColor color =
        engine->isCountUp() ? settings->timerColorNormal : thresholdColor(*settings, seconds);
    timerPreview->setStyleSheet(figureStyle.arg(color.name()));
}

// Blinking starts at zero of a count-down and ends at a positive count or in a count-up;
// overtime leaves it as it is, and so does zero itself while it runs.
void ControlWindow::updateBlink(int seconds)
{
    if (engine->isCountUp() || seconds > 0) {
        if (blinkTimer->isActive()) {
            blinkTimer->stop();
            blinkVisible = true;
        }
    } else if (seconds == 0 && settings->blinkEnabled && !blinkTimer->isActive()) {
        blinkVisible = true;
        blinkTimer->start();
    }
}

void ControlWindow::toggleBlink()
{
    blinkVisible = !blinkVisible;
    if (blinkVisible)
        redrawFigure(engine->remaining());
    else
        timerPreview->setStyleSheet(figureStyle.arg(QStringLiteral("transparent")));
}
