#pragma once

#include <QString>

class QFrame;
class QLabel;
class QSpinBox;

/// A horizontal line between two sections, dressed in @p styleSheet if one is given.
/// Without parent: the layout that it is added to adopts it.
QFrame *makeLine(const QString &styleSheet = {});

/// A section's title in capitals, without parent. The caller gives it its look.
QLabel *makeTitle(const QString &title);

/// A whole-number input without parent, for makeStepper(). A @p value outside the range is
/// brought to its bounds; @p suffix is shown behind the number.
QSpinBox *makeSpinBox(int minimum, int maximum, const QString &suffix, int value);
