#include "FloorWindows.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTime>
#include <QVBoxLayout>

namespace {

// The two figures' looks are the program's own, with the sizes and the colour that it has in a
// first run: the same text is parsed and the same glyphs are drawn.
const QString outputStyle = QStringLiteral("color:%1;font-size:%2px;font-weight:bold;"
                                           "font-family:monospace;background-color:transparent;");
const QString controlStyle = QStringLiteral(
    "color:%1;font-size:48px;font-weight:bold;font-family:monospace;padding:4px 16px;");
const QColor figureColor(QStringLiteral("#00cc00"));
const QColor clockColor(Qt::white);
constexpr int clockFontPx = 80;

// The label is as large as its text and no larger: were it to fill the window, every tick would
// draw the whole window, and the floor would be slower than it need be.
void addCentred(QWidget &window, QLabel &label)
{
    auto *layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&label, 0, Qt::AlignCenter);
}

// One fill of the window's own: cheaper than a style sheet's ground.
void setGround(QWidget &window, const QColor &color)
{
    QPalette colors = window.palette();
    colors.setBrush(QPalette::Window, color);
    window.setPalette(colors);
}

} // namespace

FloorOutput::FloorOutput(const QString &picturePath)
{
    addCentred(*this, label);
    if (!picturePath.isEmpty())
        picture.load(picturePath);
    if (picture.isNull())
        setGround(*this, Qt::black);
}

// The program's clock is asked for twice a second, too, and drawn once: a label that is given
// the text that it has does nothing.
void FloorOutput::showClock()
{
    clock.setStyleSheet(outputStyle.arg(clockColor.name()).arg(clockFontPx));
    tickClock();
    layout()->addWidget(&clock);
    layout()->setAlignment(&label, Qt::AlignHCenter | Qt::AlignBottom);
    layout()->setAlignment(&clock, Qt::AlignHCenter | Qt::AlignTop);
    connect(&clockTimer, &QTimer::timeout, this, &FloorOutput::tickClock);
    clockTimer.start(500);
}

void FloorOutput::tickClock()
{
    clock.setText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")));
}

void FloorOutput::paintEvent(QPaintEvent *event)
{
    if (picture.isNull()) {
        QWidget::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.drawPixmap(QRectF(0, 0, width(), height()), picture, QRectF());
}

FloorWindows::FloorWindows(QSize controlSize, const QString &picturePath)
    : output(picturePath)
{
    // A player is created, as the program must create one for its cue; nothing is loaded.
    player.setAudioOutput(&audioOutput);
    audioOutput.setVolume(1.0F);

    // Titles, so that a window manager and a script treat them as they treat the program's.
    control.setWindowTitle(QStringLiteral("Floor: control"));
    output.setWindowTitle(QStringLiteral("Floor: output"));
    addCentred(control, controlLabel);
    setGround(control, QColor(QStringLiteral("#1c1c1c")));
    control.resize(controlSize);

    connect(&timer, &QTimer::timeout, this, &FloorWindows::tick);
    connect(&previewTimer, &QTimer::timeout, this, &FloorWindows::refreshPreview);
    draw();
}

void FloorWindows::show()
{
    control.show();
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (QScreen *screen : screens) {
        if (screen == control.screen())
            continue;
        output.setScreen(screen);
        output.setGeometry(screen->geometry());
        break;
    }
    output.showFullScreen();
}

// The preview costs the program a picture of the whole window and its smooth scaling; a floor
// that does the same tells how much of that is the program's own.
void FloorWindows::showPreview()
{
    preview.setWindowFlags(Qt::Window | Qt::WindowStaysOnTopHint);
    preview.setWindowTitle(QStringLiteral("Floor: preview"));
    preview.resize(640, 360);
    auto *layout = new QVBoxLayout(&preview);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(&previewLabel);
    preview.show();
    previewTimer.start(500);
}

void FloorWindows::start()
{
    timer.start(1000);
}

void FloorWindows::tick()
{
    --remaining;
    draw();
}

void FloorWindows::refreshPreview()
{
    previewLabel.setPixmap(
        output.grab().scaled(previewLabel.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void FloorWindows::setRemaining(int seconds)
{
    remaining = seconds;
}

void FloorWindows::draw()
{
    const QString text = QStringLiteral("%1:%2")
                             .arg(remaining / 60, 2, 10, QLatin1Char('0'))
                             .arg(remaining % 60, 2, 10, QLatin1Char('0'));
    output.label.setStyleSheet(outputStyle.arg(figureColor.name()).arg(figurePixelSize));
    output.label.setText(text);
    controlLabel.setText(text);
    controlLabel.setStyleSheet(controlStyle.arg(figureColor.name()));
}
