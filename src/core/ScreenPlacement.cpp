#include "ScreenPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace {

constexpr QSize ordinarySize(800, 500);

QScreen *firstOtherScreen(const QScreen *operatorScreen)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (QScreen *screen : screens) {
        if (screen != operatorScreen)
            return screen;
    }
    return nullptr;
}

} // namespace

void showOnOtherScreen(QWidget &audienceWindow, const QWidget &operatorWindow)
{
    if (QScreen *target = firstOtherScreen(operatorWindow.screen())) {
        // A window that has been shown elsewhere before would go full screen there again.
        audienceWindow.setScreen(target);
        audienceWindow.setGeometry(target->geometry());
        audienceWindow.showFullScreen();
        return;
    }
    // It may have been full screen on a second screen that is gone since; without this
    // it would come back full screen, on top of the operator's window.
    audienceWindow.setWindowState(Qt::WindowNoState);
    audienceWindow.resize(ordinarySize);
    // Nor may it come back where that screen was. Before it is shown for the first time, it has no
    // place, and the window manager gives it one.
    const QScreen *screen = operatorWindow.screen();
    if (screen && audienceWindow.testAttribute(Qt::WA_WState_Created)) {
        const QRect available = screen->availableGeometry();
        if (!available.contains(audienceWindow.geometry().center()))
            audienceWindow.move(available.topLeft());
    }
    audienceWindow.show();
}
