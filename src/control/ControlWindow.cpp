#include "ControlWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "AboutDialog.h"
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
    , shortcuts(
          settings, engine, [this] { toggleOutput(); }, this)
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
    shortcuts.setupShortcuts();

    previewTimer = new QTimer(this);
    connect(previewTimer, &QTimer::timeout, this, [this] { preview.refresh(); });
    previewTimer->start(previewIntervalMs);

    blinkTimer = new QTimer(this);
    blinkTimer->setInterval(blinkIntervalMs);
    connect(blinkTimer, &QTimer::timeout, this, &ControlWindow::toggleBlink);

    redrawFigure(engine->remaining());
}

void ControlWindow::buildUi()
{
    ui = std::make_unique<ControlWindowUi>(this, settings, cue.get());

    connect(ui->titleBtn, &QPushButton::clicked, this, [this] {
        AboutDialog dialog(this);
        dialog.exec();
    });
    connect(ui->settingsBtn, &QPushButton::clicked, this, &ControlWindow::openSettings);

    connect(ui->countdownBtn, &QPushButton::clicked, this, [this] { chooseDirection(false); });
    connect(ui->countUpBtn, &QPushButton::clicked, this, [this] { chooseDirection(true); });
    connect(ui->startBtn, &QPushButton::clicked, engine, &TimerEngine::start);
    connect(ui->pauseBtn, &QPushButton::clicked, engine, &TimerEngine::pause);
    connect(ui->resetBtn, &QPushButton::clicked, engine, &TimerEngine::reset);
    // Neither re-arms the cue: adding a minute at zero does not make the same run sound twice.
    connect(ui->plusMinBtn, &QPushButton::clicked, this, [this] { engine->addSeconds(60); });
    connect(ui->minusMinBtn, &QPushButton::clicked, this, [this] { engine->addSeconds(-60); });

    connect(ui->setBtn, &QPushButton::clicked, this, &ControlWindow::onSetTime);
    connect(ui->addToPresetBtn, &QPushButton::clicked, this,
            [this] { ui->presetList->add(ui->enteredTime()); });
    connect(ui->presetList, &PresetStrip::presetClicked, this, &ControlWindow::onPreset);

    connect(ui->viewTimerBtn, &QPushButton::clicked, this,
            [this] { onViewChanged(OutputWindow::TimerView); });
    connect(ui->viewClockBtn, &QPushButton::clicked, this,
            [this] { onViewChanged(OutputWindow::ClockView); });
    connect(ui->viewBothBtn, &QPushButton::clicked, this,
            [this] { onViewChanged(OutputWindow::BothViews); });

    connect(ui->pushBtn, &QPushButton::clicked, this, &ControlWindow::onPushMessage);
    connect(ui->messageEdit, &QLineEdit::returnPressed, this, &ControlWindow::onPushMessage);
    connect(ui->clearBtn, &QPushButton::clicked, this, &ControlWindow::onClearMessage);

    connect(ui->outputToggleBtn, &QPushButton::clicked, this, &ControlWindow::toggleOutput);
    connect(ui->previewBtn, &QPushButton::clicked, this, [this] { preview.toggle(); });
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
    ui->startBtn->setEnabled(!running);
    ui->pauseBtn->setEnabled(running);
    if (!running)
        cue->rearm();
}

void ControlWindow::onSetTime()
{
    loadDuration(ui->enteredTime());
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
    ui->viewTimerBtn->setChecked(mode == OutputWindow::TimerView);
    ui->viewClockBtn->setChecked(mode == OutputWindow::ClockView);
    ui->viewBothBtn->setChecked(mode == OutputWindow::BothViews);
    if (mode >= OutputWindow::TimerView && mode <= OutputWindow::BothViews)
        output->setViewMode(mode);
}

void ControlWindow::onPushMessage()
{
    const QString message = ui->messageEdit->text().trimmed();
    if (!message.isEmpty())
        output->setMessage(message);
}

void ControlWindow::onClearMessage()
{
    output->clearMessage();
    ui->messageEdit->clear();
}

// Loading never starts the timer; a running count stops at the new value.
void ControlWindow::onPreset(int secs)
{
    loadDuration(secs);
    ui->enterTime(secs);
}

void ControlWindow::onSettingsChanged()
{
    ui->presetList->refill();
    // The engine keeps its duration: a new default takes effect when "Set" is pressed.
    ui->enterTime(settings->defaultDuration);
    engine->setOvertimeEnabled(settings->overtimeEnabled);
    output->refreshSettings();
    redrawFigure(engine->remaining());
    shortcuts.setupShortcuts();
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

// The two are kept exclusive by hand, as the three views are.
void ControlWindow::chooseDirection(bool countUp)
{
    ui->countdownBtn->setChecked(!countUp);
    ui->countUpBtn->setChecked(countUp);
    onCountModeChanged(countUp);
}

void ControlWindow::toggleOutput()
{
    if (output->isVisible()) {
        output->hide();
        ui->offerOutput(true);
        return;
    }
    showOnOtherScreen(*output, *this);
    ui->offerOutput(false);
}

void ControlWindow::browseSoundFile()
{
    cue->browse();
}

void ControlWindow::redrawFigure(int seconds)
{
    updateBlink(seconds);
    if (!blinkVisible)
        return; // the blink's return shows it again

    ui->timerPreview->setText(figureText(seconds));
    // Unlike the Output window's figure, a count-up is always drawn in the normal colour.
    const QColor color =
        engine->isCountUp() ? settings->timerColorNormal : thresholdColor(*settings, seconds);
    ui->timerPreview->setStyleSheet(figureStyle.arg(color.name()));
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
        ui->timerPreview->setStyleSheet(figureStyle.arg(QStringLiteral("transparent")));
}
