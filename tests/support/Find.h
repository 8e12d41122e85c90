#pragma once

#include <QApplication>
#include <QString>
#include <QWidget>

/// The only descendant of @p root of the type whose text() is @p text, as a user would
/// find it; null when there is none or more than one.
template<typename Widget>
Widget *findByText(const QWidget &root, const QString &text)
{
    Widget *found = nullptr;
    const QList<Widget *> candidates = root.findChildren<Widget *>();
    for (Widget *candidate : candidates) {
        if (candidate->text() != text)
            continue;
        if (found)
            return nullptr;
        found = candidate;
    }
    return found;
}

/// The first visible window with the title; null when there is none.
inline QWidget *findWindow(const QString &title)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->isVisible() && window->windowTitle() == title)
            return window;
    }
    return nullptr;
}
