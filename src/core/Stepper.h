#pragma once

class QSpinBox;
class QWidget;

/// Wraps @p spinBox between a "◀" and a "▶" button that step it down and up, so that
/// the three read as one control, 32 pixels high.
///
/// The caller makes the spin box, without parent, and sets its range, suffix and value
/// before or after the call. Returns a new container without parent, which owns all
/// three; the caller adds the container, never the spin box alone, to a layout.
///
/// For a screen reader the buttons are named after the spin box, as in "Decrease minutes",
/// so its accessible name is set before the call. Without one they say the action alone.
QWidget *makeStepper(QSpinBox *spinBox);
