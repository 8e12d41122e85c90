#include "Record.h"

#include "AppSettings.h"

namespace {

QString textOf(const QColor &color)
{
    return color.isValid() ? color.name(QColor::HexArgb) : QStringLiteral("invalid");
}

QString textOf(const QString &text)
{
    return text;
}

QString textOf(int number)
{
    return QString::number(number);
}

QString textOf(bool flag)
{
    return flag ? QStringLiteral("true") : QStringLiteral("false");
}

QString textOf(const QList<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts << QString::number(number);
    return texts.join(QLatin1Char(','));
}

} // namespace

QStringList fieldsOf(const AppSettings &settings)
{
    QStringList fields;
    const auto add = [&fields](const char *name, const auto &value) {
        fields << QLatin1String(name) + QString(QLatin1Char('=')) + textOf(value);
    };
    add("clock24hr", settings.clock24hr);
    add("clockShowSeconds", settings.clockShowSeconds);
    add("bgColor", settings.bgColor);
    add("timerColorNormal", settings.timerColorNormal);
    add("timerColorWarning", settings.timerColorWarning);
    add("timerColorCritical", settings.timerColorCritical);
    add("clockColor", settings.clockColor);
    add("messageColor", settings.messageColor);
    add("timerFontSize", settings.timerFontSize);
    add("clockFontSize", settings.clockFontSize);
    add("messageFontSize", settings.messageFontSize);
    add("defaultDuration", settings.defaultDuration);
    add("warningThreshold", settings.warningThreshold);
    add("overtimeEnabled", settings.overtimeEnabled);
    add("blinkEnabled", settings.blinkEnabled);
    add("presets", settings.presets);
    add("bgImagePath", settings.bgImagePath);
    add("bgImageEnabled", settings.bgImageEnabled);
    add("soundFilePath", settings.soundFilePath);
    add("soundEnabled", settings.soundEnabled);
    add("shortcutStartPause", settings.shortcutStartPause);
    add("shortcutReset", settings.shortcutReset);
    add("shortcutPlusMin", settings.shortcutPlusMin);
    add("shortcutMinusMin", settings.shortcutMinusMin);
    add("shortcutToggleOutput", settings.shortcutToggleOutput);
    return fields;
}

QStringList storedFields()
{
    AppSettings stored;
    loadSettings(stored);
    return fieldsOf(stored);
}

AppSettings unusualRecord()
{
    AppSettings settings;
    settings.clock24hr = false;
    settings.clockShowSeconds = false;
    settings.bgColor = QColor(1, 2, 3);
    settings.timerColorNormal = QColor(4, 5, 6);
    settings.timerColorWarning = QColor(7, 8, 9);
    settings.timerColorCritical = QColor(10, 11, 12);
    settings.clockColor = QColor(13, 14, 15);
    settings.messageColor = QColor(16, 17, 18);
    settings.timerFontSize = 31;
    settings.clockFontSize = 21;
    settings.messageFontSize = 13;
    settings.defaultDuration = 754;
    settings.warningThreshold = 17;
    settings.overtimeEnabled = false;
    settings.blinkEnabled = false;
    settings.presets = {45, 90, 45};
    settings.bgImagePath = QStringLiteral("/pictures/Stage left.png");
    settings.bgImageEnabled = true;
    settings.soundFilePath = QStringLiteral("/sounds/gong.wav");
    settings.soundEnabled = true;
    settings.shortcutStartPause = QStringLiteral("F1");
    settings.shortcutReset = QStringLiteral("Ctrl+R");
    settings.shortcutPlusMin = QStringLiteral("Num+5");
    settings.shortcutMinusMin = QStringLiteral("Ctrl+K, Ctrl+C");
    settings.shortcutToggleOutput = QString();
    return settings;
}
