#pragma once

#include <chrono>

#include <QApplication>
#include <QList>
#include <QWidget>

/// An application that notes when widgets have been painted.
class PaintWatch : public QApplication
{
public:
    using Clock = std::chrono::steady_clock;

    PaintWatch(int &argc, char **argv);

    /// The running application.
    static PaintWatch &instance();

    /// Does @p action and serves events until each of @p widgets has been painted since; true
    /// then, false if one has not been within five seconds.
    template<typename Action>
    bool paints(const QList<const QWidget *> &widgets, Action action)
    {
        waiting = widgets;
        action();
        return serveUntilPainted();
    }

    /// When the last of the widgets that were waited for had been painted.
    Clock::time_point painted() const;

    bool notify(QObject *receiver, QEvent *event) override;

private:
    bool serveUntilPainted();

    QList<const QWidget *> waiting;
    Clock::time_point lastPaint;
};
