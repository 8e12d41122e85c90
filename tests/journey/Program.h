#pragma once

#include <QByteArray>
#include <QColor>
#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QTest>

/// Longest wait for anything on the screen: long, for a machine that does other things too.
constexpr int patienceMs = 30'000;

/// Measured by the clock, unlike QTRY_VERIFY's, which leaves the condition's own time out.
#define AWAIT(condition) QVERIFY(QTest::qWaitFor([&] { return (condition); }, patienceMs))

inline const QString controlTitle = QStringLiteral("Velmora — Control");
inline const QString outputTitle = QStringLiteral("Velmora — Output");
inline const QString previewTitle = QStringLiteral("Output Preview");
inline const QString settingsTitle = QStringLiteral("Settings");

inline const QColor normalColour(0x00, 0xcc, 0x00);
inline const QColor warningColour(0xff, 0x88, 0x00);
inline const QColor criticalColour(0xff, 0x22, 0x00);
inline const QColor messageColour(0xff, 0xff, 0x00);

/// The built program, started as a person starts it and seen from outside: its windows, what
/// they show, its exit status and what it wrote to standard error. VELMORA_JOURNEY_PROGRAM of the
/// environment names another command to start it by.
class Program
{
public:
    Program() = default;
    ~Program();

    /// Starts it and waits for both windows; the Control window is then laid out so that
    /// everything in it is to be seen. False when it does not come up.
    bool start();
    /// Closes the Control window and waits; true when the process ends with status 0.
    bool close();
    /// Waits for the process to end by itself; true when it does so with status 0.
    bool hasEnded();
    bool isRunning() const;
    /// Ends it the hard way, after a failure.
    void kill();
    /// What the program itself wrote to standard error.
    QByteArray complaints();

    /// The places in the Control window that a person clicks.
    void clickSettings();
    void clickPreview();
    void clickToggleOutput();
    void clickAddToPreset();
    void clickPreset(int index);
    void clickMessageEdit();
    void clickPush();
    void clickClear();
    /// Types into the Set Time row and presses "Set".
    void setTime(int minutes, int seconds);
    /// Types into the Set Time row.
    void enterTime(int minutes, int seconds);

private:
    bool findSetButton();
    void clickNearSetButton(const QPoint &offset);

    QProcess process;
    QByteArray standardError;
    QPoint setButton;
};

/// What is left of a program's standard error without Qt's complaints about a missing
/// sound server and a refused connection.
QByteArray withoutToolkitsComplaints(const QByteArray &standardError);

/// Whether the full-screen Output window shows exactly this figure; a blinking one is seen
/// every other half second. @p pixelSize is the figure's at a height of 1080 pixels.
bool outputShows(const QString &figure, const QColor &colour, int pixelSize = 300);
/// The seconds that the full-screen Output window shows, from @p most down to four minutes
/// less; -1 when it shows nothing of that kind.
int outputSeconds(int most, const QColor &colour, int pixelSize);
/// Whether the Control window shows exactly this figure.
bool controlShows(const QString &figure, const QColor &colour);
/// Whether anything of the Control window's figure has the colour.
bool controlShows(const QColor &colour);
/// Whether the Output window shows exactly this message.
bool outputShowsMessage(const QString &text);
/// Whether the Output window's message line is empty.
bool outputShowsNoMessage();
