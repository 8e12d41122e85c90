#include "Desktop.h"

#include <algorithm>

#include <QGuiApplication>
#include <QLabel>
#include <QPixmap>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>

namespace {

constexpr int processTimeoutMs = 30'000;
constexpr int clickPauseMs = 150;
constexpr int visibleDifference = 64;
constexpr int comparedHeight = 24;
constexpr double sameShare = 0.015;

/// The output of a tool; empty when it fails, as some do when a window has just gone.
QString outputOf(const QString &tool, const QStringList &arguments)
{
    QProcess process;
    process.start(tool, arguments);
    if (!process.waitForFinished(processTimeoutMs)) {
        qWarning("%s cannot be run: %s", qPrintable(tool), qPrintable(process.errorString()));
        return {};
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return {};
    return QString::fromUtf8(process.readAllStandardOutput());
}

bool differ(QRgb one, QRgb other)
{
    return qAbs(qRed(one) - qRed(other)) > visibleDifference
        || qAbs(qGreen(one) - qGreen(other)) > visibleDifference
        || qAbs(qBlue(one) - qBlue(other)) > visibleDifference;
}

/// A row of an image of 32 bits a pixel.
const QRgb *line(const QImage &image, int y)
{
    return reinterpret_cast<const QRgb *>(image.constScanLine(y));
}

/// The part of the image that is not ground.
QImage trimmed(const QImage &image, QRgb ground)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        const QRgb *row = line(image, y);
        const QRgb *end = row + image.width();
        const auto inked = [ground](QRgb pixel) { return differ(pixel, ground); };
        const QRgb *first = std::find_if(row, end, inked);
        if (first == end)
            continue;
        const QRgb *last = end - 1;
        while (!inked(*last))
            --last;
        box |= QRect(QPoint(static_cast<int>(first - row), y),
                     QPoint(static_cast<int>(last - row), y));
    }
    return box.isNull() ? QImage() : image.copy(box);
}

QImage drawnText(const QString &text, const QColor &colour, const desktop::Lettering &lettering)
{
    QLabel label(text);
    label.setAlignment(Qt::AlignCenter);
    label.setStyleSheet(lettering.styleSheet.arg(colour.name()) + "background-color:transparent;");
    label.resize(lettering.width, label.sizeHint().height());
    QImage image(label.size(), QImage::Format_RGB32);
    image.fill(lettering.ground);
    label.render(&image, {}, {}, QWidget::DrawChildren);
    return trimmed(image, lettering.ground.rgb());
}

/// Whether two trimmed pictures show the same. A text may stand a fraction of a pixel further
/// right in one of them, which changes its edges a little; so both are brought to one small
/// size first, where an edge is a shade and only another character makes a visible difference.
bool looksTheSame(const QImage &one, const QImage &other)
{
    constexpr int sizeTolerance = 2;
    if (one.isNull() || other.isNull() || qAbs(one.width() - other.width()) > sizeTolerance
        || qAbs(one.height() - other.height()) > sizeTolerance)
        return false;
    const QSize size(one.width() * comparedHeight / one.height(), comparedHeight);
    const QImage small = one.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage otherSmall = other.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    int different = 0;
    for (int y = 0; y < size.height(); ++y) {
        const QRgb *row = line(small, y);
        const QRgb *otherRow = line(otherSmall, y);
        for (int x = 0; x < size.width(); ++x)
            different += differ(row[x], otherRow[x]) ? 1 : 0;
    }
    return different <= sameShare * size.width() * size.height();
}

} // namespace

QString desktop::windowId(const QString &title)
{
    // Identifier, desktop and host, then one blank and the title.
    static const QRegularExpression entry("^(\\S+) +\\S+ +\\S+ (.*)$");
    const QStringList lines = outputOf("wmctrl", {"-l"}).split('\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = entry.match(line);
        if (match.captured(2) == title)
            return match.captured(1);
    }
    return {};
}

bool desktop::hasWindow(const QString &title)
{
    return !windowId(title).isEmpty();
}

QRect desktop::windowGeometry(const QString &title)
{
    const QString id = windowId(title);
    if (id.isEmpty())
        return {};
    QRect geometry;
    const QStringList lines =
        outputOf("xdotool", {"getwindowgeometry", "--shell", id}).split('\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const int value = line.section('=', 1).toInt();
        if (line.startsWith("X="))
            geometry.moveLeft(value);
        else if (line.startsWith("Y="))
            geometry.moveTop(value);
        else if (line.startsWith("WIDTH="))
            geometry.setWidth(value);
        else if (line.startsWith("HEIGHT="))
            geometry.setHeight(value);
    }
    return geometry;
}

QString desktop::windowClass(const QString &title)
{
    // Identifier, desktop, instance and class with a dot between.
    static const QRegularExpression entry("^(\\S+) +\\S+ +[^ .]+\\.(\\S+) ");
    const QString id = windowId(title);
    const QStringList lines = outputOf("wmctrl", {"-l", "-x"}).split('\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = entry.match(line);
        if (match.captured(1) == id)
            return match.captured(2);
    }
    return {};
}

QString desktop::activeWindow()
{
    return outputOf("xdotool", {"getactivewindow", "getwindowname"}).trimmed();
}

void desktop::placeWindow(const QString &title, const QRect &geometry)
{
    const QString place = QStringLiteral("0,%1,%2,%3,%4")
                              .arg(geometry.x())
                              .arg(geometry.y())
                              .arg(geometry.width())
                              .arg(geometry.height());
    outputOf("wmctrl", {"-i", "-r", windowId(title), "-e", place});
}

void desktop::closeWindow(const QString &title)
{
    outputOf("wmctrl", {"-i", "-c", windowId(title)});
}

void desktop::press(const QStringList &keys)
{
    outputOf("xdotool", QStringList{"key", "--delay", "60"} + keys);
}

void desktop::press(const QString &key, int times)
{
    press(QStringList(times, key));
}

desktop::HeldKey::HeldKey(const QString &key)
    : key(key)
{
    outputOf("xdotool", {"keydown", key});
}

desktop::HeldKey::~HeldKey()
{
    outputOf("xdotool", {"keyup", key});
}

void desktop::type(const QString &text)
{
    outputOf("xdotool", {"type", "--delay", "40", text});
}

void desktop::click(const QString &title, const QPoint &place)
{
    outputOf("xdotool",
             {"mousemove", "--window", windowId(title), QString::number(place.x()),
              QString::number(place.y()), "click", "1"});
    // The window manager holds a click back until it has given the window the focus; keys do
    // not wait for it and would overtake the click on a busy machine.
    QTest::qWait(clickPauseMs);
}

void desktop::pointAt(const QString &title, const QPoint &place)
{
    outputOf("xdotool",
             {"mousemove", "--window", windowId(title), QString::number(place.x()),
              QString::number(place.y())});
}

QImage desktop::grab(const QRect &area)
{
    const QPixmap pixels = QGuiApplication::primaryScreen()->grabWindow(
        0, area.x(), area.y(), area.width(), area.height());
    return pixels.toImage().convertToFormat(QImage::Format_RGB32);
}

QImage desktop::grabWindow(const QString &title, const QRect &area)
{
    const QString id = windowId(title);
    if (id.isEmpty())
        return {};
    const QPixmap pixels = QGuiApplication::primaryScreen()->grabWindow(
        id.toULongLong(nullptr, 16), area.x(), area.y(), area.width(), area.height());
    return pixels.toImage().convertToFormat(QImage::Format_RGB32);
}

bool desktop::shows(const QRect &area, const QColor &colour)
{
    return hasRun(grab(area), colour);
}

bool desktop::hasRun(const QImage &image, const QColor &colour)
{
    for (int y = 0; y < image.height(); ++y) {
        const QRgb *row = line(image, y);
        int run = 0;
        for (int x = 0; x < image.width(); ++x) {
            run = row[x] == colour.rgb() ? run + 1 : 0;
            if (run == 3)
                return true;
        }
    }
    return false;
}

bool desktop::isText(const QImage &image, const QString &text, const QColor &colour,
                     const Lettering &lettering)
{
    return looksTheSame(trimmed(image, lettering.ground.rgb()), drawnText(text, colour, lettering));
}

void desktop::unplugSecondMonitor()
{
    outputOf("xrandr", {"--output", "DUMMY1", "--off"});
}

void desktop::plugInSecondMonitor()
{
    outputOf("xrandr", {"--output", "DUMMY1", "--mode", "1920x1080", "--right-of", "DUMMY0"});
}
