#pragma once

#include <QStringList>

class QLayout;

/// What stands in a layout, item by item in its order, one text each: "header FORMAT",
/// "separator", "check Show seconds on output", "stepper", "stretch"; a row within it as
/// "[stepper, stepper, stretch]", a labelled row of a form as "Background: button #000000".
/// Headers and separators count as such only in the look that they have in the dialog.
QStringList outlineOf(const QLayout &layout);
