#include "StartupRun.h"

#include <memory>
#include <vector>

#include <QApplication>
#include <QTest>
#include <QThread>
#include <QTimer>

#include "Store.h"

// The program's entry routine, compiled under this name for the tests.
int velmoraMain(int argc, char *argv[]);

namespace {

const StartupRun *presentRun = nullptr;
QString folder; // goes with the test's store

void hookIntoProgram()
{
    if (!presentRun)
        return;
    if (presentRun->beforeProgram)
        presentRun->beforeProgram();
    QTimer::singleShot(0, qApp, [] {
        QCOMPARE(QThread::currentThread()->loopLevel(), 1);
        if (presentRun->whileRunning)
            presentRun->whileRunning();
    });
    QTimer::singleShot(presentRun->limit, qApp, [] { QCoreApplication::exit(exitAtLimit); });
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

int runProgram(const StartupRun &run)
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
    const int result = velmoraMain(count, arguments.data());
    presentRun = nullptr;
    return result;
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

int runStartupTest(int argc, char *argv[], const std::function<QObject *()> &makeTest)
{
    const PrivateStore store;
    folder = store.folder();
    const std::unique_ptr<QObject> test(makeTest());
    return QTest::qExec(test.get(), argc, argv);
}
