#include "ControlWindowUi.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QIcon>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStatusBar>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "AudioCue.h"
#include "Button.h"
#include "FormHelpers.h"
#include "Logo.h"
#include "PresetStrip.h"
#include "Stepper.h"

namespace {

const QString titleStyle = QStringLiteral(
    "QPushButton#appTitle { background:none; border:none; color:#e8e8e8;"
    "  font-size:18px; font-weight:bold; letter-spacing:2px; padding:0; text-align:left; }"
    "QPushButton#appTitle:hover { color:#4ade80; }");
const QString scrollAreaStyle = QStringLiteral(
    "QScrollArea { background-color: #1c1c1c; border: none; }"
    "QScrollArea > QWidget > QWidget { background-color: #1c1c1c; }"
    "QScrollBar:vertical { background: #1c1c1c; width: 6px; border: none; }"
    "QScrollBar::handle:vertical { background: #444; border-radius: 3px; min-height: 20px; }"
    "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }");
// A bare rule, which deliberately reaches everything inside the scroll area: the buttons
// in there show their role by their borders and not by their grounds.
const QString contentStyle = QStringLiteral("background-color: #1c1c1c;");
// The green border marks the main action of the row.
const QString setButtonStyle = QStringLiteral(
    "QPushButton { padding:0; min-height:0; font-size:13px; border:2px solid #2a9c4a; }");
const QString addToPresetStyle =
    QStringLiteral("QPushButton { padding:0; min-height:0; font-size:13px; }");

// To find out the format, Qt would load all of its plugins for pictures.
QPixmap readLogo()
{
    QImageReader reader(logoPath, "png");
    reader.setAutoDetectImageFormat(false);
    return QPixmap::fromImageReader(&reader);
}

} // namespace

ControlWindowUi::ControlWindowUi(QMainWindow *window, AppSettings *settings, AudioCue *cue)
{
    auto *central = new QWidget;
    window->setCentralWidget(central);
    auto *mainLayout = new QVBoxLayout(central);
    mainLayout->setContentsMargins(12, 6, 12, 6);

    mainLayout->addLayout(makeHeaderRow());
    mainLayout->addWidget(makeLine());

    // It is the window's, so that a copy of the pointer does no harm.
    // cppcheck-suppress [noCopyConstructor, noOperatorEq]
    timerPreview = new QLabel(QStringLiteral("05:00"));
    timerPreview->setObjectName(QStringLiteral("timerPreview"));
    timerPreview->setAlignment(Qt::AlignCenter);
    timerPreview->setFixedHeight(80);
    timerPreview->setAccessibleDescription(tr("Timer")); // its name is the figure itself
    mainLayout->addWidget(timerPreview);

    mainLayout->addWidget(makeScrollArea(central, settings, cue), 1);
    mainLayout->addWidget(makeLine());
    mainLayout->addLayout(makeBottomRow());

    window->statusBar()->hide();
}

QLayout *ControlWindowUi::makeHeaderRow()
{
    // Two leading blanks separate the text from the logo.
    titleBtn = makeHooked(tr("  VELMORA"), tr("About Velmora"), QStringLiteral("appTitle"));
    titleBtn->setIcon(readLogo());
    titleBtn->setIconSize(QSize(28, 28));
    titleBtn->setStyleSheet(titleStyle);

    settingsBtn = makeHooked(QStringLiteral("⚙"), tr("Settings"), QStringLiteral("settingsBtn"));
    settingsBtn->setFixedSize(36, 36);
    settingsBtn->setToolTip(tr("Settings"));

    auto *row = new QHBoxLayout;
    row->addWidget(titleBtn);
    row->addStretch();
    row->addWidget(settingsBtn);
    return row;
}

QWidget *ControlWindowUi::makeScrollArea(QWidget *parent, AppSettings *settings, AudioCue *cue)
{
    // In its place before it is filled: a widget that is moved gets its style
    // again, and with it all that it holds.
    auto *scrollArea = new QScrollArea(parent);
    scrollArea->setAccessibleName(tr("Timer controls")); // Tab stops at it, too
    scrollArea->setWidgetResizable(true);
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    scrollArea->setStyleSheet(scrollAreaStyle);

    auto *content = new QWidget;
    content->setStyleSheet(contentStyle);
    scrollArea->setWidget(content);
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 4, 0); // on the right, room for the thin scroll bar
    column->setSpacing(5);

    column->addLayout(makeDirectionRow());
    column->addWidget(makeLine());
    column->addLayout(makeTransportRow());
    column->addLayout(makeAdjustRow());

    QFrame *lineUnderAdjustRow = makeLine();
    column->addWidget(lineUnderAdjustRow);
    // The style sheet makes the two buttons higher than their row: their lower borders lie there.
    lineUnderAdjustRow->stackUnder(plusMinBtn);
    QLayout *setTimeRow = makeSetTimeRow(settings->defaultDuration);
    column->addWidget(makeHookedHeader(tr("Set Time"), minSpin));
    column->addLayout(setTimeRow);

    column->addWidget(makeLine());
    presetList = new PresetStrip(settings);
    column->addWidget(makeHookedHeader(tr("Presets  —  drag to reorder"), presetList));
    column->addWidget(presetList);

    column->addWidget(makeLine());
    column->addWidget(makeHookedHeader(tr("Output View")));
    column->addLayout(makeViewRow());

    column->addWidget(makeLine());
    QLayout *messageRow = makeMessageRow();
    column->addWidget(makeHookedHeader(tr("Message Overlay"), messageEdit));
    column->addLayout(messageRow);

    column->addWidget(makeLine());
    column->addWidget(makeHookedHeader(tr("Audio Cue at 00:00")));
    cue->addRows(column);

    column->addStretch();

    return scrollArea;
}

QLayout *ControlWindowUi::makeDirectionRow()
{
    countdownBtn = makeCheckable(tr("▼  Countdown"), tr("Countdown"), true);
    countUpBtn = makeCheckable(tr("▲  Count Up"), tr("Count up"));

    auto *row = new QHBoxLayout;
    row->addWidget(countdownBtn);
    row->addWidget(countUpBtn);
    return row;
}

QLayout *ControlWindowUi::makeTransportRow()
{
    startBtn = makeHooked(tr("▶  START"), tr("Start"), QStringLiteral("startBtn"));
    pauseBtn = makeHooked(tr("⏸  PAUSE"), tr("Pause"), QStringLiteral("pauseBtn"));
    resetBtn = makeHooked(tr("↺  RESET"), tr("Reset"), QStringLiteral("resetBtn"));

    auto *row = new QHBoxLayout;
    row->addWidget(startBtn);
    row->addWidget(pauseBtn);
    row->addWidget(resetBtn);
    return row;
}

QLayout *ControlWindowUi::makeAdjustRow()
{
    plusMinBtn = makeButton(tr("+1 min"), tr("Add 1 minute"));
    minusMinBtn = makeButton(tr("−1 min"), tr("Subtract 1 minute"));
    plusMinBtn->setFixedHeight(30);
    minusMinBtn->setFixedHeight(30);

    auto *row = new QHBoxLayout;
    row->addWidget(plusMinBtn);
    row->addWidget(minusMinBtn);
    return row;
}

QLayout *ControlWindowUi::makeSetTimeRow(int secs)
{
    minSpin = makeSpinBox({0, 999}, tr(" min"), secs / 60, tr("Minutes"));
    secSpin = makeSpinBox({0, 59}, tr(" sec"), secs % 60, tr("Seconds"));

    setBtn = makeButton(tr("Set"), tr("Set time"));
    setBtn->setFixedSize(60, 32);
    setBtn->setStyleSheet(setButtonStyle);

    addToPresetBtn = makeButton(tr("Add to Preset"), tr("Add to presets"));
    addToPresetBtn->setFixedSize(100, 32);
    addToPresetBtn->setStyleSheet(addToPresetStyle);

    auto *row = new QHBoxLayout;
    row->addWidget(makeStepper(minSpin));
    row->addWidget(makeStepper(secSpin));
    row->addWidget(setBtn);
    row->addWidget(addToPresetBtn);
    row->addStretch();
    return row;
}

QLayout *ControlWindowUi::makeViewRow()
{
    viewTimerBtn = makeCheckable(tr("⏱  Timer"), tr("Timer view"));
    viewClockBtn = makeCheckable(tr("🕐  Clock"), tr("Clock view"));
    viewBothBtn = makeCheckable(tr("⊞  Both"), tr("Both views"), true); // as the output starts

    auto *row = new QHBoxLayout;
    row->addWidget(viewTimerBtn);
    row->addWidget(viewClockBtn);
    row->addWidget(viewBothBtn);
    return row;
}

QLayout *ControlWindowUi::makeMessageRow()
{
    messageEdit = new QLineEdit;
    messageEdit->setPlaceholderText(tr("Enter message to push to output screen…"));
    messageEdit->setAccessibleName(tr("Message overlay"));
    pushBtn = makeFixedWidth(tr("Push"), tr("Push message"), 60);
    clearBtn = makeFixedWidth(tr("Clear"), tr("Clear message"), 60);

    auto *row = new QHBoxLayout;
    row->addWidget(messageEdit, 1);
    row->addWidget(pushBtn);
    row->addWidget(clearBtn);
    return row;
}

QLayout *ControlWindowUi::makeBottomRow()
{
    outputToggleBtn = new Button;
    outputToggleBtn->setObjectName(QStringLiteral("outputToggleBtn"));
    offerOutput(true); // at start, whether the Output window is shown yet or not
    outputToggleBtn->setFixedHeight(38);

    previewBtn = makeFixedWidth(tr("Preview"), tr("Output preview"), 100);
    previewBtn->setFixedHeight(38);

    auto *row = new QHBoxLayout;
    row->addWidget(outputToggleBtn);
    row->addWidget(previewBtn);
    return row;
}

int ControlWindowUi::enteredTime() const
{
    return minSpin->value() * 60 + secSpin->value();
}

void ControlWindowUi::enterTime(int secs) const
{
    minSpin->setValue(secs / 60);
    secSpin->setValue(secs % 60);
}

void ControlWindowUi::offerOutput(bool showing) const
{
    outputToggleBtn->setText(showing ? tr("▶  Show Output Window") : tr("■  Hide Output Window"));
    outputToggleBtn->setAccessibleName(showing ? tr("Show Output Window")
                                               : tr("Hide Output Window"));
}
