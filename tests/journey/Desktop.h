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
/// Its client area on the desktop, null when there is no such window. The place is exact for
/// a window without a frame; the tool behind it counts a frame twice.
QRect windowGeometry(const QString &title);
/// The class by which the desktop finds the window's entry in its menu.
QString windowClass(const QString &title);
/// The title of the window that has the keyboard.
QString activeWindow();

/// Asks for the window's place, as a person who drags and stretches it.
void placeWindow(const QString &title, const QRect &geometry);
/// Closes the window as the × of its title bar does.
void closeWindow(const QString &title);

/// Presses keys one after the other, as in {"Tab", "ctrl+a"}.
void press(const QStringList &keys);
void press(const QString &key, int times = 1);
/// A key that is down as long as the object lives; the X server repeats it.
class HeldKey
{
public:
    explicit HeldKey(const QString &key);
    ~HeldKey();
    Q_DISABLE_COPY_MOVE(HeldKey)

private:
    QString key;
};
/// Types a text.
void type(const QString &text);
/// Clicks into a window's client area.
void click(const QString &title, const QPoint &place);
/// Moves the pointer there.
void pointAt(const QString &title, const QPoint &place);

/// What is to be seen in a part of the desktop.
QImage grab(const QRect &area);
/// What is to be seen in a part of a window's client area.
QImage grabWindow(const QString &title, const QRect &area);
/// Whether the image has a run of three pixels or more of that colour.
bool hasRun(const QImage &image, const QColor &colour);
/// The same for a part of the desktop.
bool shows(const QRect &area, const QColor &colour);
/// How a label draws its text.
struct Lettering
{
    /// "%1" stands for the colour.
    QString styleSheet;
    QColor ground;
    /// Width of the label, in whose middle the text stands.
    int width = 0;
};

/// Whether the image holds exactly this text in this colour, and nothing else.
bool isText(const QImage &image, const QString &text, const QColor &colour,
            const Lettering &lettering);

/// Unplugs the second monitor, and plugs it in again.
void unplugSecondMonitor();
void plugInSecondMonitor();

} // namespace desktop
