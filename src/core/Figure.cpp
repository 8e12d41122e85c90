#include "Figure.h"

#include "AppSettings.h"

QString figureText(int seconds)
{
    // 64 bits, because the smallest 32-bit value has no positive counterpart.
    const qint64 magnitude = qAbs(qint64{seconds});
    const QString text = QStringLiteral("%1:%2")
                             .arg(magnitude / 60, 2, 10, QLatin1Char('0'))
                             .arg(magnitude % 60, 2, 10, QLatin1Char('0'));
    return seconds < 0 ? QLatin1Char('-') + text : text;
}

QColor thresholdColor(const AppSettings &settings, int seconds)
{
    if (seconds > settings.warningThreshold)
        return settings.timerColorNormal;
    if (seconds < 1)
        return settings.timerColorCritical;
    return settings.timerColorWarning;
}
