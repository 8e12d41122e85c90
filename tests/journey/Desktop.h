#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>

/// The X desktop that the journey runs on, with the keys and the mouse of the person who
/// sits at it. Real events, sent through the X server to whatever has the focus.
namespace desktop {

/// Both monitors of the virtual desktop; the second one is the audience's.
constexpr QRect firstMonitor(0, 0, 1920, 1080);
constexpr QRect secondMonitor(1920, 0, 1920, 1080);

/// The identifier of the visible window with exactly this title; empty when there is none.
QString windowId(const QString &title);
bool hasWindow(const QString &title);
/// Its client area on the desktop; null when there is no such window.
QRect windowGeometry(const QString &title);
/// The title of the window that has the keyboard.
QString activeWindow();

/// Asks for the window's place, as a person who drags and stretches it.
void placeWindow(const QString &title, const QRect &geometry);
/// Closes the window as the × of its title bar does.
void closeWindow(const QString &title);

/// Presses keys one after the other, as in {"Tab", "ctrl+a"}.
void press(const QStringList &keys);
void press(const QString &key, int times = 1);
/// Types a text.
void type(const QString &text);
/// Clicks into a window's client area.
void click(const QString &title, const QPoint &place);

/// What is to be seen in a part of the desktop.
QImage grab(const QRect &area);
/// Whether a run of three pixels or more of that colour is there.
bool shows(const QRect &area, const QColor &colour);
/// Whether the area holds exactly this text, and nothing else, drawn as a label with that
/// style sheet draws it on that ground; "%1" in the style sheet stands for the colour.
bool showsText(const QRect &area, const QString &text, const QString &styleSheet,
               const QColor &colour, const QColor &ground);

/// The same for a grab.
bool isText(const QImage &image, const QString &text, const QString &styleSheet,
            const QColor &colour, const QColor &ground);

/// Unplugs the second monitor, and plugs it in again.
void unplugSecondMonitor();
void plugInSecondMonitor();

} // namespace desktop
