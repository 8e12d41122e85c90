#include "OutputWindow.h"

#include <algorithm>
#include <cmath>

#include <QEvent>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QTime>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "Figure.h"

namespace {

constexpr int clockIntervalMs = 500;
constexpr int blinkIntervalMs = 500;
constexpr double referenceHeight = 1080.0; // pixels; the font sizes of the record hold here
constexpr int progressMaximum = 1000;
constexpr int formerPictureLimitMiB = 128; // Qt's own before it became the other one
constexpr int pictureLimitMiB = 256;       // 67 megapixels; four bytes are counted for each

const QString containerStyle = QStringLiteral("background-color: transparent;");
const QString figureStyle = QStringLiteral(
    "color:%1;font-size:%2px;font-weight:bold;font-family:monospace;background-color:transparent;");
const QString messageStyle =
    QStringLiteral("color:%1;font-size:%2px;background-color:transparent;");
const QString progressStyle =
    QStringLiteral("QProgressBar { background-color:#1a1a1a; border:none; border-radius:4px; }"
                   "QProgressBar::chunk { background-color:%1; border-radius:4px; }");

int scaled(int size, double factor, int minimum)
{
    return std::max(int(std::lround(size * factor)), minimum);
}

QString clockText(const AppSettings &settings)
{
    QString format;
    if (settings.clock24hr)
        format = settings.clockShowSeconds ? QStringLiteral("HH:mm:ss") : QStringLiteral("HH:mm");
    else
        format =
            settings.clockShowSeconds ? QStringLiteral("hh:mm:ss AP") : QStringLiteral("hh:mm AP");
    return QTime::currentTime().toString(format);
}

// Not QPixmap::load, which answers from Qt's cache: there a file is known by its size and
// the second of its last change, and one that was replaced within that second would be the old one.
// As there, only a name without a suffix is tried with those of the known formats.
QPixmap readPicture(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists() && !file.completeSuffix().isEmpty())
        return {};
    // The limit is the whole process's, which reads no other picture from a user's file. Only the
    // older default is raised: what the environment sets, or a later Qt allows, holds.
    if (QImageReader::allocationLimit() == formerPictureLimitMiB)
        QImageReader::setAllocationLimit(pictureLimitMiB);
    return QPixmap::fromImage(QImage(path));
}

} // namespace

OutputWindow::OutputWindow(const AppSettings *settings, QWidget *parent)
    : QWidget(parent)
    , settings(settings)
{
    setWindowTitle(tr("Velmora — Output"));
    setAttribute(Qt::WA_DeleteOnClose, false);

    timerLabel = new QLabel(QStringLiteral("00:00"));
    clockLabel = new QLabel(QStringLiteral("00:00:00"));
    messageLabel = new QLabel;
    for (QLabel *label : {timerLabel, clockLabel, messageLabel})
        label->setAlignment(Qt::AlignCenter);
    messageLabel->setWordWrap(false);
    // The name of each is the text that it shows.
    timerLabel->setAccessibleDescription(tr("Timer"));
    clockLabel->setAccessibleDescription(tr("Clock"));
    messageLabel->setAccessibleDescription(tr("Message"));

    progressBar = new QProgressBar;
    progressBar->setRange(0, progressMaximum);
    progressBar->setValue(progressMaximum);
    progressBar->setTextVisible(false);
    progressBar->setFixedHeight(20);
    progressBar->setAccessibleName(tr("Timer progress"));

    auto *container = new QWidget;
    container->setStyleSheet(containerStyle);
    auto *containerLayout = new QVBoxLayout(container);
    containerLayout->setContentsMargins(0, 0, 0, 0);
    containerLayout->setSpacing(0);
    containerLayout->addStretch(1);
    containerLayout->addWidget(timerLabel);
    containerLayout->addWidget(clockLabel);
    containerLayout->addStretch(1);

    auto *layout = new QVBoxLayout(this);
    // The content never sizes the window: a long message would make it wider than its
    // screen, and as the fonts follow the height, large ones would make it grow for ever.
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->setContentsMargins(30, 20, 30, 14);
    layout->setSpacing(0);
    layout->addWidget(container, 1);
    layout->addWidget(messageLabel);
    layout->addSpacing(8);
    layout->addWidget(progressBar);

    connect(&clockTimer, &QTimer::timeout, this, &OutputWindow::tickClock);
    connect(&blinkTimer, &QTimer::timeout, this, &OutputWindow::tickBlink);
    clockTimer.start(clockIntervalMs);

    refreshSettings(); // the clock, too; and all is shown
}

void OutputWindow::setTotalSeconds(int seconds)
{
    totalSeconds = std::max(seconds, 1);
    updateProgress();
}

void OutputWindow::setViewMode(int mode)
{
    viewMode = mode;
    applyViewMode();
}

void OutputWindow::setMessage(const QString &text)
{
    messageLabel->setText(text);
}

void OutputWindow::clearMessage()
{
    messageLabel->clear();
}

void OutputWindow::onTimerTick(int seconds)
{
    currentSeconds = seconds;
    if (seconds == 0 && !countUp) {
        if (!blinkTimer.isActive() && settings->blinkEnabled) {
            blinkVisible = true;
            blinkTimer.start(blinkIntervalMs);
        }
    } else if (seconds > 0 || countUp) {
        if (blinkTimer.isActive()) {
            blinkTimer.stop();
            blinkVisible = true;
        }
    }
    // In overtime the blink goes on as it is.
    updateFigure();
    updateProgress();
}

void OutputWindow::refreshSettings()
{
    scaleFonts();
    loadBackground();
    clockLabel->setStyleSheet(figureStyle.arg(settings->clockColor.name()).arg(clockFontPx));
    messageLabel->setStyleSheet(messageStyle.arg(settings->messageColor.name()).arg(messageFontPx));
    updateFigure();
    updateProgress();
    tickClock();
}

void OutputWindow::setCountUp(bool countUp)
{
    this->countUp = countUp;
    if (blinkTimer.isActive()) {
        blinkTimer.stop();
        blinkVisible = true;
        updateFigure();
    }
}

void OutputWindow::tickClock()
{
    if (viewMode != TimerView)
        clockLabel->setText(clockText(*settings));
}

void OutputWindow::tickBlink()
{
    blinkVisible = !blinkVisible;
    if (blinkVisible) {
        updateFigure();
        return;
    }
    // Drawn in the ground's colour, the figure vanishes. Over a picture it deliberately
    // shows in that colour instead.
    timerLabel->setStyleSheet(figureStyle.arg(settings->bgColor.name()).arg(timerFontPx));
}

void OutputWindow::paintEvent(QPaintEvent *event)
{
    if (bgPixmap.isNull()) {
        QWidget::paintEvent(event);
        return;
    }
    // Stretched to the window; the picture's proportions are deliberately not kept.
    QPainter painter(this);
    painter.drawPixmap(QRectF(0, 0, width(), height()), bgPixmap, QRectF());
}

void OutputWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    refreshSettings();
}

void OutputWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refreshSettings();
}

// A change of the desktop's theme, of the style or of the application's style sheet polishes the
// window again, and the sheet's background takes the palette's place; some themes give each widget
// a palette of theirs. This event follows at once, before anything is drawn. The picture is not
// read again: nothing of it has changed.
void OutputWindow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && ground.style() != Qt::NoBrush)
        applyGround();
}

void OutputWindow::applyViewMode()
{
    if (viewMode < TimerView || viewMode > BothViews)
        return;
    timerLabel->setVisible(viewMode != ClockView);
    clockLabel->setVisible(viewMode != TimerView);
}

void OutputWindow::scaleFonts()
{
    if (height() < 1)
        return;
    const double factor = height() / referenceHeight;
    timerFontPx = scaled(settings->timerFontSize, factor, 12);
    clockFontPx = scaled(settings->clockFontSize, factor, 10);
    messageFontPx = scaled(settings->messageFontSize, factor, 8);
}

// The picture is read from its file every time, deliberately: a file that was replaced
// or has come back is picked up by hiding and showing the window.
void OutputWindow::loadBackground()
{
    bgPixmap = QPixmap();
    if (settings->bgImageEnabled && !settings->bgImagePath.isEmpty())
        bgPixmap = readPicture(settings->bgImagePath);

    if (!bgPixmap.isNull()) {
        setAutoFillBackground(false);
        // From one picture to another nothing else asks for the whole window to be drawn.
        update();
        return;
    }
    // A picture that cannot be read is silently absent.
    setAutoFillBackground(true);
    ground = settings->bgColor;
    applyGround();
}

void OutputWindow::applyGround()
{
    QPalette colors = palette();
    colors.setBrush(QPalette::Window, ground);
    setPalette(colors);
}

// While the blink hides the figure, it is left as it is.
void OutputWindow::updateFigure()
{
    if (!blinkVisible)
        return;
    // The colour deliberately ignores the count direction; the Control window's preview
    // does not.
    const QColor color = thresholdColor(*settings, currentSeconds);
    timerLabel->setStyleSheet(figureStyle.arg(color.name()).arg(timerFontPx));
    timerLabel->setText(figureText(currentSeconds));
}

void OutputWindow::updateProgress()
{
    // Clamped before it becomes an integer: a long count over a short total is out of its range.
    const double share = std::max(currentSeconds, 0) * double(progressMaximum) / totalSeconds;
    progressBar->setValue(int(std::clamp(std::round(share), 0.0, double(progressMaximum))));
    // The bar keeps its colour while the figure blinks.
    const QColor color = thresholdColor(*settings, currentSeconds);
    progressBar->setStyleSheet(progressStyle.arg(color.name()));
}
