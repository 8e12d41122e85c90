#pragma once

#include <functional>

#include <QStringList>

#include "OutputWindow.h"
#include "TestMain.h"

class QLabel;
class QPushButton;

/// One run of the program's own entry routine inside the test's process.
struct StartupRun
{
    TestPlatform platform{};
    QStringList arguments{};
    /// Called while the application object is being built: before anything of the program.
    std::function<void()> beforeProgram{};
};

/// The result of a run that had to be ended from outside, as it took longer than it ever should.
constexpr int exitAtLimit = 99;

/// Runs the entry routine to its end and returns what it returned. Calls @p whileRunning once from
/// the event loop, as soon as it turns. Only one run at a time.
int runProgram(const std::function<void()> &whileRunning, const StartupRun &run = {});
/// The same, and ends the run with success after @p whileRunning.
void visitProgram(const std::function<void()> &whileRunning, const StartupRun &run = {});

/// The program's windows while it runs, and the updater of its start; null when there is none, or
/// more than one.
QWidget *controlWindow();
OutputWindow *outputWindow();
QObject *updater();

/// The Control window's button with the text, and its figure.
QPushButton *button(const QString &text);
QLabel *controlFigure();

/// Runs the tests without an application object, which is the program's to make, and with
/// a settings store of their own.
int runStartupTest(int argc, char *argv[], const std::function<QObject *()> &makeTest);

#define VELMORA_STARTUP_TEST_MAIN(TestClass)                                                       \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        return runStartupTest(argc, argv, [] { return new TestClass; });                           \
    }
