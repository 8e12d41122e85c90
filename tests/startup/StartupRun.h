#pragma once

#include <functional>

#include <QStringList>

#include "OutputWindow.h"
#include "TestMain.h"

/// One run of the program's own entry routine inside the test's process.
struct StartupRun
{
    TestPlatform platform;
    QStringList arguments;
    /// Called while the application object is being built: before anything of the program.
    std::function<void()> beforeProgram;
    /// Called once from the event loop, as soon as it turns.
    std::function<void()> whileRunning;
    /// The run is ended from outside, with exitAtLimit, after this many milliseconds.
    int limit = 20000;
};

constexpr int exitAtLimit = 99;

/// Runs the entry routine to its end and returns what it returned. Only one run at a time.
int runProgram(const StartupRun &run);

/// The program's windows while it runs, and the updater of its start; null when there is none, or
/// more than one.
QWidget *controlWindow();
OutputWindow *outputWindow();
QObject *updater();

/// Runs the tests without an application object, which is the program's to make, and with
/// a settings store of their own.
int runStartupTest(int argc, char *argv[], const std::function<QObject *()> &makeTest);

#define VELMORA_STARTUP_TEST_MAIN(TestClass)                                                       \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        return runStartupTest(argc, argv, [] { return new TestClass; });                           \
    }
