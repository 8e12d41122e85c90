#pragma once

#include <QList>
#include <QString>

class QCheckBox;
class QFrame;
class QLabel;
class QListWidget;
class QPushButton;
class QSpinBox;
class QWidget;
struct Range;

// What the windows make their forms of. No widget has a parent: the layout that it is added to
// adopts it. Symbols and capitals of a text are for the eye; a screen reader says the `name`.

/// A horizontal line, in the look of @p styleSheet if one is given.
QFrame *makeLine(const QString &styleSheet = {});

/// The line between two sections of the Settings dialog, a shade lighter than other lines.
QFrame *makeSeparator();

/// A section's title in capitals, in the look of the Settings dialog. A screen reader takes it
/// for the label of @p input, the only or the first input of the section.
QLabel *makeSectionHeader(const QString &title, QWidget *input = nullptr);

/// The same in the look that the application's style sheet has for the Control window's headers,
/// which it knows by their object name.
QLabel *makeHookedHeader(const QString &title, QWidget *input = nullptr);

/// A whole-number input, for makeStepper(). A @p value outside the @p range is brought to its
/// bounds; @p suffix is shown behind the number.
QSpinBox *makeSpinBox(Range range, const QString &suffix, int value, const QString &name);

QCheckBox *makeCheckBox(const QString &text, bool checked);

QPushButton *makeButton(const QString &text, const QString &name);

/// A button that stays down, to show which of several is chosen.
QPushButton *makeCheckable(const QString &text, const QString &name, bool checked = false);

/// A button that the application's style sheet knows by its object name.
QPushButton *makeHooked(const QString &text, const QString &name, const QString &objectName);

/// A button of a fixed width, in pixels.
QPushButton *makeFixedWidth(const QString &text, const QString &name, int width);

/// The seconds that the items of @p presetList carry as Qt::UserRole, in row order.
QList<int> listedPresets(const QListWidget &presetList);
