// The smallest Qt program that does what Velmora cannot do without. It counts
// down from five minutes as soon as it is shown.
//
//     velmora_floor WIDTH HEIGHT [--clock] [--preview] [--picture FILE]
//
// WIDTH and HEIGHT are the size of the operator's window.

#include <QApplication>

#include "FloorWindows.h"

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();

    const QSize controlSize(arguments.value(1).toInt(), arguments.value(2).toInt());
    if (controlSize.isEmpty())
        qFatal("usage: velmora_floor WIDTH HEIGHT [--clock] [--preview] [--picture FILE]");
    const qsizetype picture = arguments.indexOf(QStringLiteral("--picture"));

    FloorWindows windows(controlSize, picture < 0 ? QString() : arguments.value(picture + 1));
    if (arguments.contains(QStringLiteral("--clock")))
        windows.output.showClock();
    windows.show();
    windows.start();
    if (arguments.contains(QStringLiteral("--preview")))
        windows.showPreview();
    return QApplication::exec();
}
