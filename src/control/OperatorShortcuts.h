#pragma once

#include <functional>

#include <QString>

#include "KeyRepetition.h"

struct AppSettings;
class QShortcut;
class QWidget;
class TimerEngine;

/// The operator's five keys, which work in every window of the application.
///
/// A key that is held acts once, except for the two that move the count by a minute.
class OperatorShortcuts
{
public:
    /// Makes no shortcut yet. @p window becomes the parent of the shortcuts. Nothing is owned; all
    /// must outlive this object. @p toggleOutput is called to show or hide the Output window.
    OperatorShortcuts(const AppSettings *settings, TimerEngine *engine,
                      std::function<void()> toggleOutput, QWidget *window);

    /// Replaces the shortcuts by those of the record. A text that names no key yields one that
    /// never fires; two of the same key fire neither.
    void setupShortcuts();

private:
    using Action = std::function<void()>;
    void renew(QShortcut *&shortcut, const QString &keys, const Action &action);
    void renewOnce(QShortcut *&shortcut, const QString &keys, const Action &action);
    void toggleStartPause();

    const AppSettings *settings;
    TimerEngine *engine;
    Action toggleOutput;
    QWidget *window;
    QShortcut *shortcutStartPauseSc = nullptr;
    QShortcut *shortcutResetSc = nullptr;
    QShortcut *shortcutPlusMinSc = nullptr;
    QShortcut *shortcutMinusMinSc = nullptr;
    QShortcut *shortcutToggleOutputSc = nullptr;
    KeyRepetition keyRepetition;
};
