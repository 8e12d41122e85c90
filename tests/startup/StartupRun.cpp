#include "StartupRun.h"

#include <memory>
#include <vector>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>

#include "Find.h"
#include "Store.h"

// The program's entry routine, compiled under this name for the tests.
int velmoraMain(int argc, char *argv[]);

namespace {

constexpr int limitMs = 20000;

const StartupRun *presentRun = nullptr;
std::function<void()> onceRunning;
QString folder; // goes with the test's store

void hookIntoProgram()
{
    if (!presentRun)
        return;
    if (presentRun->beforeProgram)
        presentRun->beforeProgram();
    QTimer::singleShot(0, qApp, [] {
        QCOMPARE(QThread::currentThread()->loopLevel(), 1);
        onceRunning();
    });
    QTimer::singleShot(limitMs, qApp, [] { QCoreApplication::exit(exitAtLimit); });
}

template<typename Window>
Window *onlyWindow(const QString &title)
{
    Window *found = nullptr;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *candidate : windows) {
        if (candidate->windowTitle() != title)
            continue;
        if (found)
            return nullptr;
        found = qobject_cast<Window *>(candidate);
    }
    return found;
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(hookIntoProgram)

int runProgram(const std::function<void()> &whileRunning, const StartupRun &run)
{
    usePlatform(run.platform, folder + "/screens.json");

    QList<QByteArray> texts{"velmora"};
    for (const QString &argument : run.arguments)
        texts.append(argument.toUtf8());
    std::vector<char *> arguments;
    for (QByteArray &text : texts)
        arguments.push_back(text.data());
    const int count = int(arguments.size());
    arguments.push_back(nullptr);

    presentRun = &run;
    onceRunning = whileRunning;
    const int result = velmoraMain(count, arguments.data());
    presentRun = nullptr;
    return result;
}

void visitProgram(const std::function<void()> &whileRunning, const StartupRun &run)
{
    const auto visit = [&whileRunning] {
        whileRunning();
        QCoreApplication::exit(0);
    };
    QCOMPARE(runProgram(visit, run), 0);
}

QWidget *controlWindow()
{
    return onlyWindow<QWidget>(QStringLiteral("Velmora \u2014 Control"));
}

OutputWindow *outputWindow()
{
    return onlyWindow<OutputWindow>(QStringLiteral("Velmora \u2014 Output"));
}

QObject *updater()
{
    QObject *found = nullptr;
    const QObjectList children = qApp->children();
    for (QObject *child : children) {
        if (QLatin1String(child->metaObject()->className()) != QLatin1String("Updater"))
            continue;
        if (found)
            return nullptr;
        found = child;
    }
    return found;
}

QPushButton *button(const QString &text)
{
    return findByText<QPushButton>(*controlWindow(), text);
}

QLabel *controlFigure()
{
    return controlWindow()->findChild<QLabel *>("timerPreview");
}

int runStartupTest(int argc, char *argv[], const std::function<QObject *()> &makeTest)
{
    const PrivateStore store;
    folder = store.folder();
    const std::unique_ptr<QObject> test(makeTest());
    return QTest::qExec(test.get(), argc, argv);
}
