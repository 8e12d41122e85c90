#include "PaintWatch.h"

#include <QEvent>

PaintWatch::PaintWatch(int &argc, char **argv)
    : QApplication(argc, argv)
{
}

PaintWatch &PaintWatch::instance()
{
    return *static_cast<PaintWatch *>(QCoreApplication::instance());
}

PaintWatch::Clock::time_point PaintWatch::painted() const
{
    return lastPaint;
}

bool PaintWatch::notify(QObject *receiver, QEvent *event)
{
    const bool isPaint = event->type() == QEvent::Paint; // the event may be gone afterwards
    const bool handled = QApplication::notify(receiver, event);
    if (isPaint && !waiting.isEmpty()) {
        for (qsizetype i = waiting.size(); i-- > 0;) {
            if (waiting.at(i) == receiver)
                waiting.removeAt(i);
        }
        if (waiting.isEmpty())
            lastPaint = Clock::now();
    }
    return handled;
}

bool PaintWatch::serveUntilPainted()
{
    const Clock::time_point end = Clock::now() + std::chrono::seconds(5);
    while (!waiting.isEmpty() && Clock::now() < end)
        processEvents();
    const bool allPainted = waiting.isEmpty();
    waiting.clear();
    return allPainted;
}
