#pragma once

#include <QString>

class QPushButton;

/// The Control window's buttons, without parent. Symbols and capitals of @p text are for the
/// eye; a screen reader says @p name.
QPushButton *makeButton(const QString &text, const QString &name);

/// A button that stays down, to show which of several is chosen.
QPushButton *makeCheckable(const QString &text, const QString &name, bool checked = false);

/// A button that the application's style sheet knows by its object name.
QPushButton *makeHooked(const QString &text, const QString &name, const QString &objectName);

/// A button of a fixed width, in pixels.
QPushButton *makeFixedWidth(const QString &text, const QString &name, int width);
