#include "Compositor.h"

#include <QTest>

#include "Desktop.h"
#include "Program.h"

namespace {

constexpr QRgb controlGround = qRgb(0x1c, 0x1c, 0x1c);
constexpr QRgb desktopGround = qRgb(0x33, 0x66, 0x99);
// No other row of that ground is as long: the narrowest Control window has 480 pixels.
constexpr int leastWidth = 400;
// The frame's × from the right upper corner of what is inside the frame.
constexpr QPoint closeButton(-14, -15);

QString windowTitle(int output)
{
    return QStringLiteral("Weston Compositor - screen%1").arg(output);
}

/// The longest run of the colour in the image's row.
QRect longestRun(const QImage &image, int y, QRgb colour)
{
    QRect longest;
    int start = 0;
    for (int x = 0; x <= image.width(); ++x) {
        if (x < image.width() && (image.pixel(x, y) | 0xff000000) == colour)
            continue;
        if (x - start > longest.width())
            longest = QRect(start, y, x - start, 1);
        start = x + 1;
    }
    return longest;
}

} // namespace

QImage compositor::picture(int output)
{
    return desktop::grabWindow(windowTitle(output), QRect(QPoint(0, 0), outputSize));
}

QRect compositor::controlWindow(int output)
{
    const QImage image = picture(output);
    QRect window;
    for (int y = 0; y < image.height(); ++y) {
        const QRect run = longestRun(image, y, controlGround);
        if (run.width() >= leastWidth)
            window |= run;
    }
    return window;
}

bool compositor::isCovered(int output)
{
    const QImage image = picture(output);
    for (int y = 0; y < image.height(); ++y) {
        if (!longestRun(image, y, desktopGround).isNull())
            return false;
    }
    return !image.isNull();
}

void compositor::click(int output, const QPoint &place)
{
    desktop::click(windowTitle(output), place);
}

WaylandProgram::~WaylandProgram()
{
    kill();
}

void WaylandProgram::start(bool traced)
{
    // The compositor draws the pointer itself: elsewhere it might cover a part of the window that
    // its ground is measured by.
    desktop::pointAt(windowTitle(0), QRect(QPoint(0, 0), compositor::outputSize).bottomRight());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "wayland");
    environment.remove("DISPLAY");
    if (traced)
        environment.insert("WAYLAND_DEBUG", "client");
    process.setProcessEnvironment(environment);
    process.start(VELMORA_PROGRAM, QStringList());
}

QByteArray WaylandProgram::trace()
{
    return process.readAllStandardError();
}

bool WaylandProgram::isRunning() const
{
    return process.state() != QProcess::NotRunning;
}

bool WaylandProgram::close()
{
    compositor::click(0, compositor::controlWindow(0).topRight() + closeButton);
    return QTest::qWaitFor([this] { return !isRunning(); }, patienceMs)
        && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

void WaylandProgram::kill()
{
    if (!isRunning())
        return;
    process.kill();
    process.waitForFinished();
}

QByteArray WaylandProgram::complaints()
{
    return withoutToolkitsComplaints(process.readAllStandardError());
}
