#pragma once

#include <QList>
#include <QString>

class QFrame;
class QLabel;
class QListWidget;
class QSpinBox;
class QWidget;

/// A horizontal line between two sections, dressed in @p styleSheet if one is given.
/// Without parent: the layout that it is added to adopts it.
QFrame *makeLine(const QString &styleSheet = {});

/// A section's title in capitals, without parent. The caller gives it its look. A screen
/// reader takes it for the label of @p input, the one or the first input of the section.
QLabel *makeTitle(const QString &title, QWidget *input = nullptr);

/// A whole-number input without parent, for makeStepper(). A @p value outside the range is
/// brought to its bounds; @p suffix is shown behind the number. A screen reader says
/// @p name, nobody sees it.
QSpinBox *makeSpinBox(int minimum, int maximum, const QString &suffix, int value,
                      const QString &name);

/// The seconds that the items of @p presetList carry as Qt::UserRole, in row order.
QList<int> listedPresets(const QListWidget &presetList);
