// Keys: a byte chooses UTF-8 or UTF-16 and whether the dialog is shown, then come five texts,
// separated by line feeds, as they may stand in the settings for the five actions.
//
// - The Control window gives each action the keys that the text names, and no others.
// - The settings dialog, opened and closed with OK, writes those keys in their portable form,
//   into the record and into the store.
// - The Control window then has the keys of these texts.

#include <array>

#include <QApplication>
#include <QDialogButtonBox>
#include <QKeySequence>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>

#include "AppSettings.h"
#include "ControlWindow.h"
#include "Fuzzing.h"
#include "OutputWindow.h"
#include "SettingsDialog.h"
#include "TimerEngine.h"

namespace {

constexpr std::array<QString AppSettings::*, 5> fields{
    &AppSettings::shortcutStartPause,   &AppSettings::shortcutReset,
    &AppSettings::shortcutPlusMin,      &AppSettings::shortcutMinusMin,
    &AppSettings::shortcutToggleOutput,
};

// One window for all inputs: a media player belongs to it, which takes long to make.
struct Program
{
    AppSettings settings;
    TimerEngine engine;
    OutputWindow output{&settings};
    ControlWindow window{&settings, &engine, &output};
};

QList<QKeySequence> keysOf(const ControlWindow &window)
{
    QList<QKeySequence> keys;
    const QList<QShortcut *> shortcuts = window.findChildren<QShortcut *>();
    for (const QShortcut *shortcut : shortcuts)
        keys.append(shortcut->key());
    return keys;
}

QList<QKeySequence> keysOf(const AppSettings &settings)
{
    QList<QKeySequence> keys;
    for (QString AppSettings::*field : fields) {
        const QKeySequence key(settings.*field, QKeySequence::NativeText);
        // What has no first key has none, as a shortcut sees it: a text that begins with a null
        // character may still have a second.
        keys.append(key.isEmpty() ? QKeySequence() : key);
    }
    return keys;
}

void pressOk(const QDialog &dialog)
{
    dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
}

// As a user does it.
void acceptShownDialog(ControlWindow &window)
{
    int dialogs = 0;
    QTimer::singleShot(0, &window, [&dialogs] {
        const auto *dialog = qobject_cast<SettingsDialog *>(QApplication::activeModalWidget());
        require(dialog, "No settings dialog");
        ++dialogs;
        pressOk(*dialog);
    });
    window.openSettings();
    require(dialogs == 1, "The dialog was not opened once");
}

// The same without a window on the screen, which takes most of the time.
void acceptHiddenDialog(ControlWindow &window, AppSettings &settings)
{
    SettingsDialog dialog(&settings, &window);
    QObject::connect(&dialog, &SettingsDialog::settingsChanged, &window,
                     &ControlWindow::onSettingsChanged);
    pressOk(dialog);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static auto *const program = new Program;
    AppSettings &settings = program->settings;
    ControlWindow &window = program->window;

    Input input(data, size);
    const int choices = input.choice(256);
    const bool wide = (choices & 1) != 0;
    const bool shown = choices >= 224;
    for (QString AppSettings::*field : fields)
        settings.*field = textOf(input.line(), wide);
    const QList<QKeySequence> wanted = keysOf(settings);

    window.onSettingsChanged();
    require(keysOf(window) == wanted, "The window has other keys than the record");

    if (shown)
        acceptShownDialog(window);
    else
        acceptHiddenDialog(window, settings);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const QString portable = wanted.at(qsizetype(i)).toString(QKeySequence::PortableText);
        require(settings.*fields[i] == portable, "The dialog writes another text than", portable);
    }
    require(keysOf(window) == keysOf(settings), "The window has other keys than the dialog wrote");

    AppSettings loaded;
    loadSettings(loaded);
    for (QString AppSettings::*field : fields)
        require(loaded.*field == settings.*field, "The store holds another text than",
                settings.*field);
    return 0;
}
