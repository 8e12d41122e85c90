#include "Program.h"

#include <QList>
#include <QRegularExpression>
#include <QTest>

#include "Desktop.h"

namespace {

constexpr QRect controlPlace(80, 40, 560, 900);
const QColor setButtonBorder(0x2a, 0x9c, 0x4a);
const QColor controlGround(0x1c, 0x1c, 0x1c);

// Where the figure and the message line of a full-screen Output window may be; the clock
// between them and the bar below stay outside.
constexpr QRect figureArea(1920, 150, 1920, 430);
constexpr QRect controlFigureArea(100, 62, 360, 78);
constexpr QRect messageArea(1920, 960, 1920, 80);

const desktop::Lettering controlFigure{
    "color:%1;font-size:48px;font-weight:bold;font-family:monospace;padding:4px 16px;",
    controlGround, controlPlace.width() - 24};
const desktop::Lettering message{"color:%1;font-size:36px;font-family:'Segoe UI', sans-serif;",
                                 Qt::black, 1920 - 60};

desktop::Lettering outputFigure(int pixelSize)
{
    return {"color:%1;font-size:" + QString::number(pixelSize)
                + "px;font-weight:bold;font-family:monospace;",
            Qt::black, 1920 - 60};
}

QString figureText(int seconds)
{
    return QStringLiteral("%1:%2")
        .arg(seconds / 60, 2, 10, QChar('0'))
        .arg(seconds % 60, 2, 10, QChar('0'));
}

template<typename Condition>
bool waitUntil(Condition condition)
{
    return QTest::qWaitFor(condition, patienceMs);
}

} // namespace

Program::~Program()
{
    kill();
}

void Program::kill()
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.kill();
    process.waitForFinished();
}

bool Program::start()
{
    standardError.clear();
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(qEnvironmentVariable("VELMORA_JOURNEY_PROGRAM", VELMORA_PROGRAM), QStringList());
    if (!waitUntil(
            [] { return desktop::hasWindow(controlTitle) && desktop::hasWindow(outputTitle); }))
        return false;
    desktop::placeWindow(controlTitle, controlPlace);
    return waitUntil(
               [] { return desktop::windowGeometry(controlTitle).size() == controlPlace.size(); })
        && waitUntil([this] { return findSetButton(); });
}

bool Program::close()
{
    desktop::closeWindow(controlTitle);
    return hasEnded();
}

bool Program::hasEnded()
{
    return waitUntil([this] { return !isRunning(); })
        && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool Program::isRunning() const
{
    return process.state() != QProcess::NotRunning;
}

QByteArray Program::complaints()
{
    standardError += process.readAllStandardError();
    return withoutToolkitsComplaints(standardError);
}

QByteArray withoutToolkitsComplaints(const QByteArray &standardError)
{
    // The one about a null pointer comes now and then from the oldest Qt, when the
    // connection of the update check is refused at once.
    static const QRegularExpression notOurs(
        "^(PulseAudioService:|\\[[EW]\\]\\[[0-9:.]+\\] pw\\.|qt\\.multimedia|ALSA lib|Failed to "
        "open VDPAU backend|libva "
        "|(qt\\.core\\.qobject\\.connect: )?QObject::connect\\(QObject, Unknown\\): invalid "
        "nullptr)");
    QByteArray rest;
    const QList<QByteArray> lines = standardError.split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty() && !notOurs.match(QString::fromUtf8(line)).hasMatch())
            rest += line + '\n';
    }
    return rest;
}

// "Set" is the only button with a border two pixels wide: two rows of its green, one right
// under the other. It is the anchor by which the other places in the scroll area are found.
bool Program::findSetButton()
{
    constexpr int leastRun = 40;
    const QImage image =
        desktop::grabWindow(controlTitle, QRect(QPoint(0, 0), controlPlace.size()));
    int rowAbove = -1;
    for (int y = 0; y < image.height(); ++y) {
        int run = 0;
        int rowStart = -1;
        for (int x = 0; x < image.width() && rowStart < 0; ++x) {
            run = image.pixel(x, y) == setButtonBorder.rgb() ? run + 1 : 0;
            if (run == leastRun)
                rowStart = x - leastRun + 1;
        }
        if (rowStart >= 0 && rowAbove >= 0) {
            setButton = QPoint(rowStart, y - 1);
            return true;
        }
        rowAbove = rowStart;
    }
    return false;
}

void Program::clickNearSetButton(const QPoint &offset)
{
    desktop::click(controlTitle, setButton + offset);
}

void Program::clickSettings()
{
    desktop::click(controlTitle, QPoint(controlPlace.width() - 45, 30));
}

void Program::clickPreview()
{
    desktop::click(controlTitle, QPoint(controlPlace.width() - 62, controlPlace.height() - 25));
}

void Program::clickToggleOutput()
{
    desktop::click(controlTitle, QPoint(200, controlPlace.height() - 25));
}

void Program::clickAddToPreset()
{
    clickNearSetButton(QPoint(110, 16));
}

void Program::clickPreset(int index)
{
    constexpr int chipWidth = 82;
    clickNearSetButton(QPoint(50 + index * chipWidth - setButton.x(), 81));
}

void Program::clickMessageEdit()
{
    clickNearSetButton(QPoint(100 - setButton.x(), 222));
}

void Program::clickPush()
{
    clickNearSetButton(QPoint(controlPlace.width() - 111 - setButton.x(), 222));
}

void Program::clickClear()
{
    clickNearSetButton(QPoint(controlPlace.width() - 46 - setButton.x(), 222));
}

void Program::enterTime(int minutes, int seconds)
{
    clickNearSetButton(QPoint(-214, 16));
    desktop::press("ctrl+a");
    desktop::type(QString::number(minutes));
    clickNearSetButton(QPoint(-75, 16));
    desktop::press("ctrl+a");
    desktop::type(QString::number(seconds));
}

void Program::setTime(int minutes, int seconds)
{
    enterTime(minutes, seconds);
    clickNearSetButton(QPoint(30, 16));
}

bool outputShows(const QString &figure, const QColor &colour, int pixelSize)
{
    return desktop::isText(desktop::grab(figureArea), figure, colour, outputFigure(pixelSize));
}

int outputSeconds(int most, const QColor &colour, int pixelSize)
{
    constexpr int longestSearch = 240;
    const QImage image = desktop::grab(figureArea);
    for (int seconds = most; seconds >= qMax(0, most - longestSearch); --seconds) {
        if (desktop::isText(image, figureText(seconds), colour, outputFigure(pixelSize)))
            return seconds;
    }
    return -1;
}

bool controlShows(const QString &figure, const QColor &colour)
{
    return desktop::isText(desktop::grabWindow(controlTitle, controlFigureArea), figure, colour,
                           controlFigure);
}

bool controlShows(const QColor &colour)
{
    return desktop::hasRun(desktop::grabWindow(controlTitle, controlFigureArea), colour);
}

bool outputShowsMessage(const QString &text)
{
    return desktop::isText(desktop::grab(messageArea), text, messageColour, message);
}

bool outputShowsNoMessage()
{
    return !desktop::shows(messageArea, messageColour);
}
