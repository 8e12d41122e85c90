// Settings: the bytes are the whole store file.
//
// - Loading them ends, and every number lies within its bounds.
// - The record saved and loaded again, by a settings object that has seen neither file, is the
//   same but for what a save is known to drop: a colour's alpha and its digits beyond eight
//   bits a component, and an invalid colour, which is saved as black. A text with half a
//   surrogate pair comes back without it; the file cannot hold it.
// - Saving that to an empty store and loading it changes nothing at all.

#include "AppSettings.h"
#include "Fuzzing.h"
#include "RecordFields.h"
#include "Store.h"

namespace {

// More than that a load cuts; see mostPresets beside loadSettings().
constexpr int mostPresets = 10000;

void requireBounds(const AppSettings &settings)
{
    const auto within = [](int value, int minimum, int maximum) {
        return value >= minimum && value <= maximum;
    };
    require(within(settings.timerFontSize, 30, 550), "timerFontSize");
    require(within(settings.clockFontSize, 20, 300), "clockFontSize");
    require(within(settings.messageFontSize, 12, 150), "messageFontSize");
    require(within(settings.defaultDuration, 0, 59940), "defaultDuration");
    require(within(settings.warningThreshold, 1, 3600), "warningThreshold");
    require(within(int(settings.presets.size()), 1, mostPresets), "presets");
}

QColor kept(const QColor &color)
{
    return color.isValid() ? QColor(color.red(), color.green(), color.blue()) : QColor(0, 0, 0);
}

// The record as it is expected back, of which @p found has come.
AppSettings kept(AppSettings settings, const AppSettings &found)
{
    for (QColor AppSettings::*color :
         {&AppSettings::bgColor, &AppSettings::timerColorNormal, &AppSettings::timerColorWarning,
          &AppSettings::timerColorCritical, &AppSettings::clockColor, &AppSettings::messageColor})
        settings.*color = kept(settings.*color);
    for (QString AppSettings::*text :
         {&AppSettings::bgImagePath, &AppSettings::soundFilePath, &AppSettings::shortcutStartPause,
          &AppSettings::shortcutReset, &AppSettings::shortcutPlusMin,
          &AppSettings::shortcutMinusMin, &AppSettings::shortcutToggleOutput}) {
        if (!(settings.*text).isValidUtf16())
            settings.*text = found.*text;
    }
    return settings;
}

// What a program that is started afterwards finds.
AppSettings savedAndLoaded(const AppSettings &settings)
{
    saveSettings(settings);
    const QByteArray bytes = storeBytes();
    require(!bytes.isEmpty(), "Nothing was saved");
    writeStoreBytes(bytes);
    AppSettings loaded;
    loadSettings(loaded);
    return loaded;
}

void requireEqual(const AppSettings &left, const AppSettings &right, const char *what)
{
    const QStringList names = differingFields(fieldsOf(left), fieldsOf(right));
    require(names.isEmpty(), what, names.join(QLatin1Char(' ')));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    writeStoreBytes(Input(data, size).rest());
    AppSettings first;
    loadSettings(first);
    requireBounds(first);

    const AppSettings second = savedAndLoaded(first);
    requireBounds(second);
    requireEqual(kept(first, second), second, "Saved and loaded, these fields differ:");
    removeStore(); // in which a field that is not saved would be found as it was
    requireEqual(second, savedAndLoaded(second), "Saved and loaded twice, these fields differ:");
    return 0;
}
