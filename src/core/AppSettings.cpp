#include "AppSettings.h"

#include <algorithm>
#include <new>

#include <QFile>
#include <QSettings>

namespace {

// The store's scope is this pair of names, whatever names the application object bears.
constexpr char storeOrganization[] = "Velmora";
constexpr char storeApplication[] = "Velmora";

// The presets are an array of this key, whose elements are of the other.
constexpr char presetsKey[] = "presets";
constexpr char presetKey[] = "val";

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

// What a key that is absent yields.
AppSettings fallbackSettings()
{
    AppSettings fallbacks;
    fallbacks.timerFontSize = firstRunTimerFontSize;
    return fallbacks;
}

template<typename Value>
QVariant storedForm(const Value &value)
{
    return value;
}

QVariant storedForm(const QColor &color)
{
    return color.name();
}

void read(bool &flag, const QVariant &stored, Range /*range*/)
{
    flag = stored.toBool();
}

void read(int &number, const QVariant &stored, Range range)
{
    number = std::clamp(stored.toInt(), range.minimum, range.maximum);
}

// Not validated: a text that names no colour yields an invalid one.
void read(QColor &color, const QVariant &stored, Range /*range*/)
{
    color = QColor::fromString(stored.toString());
}

void read(QString &text, const QVariant &stored, Range /*range*/)
{
    text = stored.toString();
}

} // namespace

void loadSettings(AppSettings &settings)
{
    QSettings stored(QLatin1String{storeOrganization}, QLatin1String{storeApplication});
    // A file that cannot be read counts as one with nothing in it, and stays as it is.
    QSettings *const store = isReadable(stored) ? &stored : nullptr;

    const AppSettings fallbacks = fallbackSettings();
    for (const StoredSetting &setting : storedSettings) {
        const auto readField = [&](auto field) {
            const QVariant fallback = storedForm(fallbacks.*field);
            read(settings.*field,
                 store ? store->value(QLatin1String(setting.key), fallback) : fallback,
                 setting.range);
        };
        std::visit(readField, setting.field);
    }

    // An empty list never survives a restart: the presets from before the load stay.
    const int presetCount =
        store ? std::min(store->beginReadArray(QLatin1String(presetsKey)), mostPresets) : 0;
    if (presetCount < 1)
        return;
    settings.presets.clear();
    for (int i = 0; i < presetCount; ++i) {
        store->setArrayIndex(i);
        settings.presets.append(store->value(QLatin1String(presetKey)).toInt());
    }
    store->endArray();
}

void saveSettings(const AppSettings &settings)
{
    emptyUnreadableStore();
    QSettings store(QLatin1String{storeOrganization}, QLatin1String{storeApplication});
    for (const StoredSetting &setting : storedSettings) {
        const auto writeField = [&](auto field) {
            store.setValue(QLatin1String(setting.key), storedForm(settings.*field));
        };
        std::visit(writeField, setting.field);
    }

    // Elements of an earlier, longer list stay behind in the store; the size alone counts.
    store.beginWriteArray(QLatin1String(presetsKey));
    for (qsizetype i = 0; i < settings.presets.size(); ++i) {
        store.setArrayIndex(int(i));
        store.setValue(QLatin1String(presetKey), settings.presets.at(i));
    }
    store.endArray();
}
