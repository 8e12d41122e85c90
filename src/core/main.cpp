#include <QApplication>
#include <QTimer>

#include "AppSettings.h"
#include "ControlWindow.h"
#include "OutputWindow.h"
#include "ScreenPlacement.h"
#include "TimerEngine.h"
#include "Updater.h"

namespace {

constexpr int updateCheckDelayMs = 3000;

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    // The settings store has a scope of its own and does not follow these names.
    QApplication::setApplicationName(QStringLiteral("Velmora"));
    QApplication::setOrganizationName(QStringLiteral("Orlavane"));

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
