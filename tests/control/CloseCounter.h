#pragma once

#include <QEvent>
#include <QObject>

/// Counts the close events that a widget receives; hiding it is none.
class CloseCounter : public QObject
{
public:
    explicit CloseCounter(QObject *watched) { watched->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Close)
            ++count;
        return QObject::eventFilter(watched, event);
    }
};
