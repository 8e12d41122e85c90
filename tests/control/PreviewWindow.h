#pragma once

#include <QApplication>
#include <QLabel>
#include <QWidget>

/// The "Output Preview" window, whether shown or hidden; null before its first use.
inline QWidget *previewWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->windowTitle() == QStringLiteral("Output Preview"))
            return window;
    }
    return nullptr;
}

/// The label that shows the picture; null before the window's first use.
inline QLabel *previewLabel()
{
    const QWidget *window = previewWindow();
    return window ? window->findChild<QLabel *>() : nullptr;
}
