#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QThread>
#include <QTimer>

#include "AppSettings.h"
#include "ControlWindow.h"
#include "OutputWindow.h"
#include "ScreenPlacement.h"
#include "TimerEngine.h"
#include "Updater.h"

namespace {

constexpr int updateCheckDelayMs = 3000;

// Lets Qt's Wayland connection come to rest before the application object ends it.
//
// Two threads of Qt read that connection, and neither can read before the other is ready to. Qt
// makes the first ready from the event loop. If the connection ends before that thread has had its
// turn, the thread gives up without saying so, and the second one waits for it for ever: the
// windows are gone, the process stays. (Seen with Qt 6.4 and 6.8; 6.11 has the same code.)
//
// So what the windows' end asks of the compositor is sent, and the threads get their turn. Nothing
// makes the first one ready again after that. Several short rests instead of a long one: on a
// busy machine each ends late, so that there is time when it is needed.
class WaylandRest
{
public:
    WaylandRest() = default;
    Q_DISABLE_COPY_MOVE(WaylandRest)

    ~WaylandRest()
    {
        if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
            return;
        // Not processEvents(): an update offer that came now would hold the program.
        emit QAbstractEventDispatcher::instance()->awake();
        for (int i = 0; i < rests; ++i)
            QThread::msleep(restMs);
    }

private:
    static constexpr int rests = 5;
    static constexpr unsigned long restMs = 10;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    // The settings store has a scope of its own and does not follow these names.
    QApplication::setApplicationName(QStringLiteral("Velmora"));
    QApplication::setOrganizationName(QStringLiteral("Orlavane"));

    const WaylandRest restAfterTheWindows;
    AppSettings settings;
    loadSettings(settings);

    TimerEngine engine;
    engine.setDuration(settings.defaultDuration);
    engine.setOvertimeEnabled(settings.overtimeEnabled);

    OutputWindow output(&settings);
    ControlWindow control(&settings, &engine, &output);
    control.show();

    QObject::connect(&engine, &TimerEngine::tick, &output, &OutputWindow::onTimerTick);
    output.setTotalSeconds(settings.defaultDuration);
    output.onTimerTick(engine.remaining());
    showOnOtherScreen(output, control);

    auto *updater = new Updater(&application);
    QTimer::singleShot(updateCheckDelayMs, Qt::CoarseTimer, updater,
                       [updater] { updater->check(true); });

    return QApplication::exec();
}
