#include "ControlWindow.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QIcon>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStatusBar>
#include <QVBoxLayout>

#include "AboutDialog.h"
#include "AppSettings.h"
#include "Button.h"
#include "FormHelpers.h"
#include "Logo.h"
#include "OutputWindow.h"
#include "PresetStrip.h"
#include "Stepper.h"
#include "TimerEngine.h"

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

void ControlWindow::buildUi()
{
    auto *central = new QWidget;
    setCentralWidget(central);
    auto *mainLayout = new QVBoxLayout(central);
    mainLayout->setContentsMargins(12, 6, 12, 6);

    mainLayout->addLayout(buildHeaderRow());
    mainLayout->addWidget(makeLine());

    timerPreview = new QLabel(QStringLiteral("05:00"));
    timerPreview->setObjectName(QStringLiteral("timerPreview"));
    timerPreview->setAlignment(Qt::AlignCenter);
    timerPreview->setFixedHeight(80);
    timerPreview->setAccessibleDescription(tr("Timer")); // its name is the figure itself
    mainLayout->addWidget(timerPreview);

    mainLayout->addWidget(buildScrollArea(), 1);
    mainLayout->addWidget(makeLine());
    mainLayout->addLayout(buildBottomRow());

    statusBar()->hide();
}

QLayout *ControlWindow::buildHeaderRow()
{
    // Two leading blanks part the text from the logo.
    QPushButton *titleBtn =
        makeHooked(tr("  VELMORA"), tr("About Velmora"), QStringLiteral("appTitle"));
    titleBtn->setIcon(readLogo());
    titleBtn->setIconSize(QSize(28, 28));
    titleBtn->setStyleSheet(titleStyle);
    connect(titleBtn, &QPushButton::clicked, this, [this] {
        AboutDialog dialog(this);
        dialog.exec();
    });

    QPushButton *settingsBtn =
        makeHooked(QStringLiteral("⚙"), tr("Settings"), QStringLiteral("settingsBtn"));
    settingsBtn->setFixedSize(36, 36);
    settingsBtn->setToolTip(tr("Settings"));
    connect(settingsBtn, &QPushButton::clicked, this, &ControlWindow::openSettings);

    auto *row = new QHBoxLayout;
    row->addWidget(titleBtn);
    row->addStretch();
    row->addWidget(settingsBtn);
    return row;
}

QWidget *ControlWindow::buildScrollArea()
{
    // In its place before it is filled: a widget that is moved gets its style
    // again, and with it all that it holds.
    auto *scrollArea = new QScrollArea(centralWidget());
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

    column->addLayout(buildDirectionRow());
    column->addWidget(makeLine());
    column->addLayout(buildTransportRow());
    column->addLayout(buildAdjustRow());

    QFrame *lineUnderAdjustRow = makeLine();
    column->addWidget(lineUnderAdjustRow);
    // The style sheet makes the two buttons higher than their row: their lower borders lie there.
    lineUnderAdjustRow->stackUnder(plusMinBtn);
    QLayout *setTimeRow = buildSetTimeRow();
    column->addWidget(makeHookedHeader(tr("Set Time"), minSpin));
    column->addLayout(setTimeRow);

    column->addWidget(makeLine());
    presetList = new PresetStrip(settings);
    connect(presetList, &PresetStrip::presetClicked, this, &ControlWindow::onPreset);
    column->addWidget(makeHookedHeader(tr("Presets  —  drag to reorder"), presetList));
    column->addWidget(presetList);

    column->addWidget(makeLine());
    column->addWidget(makeHookedHeader(tr("Output View")));
    column->addLayout(buildViewRow());

    column->addWidget(makeLine());
    QLayout *messageRow = buildMessageRow();
    column->addWidget(makeHookedHeader(tr("Message Overlay"), messageEdit));
    column->addLayout(messageRow);

    column->addWidget(makeLine());
    column->addWidget(makeHookedHeader(tr("Audio Cue at 00:00")));
    cue->addRows(column);

    column->addStretch();

    return scrollArea;
}

// The two are kept exclusive by hand, as the three of the view row are.
QLayout *ControlWindow::buildDirectionRow()
{
    countdownBtn = makeCheckable(tr("▼  Countdown"), tr("Countdown"), true);
    countUpBtn = makeCheckable(tr("▲  Count Up"), tr("Count up"));
    connect(countdownBtn, &QPushButton::clicked, this, [this] { chooseDirection(false); });
    connect(countUpBtn, &QPushButton::clicked, this, [this] { chooseDirection(true); });

    auto *row = new QHBoxLayout;
    row->addWidget(countdownBtn);
    row->addWidget(countUpBtn);
    return row;
}

QLayout *ControlWindow::buildTransportRow()
{
    startBtn = makeHooked(tr("▶  START"), tr("Start"), QStringLiteral("startBtn"));
    pauseBtn = makeHooked(tr("⏸  PAUSE"), tr("Pause"), QStringLiteral("pauseBtn"));
    resetBtn = makeHooked(tr("↺  RESET"), tr("Reset"), QStringLiteral("resetBtn"));
    connect(startBtn, &QPushButton::clicked, engine, &TimerEngine::start);
    connect(pauseBtn, &QPushButton::clicked, engine, &TimerEngine::pause);
    connect(resetBtn, &QPushButton::clicked, engine, &TimerEngine::reset);

    auto *row = new QHBoxLayout;
    row->addWidget(startBtn);
    row->addWidget(pauseBtn);
    row->addWidget(resetBtn);
    return row;
}

// Neither re-arms the cue: adding a minute at zero does not make the same run sound twice.
QLayout *ControlWindow::buildAdjustRow()
{
    plusMinBtn = makeButton(tr("+1 min"), tr("Add 1 minute"));
    minusMinBtn = makeButton(tr("−1 min"), tr("Subtract 1 minute"));
    plusMinBtn->setFixedHeight(30);
    minusMinBtn->setFixedHeight(30);
    connect(plusMinBtn, &QPushButton::clicked, this, [this] { engine->addSeconds(60); });
    connect(minusMinBtn, &QPushButton::clicked, this, [this] { engine->addSeconds(-60); });

    auto *row = new QHBoxLayout;
    row->addWidget(plusMinBtn);
    row->addWidget(minusMinBtn);
    return row;
}

QLayout *ControlWindow::buildSetTimeRow()
{
    minSpin = makeSpinBox({0, 999}, tr(" min"), settings->defaultDuration / 60, tr("Minutes"));
    secSpin = makeSpinBox({0, 59}, tr(" sec"), settings->defaultDuration % 60, tr("Seconds"));

    QPushButton *setBtn = makeButton(tr("Set"), tr("Set time"));
    setBtn->setFixedSize(60, 32);
    setBtn->setStyleSheet(setButtonStyle);
    connect(setBtn, &QPushButton::clicked, this, &ControlWindow::onSetTime);

    QPushButton *addToPresetBtn = makeButton(tr("Add to Preset"), tr("Add to presets"));
    addToPresetBtn->setFixedSize(100, 32);
    addToPresetBtn->setStyleSheet(addToPresetStyle);
    connect(addToPresetBtn, &QPushButton::clicked, this,
            [this] { presetList->add(setTimeSeconds()); });

    auto *row = new QHBoxLayout;
    row->addWidget(makeStepper(minSpin));
    row->addWidget(makeStepper(secSpin));
    row->addWidget(setBtn);
    row->addWidget(addToPresetBtn);
    row->addStretch();
    return row;
}

QLayout *ControlWindow::buildViewRow()
{
    viewTimerBtn = makeCheckable(tr("⏱  Timer"), tr("Timer view"));
    viewClockBtn = makeCheckable(tr("🕐  Clock"), tr("Clock view"));
    viewBothBtn = makeCheckable(tr("⊞  Both"), tr("Both views"), true); // as the output starts
    connect(viewTimerBtn, &QPushButton::clicked, this,
            [this] { onViewChanged(OutputWindow::TimerView); });
    connect(viewClockBtn, &QPushButton::clicked, this,
            [this] { onViewChanged(OutputWindow::ClockView); });
    connect(viewBothBtn, &QPushButton::clicked, this,
            [this] { onViewChanged(OutputWindow::BothViews); });

    auto *row = new QHBoxLayout;
    row->addWidget(viewTimerBtn);
    row->addWidget(viewClockBtn);
    row->addWidget(viewBothBtn);
    return row;
}

QLayout *ControlWindow::buildMessageRow()
{
    messageEdit = new QLineEdit;
    messageEdit->setPlaceholderText(tr("Enter message to push to output screen…"));
    messageEdit->setAccessibleName(tr("Message overlay"));
    QPushButton *pushBtn = makeFixedWidth(tr("Push"), tr("Push message"), 60);
    QPushButton *clearBtn = makeFixedWidth(tr("Clear"), tr("Clear message"), 60);
    connect(pushBtn, &QPushButton::clicked, this, &ControlWindow::onPushMessage);
    connect(messageEdit, &QLineEdit::returnPressed, this, &ControlWindow::onPushMessage);
    connect(clearBtn, &QPushButton::clicked, this, &ControlWindow::onClearMessage);

    auto *row = new QHBoxLayout;
    row->addWidget(messageEdit, 1);
    row->addWidget(pushBtn);
    row->addWidget(clearBtn);
    return row;
}

void ControlWindow::onPushMessage()
{
    const QString message = messageEdit->text().trimmed();
    if (!message.isEmpty())
        output->setMessage(message);
}

void ControlWindow::onClearMessage()
{
    output->clearMessage();
    messageEdit->clear();
}

QLayout *ControlWindow::buildBottomRow()
{
    outputToggleBtn = new Button;
    outputToggleBtn->setObjectName(QStringLiteral("outputToggleBtn"));
    offerOutput(true); // at start, whether the Output window is shown yet or not
    outputToggleBtn->setFixedHeight(38);
    connect(outputToggleBtn, &QPushButton::clicked, this, &ControlWindow::toggleOutput);

    QPushButton *previewBtn = makeFixedWidth(tr("Preview"), tr("Output preview"), 100);
    previewBtn->setFixedHeight(38);
    connect(previewBtn, &QPushButton::clicked, this, [this] { preview.toggle(); });

    auto *row = new QHBoxLayout;
    row->addWidget(outputToggleBtn);
    row->addWidget(previewBtn);
    return row;
}
