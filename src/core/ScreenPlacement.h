#pragma once

class QWidget;

/// Shows @p audienceWindow on the first listed screen that is not @p operatorWindow's:
/// full screen there, the task bar's strip included. With no such screen it is shown
/// as an ordinary window of 800 × 500 pixels, at the place that it has or that the window
/// manager gives it. Only if it was shown before and its middle lies outside of the operator's
/// available area, the screen without the task bar, it is moved to the corner of that.
void showOnOtherScreen(QWidget &audienceWindow, const QWidget &operatorWindow);
