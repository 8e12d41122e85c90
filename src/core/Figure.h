#pragma once

#include <QColor>
#include <QString>

struct AppSettings;

/// The text of a count: minutes and seconds, each at least two digits, with a leading
/// "-" for overtime. Minutes are never folded into hours: 6000 s reads "100:00".
QString figureText(int seconds);

/// The colour of a count-down at @p seconds: normal above the warning threshold,
/// critical at zero and in overtime, warning in between.
QColor thresholdColor(const AppSettings &settings, int seconds);
