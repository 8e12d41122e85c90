#include "AppSettings.h"

#include <algorithm>
#include <new>

#include <QFile>
#include <QSettings>

namespace {

// The store's scope is this pair of names, whatever names the application object bears.
constexpr char storeOrganization[] = "Velmora";
constexpr char storeApplication[] = "Velmora";

// Far more presets than anyone keeps: a damaged size must not hold the start up.
constexpr int mostPresets = 10000;

// From 6.11 on, Qt throws where a stored value names more entries than memory can hold.
bool isReadable(const QSettings &store)
{
    try {
        static_cast<void>(store.childKeys()); // has the whole file parsed
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

// Qt reads the file before it writes, and would not get to that.
void emptyUnreadableStore()
{
    const QSettings store(QLatin1String{storeOrganization}, QLatin1String{storeApplication});
    if (!isReadable(store))
        QFile::resize(store.fileName(), 0);
}

// Without a store, the fallback.
QVariant readValue(const QSettings *store, const char *key, const QVariant &fallback)
{
    return store ? store->value(QLatin1String(key), fallback) : fallback;
}

bool readBool(const QSettings *store, const char *key, bool fallback)
{
    return readValue(store, key, fallback).toBool();
}

QString readText(const QSettings *store, const char *key, const char *fallback = "")
{
    return readValue(store, key, QLatin1String(fallback)).toString();
}

// Not validated: a text that names no colour yields an invalid one.
QColor readColor(const QSettings *store, const char *key, const char *fallback)
{
    return QColor::fromString(readText(store, key, fallback));
}

int readInt(const QSettings *store, const char *key, int fallback, int minimum, int maximum)
{
    return std::clamp(readValue(store, key, fallback).toInt(), minimum, maximum);
}

} // namespace

void loadSettings(AppSettings &settings)
{
    QSettings stored(QLatin1String{storeOrganization}, QLatin1String{storeApplication});
    // A file that cannot be read counts as one with nothing in it, and stays as it is.
    QSettings *const store = isReadable(stored) ? &stored : nullptr;

    settings.clock24hr = readBool(store, "clock24hr", true);
    settings.clockShowSeconds = readBool(store, "clockShowSeconds", true);

    settings.bgColor = readColor(store, "bgColor", "#000000");
    settings.timerColorNormal = readColor(store, "timerColorNormal", "#00cc00");
    settings.timerColorWarning = readColor(store, "timerColorWarning", "#ff8800");
    settings.timerColorCritical = readColor(store, "timerColorCritical", "#ff2200");
    settings.clockColor = readColor(store, "clockColor", "#ffffff");
    settings.messageColor = readColor(store, "messageColor", "#ffff00");

    // A first run shows a figure of 300; the record's own 150 is seen only before the load.
    settings.timerFontSize = readInt(store, "timerFontSize", 300, 30, 550);
    settings.clockFontSize = readInt(store, "clockFontSize", 80, 20, 300);
    settings.messageFontSize = readInt(store, "messageFontSize", 36, 12, 150);

    settings.defaultDuration = readInt(store, "defaultDuration", 300, 0, 59940);
    settings.warningThreshold = readInt(store, "warningThreshold", 60, 1, 3600);
    settings.overtimeEnabled = readBool(store, "overtimeEnabled", true);
    settings.blinkEnabled = readBool(store, "blinkEnabled", true);

    settings.bgImagePath = readText(store, "bgImagePath");
    settings.bgImageEnabled = readBool(store, "bgImageEnabled", false);
    settings.soundFilePath = readText(store, "soundFilePath");
    settings.soundEnabled = readBool(store, "soundEnabled", false);

    settings.shortcutStartPause = readText(store, "shortcutStartPause", "Space");
    settings.shortcutReset = readText(store, "shortcutReset", "R");
    settings.shortcutPlusMin = readText(store, "shortcutPlusMin", "Up");
    settings.shortcutMinusMin = readText(store, "shortcutMinusMin", "Down");
    settings.shortcutToggleOutput = readText(store, "shortcutToggleOutput", "O");

    // An empty list never survives a restart: the presets from before the load stay.
    const int presetCount =
        store ? std::min(store->beginReadArray(QStringLiteral("presets")), mostPresets) : 0;
    if (presetCount < 1)
        return;
    settings.presets.clear();
    for (int i = 0; i < presetCount; ++i) {
        store->setArrayIndex(i);
        settings.presets.append(store->value(QStringLiteral("val")).toInt());
    }
    store->endArray();
}

void saveSettings(const AppSettings &settings)
{
    emptyUnreadableStore();
    QSettings store(QLatin1String{storeOrganization}, QLatin1String{storeApplication});
    const auto write = [&store](const char *key, const QVariant &value) {
        store.setValue(QLatin1String(key), value);
    };

    write("clock24hr", settings.clock24hr);
    write("clockShowSeconds", settings.clockShowSeconds);

    write("bgColor", settings.bgColor.name());
    write("timerColorNormal", settings.timerColorNormal.name());
    write("timerColorWarning", settings.timerColorWarning.name());
    write("timerColorCritical", settings.timerColorCritical.name());
    write("clockColor", settings.clockColor.name());
    write("messageColor", settings.messageColor.name());

    write("timerFontSize", settings.timerFontSize);
    write("clockFontSize", settings.clockFontSize);
    write("messageFontSize", settings.messageFontSize);
    write("defaultDuration", settings.defaultDuration);
    write("warningThreshold", settings.warningThreshold);
    write("overtimeEnabled", settings.overtimeEnabled);
    write("blinkEnabled", settings.blinkEnabled);
    write("bgImagePath", settings.bgImagePath);
    write("bgImageEnabled", settings.bgImageEnabled);
    write("soundFilePath", settings.soundFilePath);
    write("soundEnabled", settings.soundEnabled);
    write("shortcutStartPause", settings.shortcutStartPause);
    write("shortcutReset", settings.shortcutReset);
    write("shortcutPlusMin", settings.shortcutPlusMin);
    write("shortcutMinusMin", settings.shortcutMinusMin);
    write("shortcutToggleOutput", settings.shortcutToggleOutput);

    // Elements of an earlier, longer list stay behind in the store; the size alone counts.
    store.beginWriteArray(QStringLiteral("presets"));
    for (qsizetype i = 0; i < settings.presets.size(); ++i) {
        store.setArrayIndex(int(i));
        store.setValue(QStringLiteral("val"), settings.presets.at(i));
    }
    store.endArray();
}
