#pragma once

#include <QImage>
#include <QList>
#include <QPoint>
#include <QProcess>
#include <QRect>

/// The Wayland desktop that the test runs on, as the person who sits at it sees it. The
/// compositor shows each of its outputs in a window of the virtual X desktop.
namespace compositor {

constexpr QSize outputSize(1280, 800);

/// What the output shows; null when there is no such output.
QImage picture(int output);
/// The ground of the Control window on that output, without its frame; null when the output
/// does not show it.
QRect controlWindow(int output);
/// Whether nothing of the desktop's own ground is to be seen on the output.
bool isCovered(int output);
/// Clicks there.
void click(int output, const QPoint &place);

} // namespace compositor

/// The built program, as a client of the compositor.
class WaylandProgram
{
public:
    ~WaylandProgram();

    /// With @p traced, everything that it tells the compositor is written to standard error.
    void start(bool traced = false);
    /// What of that has come since the last call.
    QByteArray trace();
    bool isRunning() const;
    /// Presses the × that closes the Control window, and waits; true when the process then
    /// ends with status 0.
    bool close();
    /// Ends it the hard way, after a failure.
    void kill();
    /// What the program itself wrote to standard error.
    QByteArray complaints();

private:
    QProcess process;
};
