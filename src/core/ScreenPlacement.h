#pragma once

class QWidget;

/// Shows @p audienceWindow on the first listed screen that is not @p operatorWindow's:
/// full screen there, the task bar's strip included. With no such screen it is shown
/// as an ordinary window of 800 × 500 pixels, and moved
/// into the operator's screen if its place lies outside of it.
void showOnOtherScreen(QWidget &audienceWindow, const QWidget &operatorWindow);
