#include "SettingsDialog.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "Button.h"
#include "FormHelpers.h"

namespace {

const QString keyLabelStyle =
    QStringLiteral("background:#2b2b2b;color:#e8e8e8;border:1px solid #444;border-radius:4px;"
                   "padding:4px 10px;font-family:monospace;");
const QString waitingKeyLabelStyle =
    QStringLiteral("background:#5c4a00;color:#ffa500;border:1px solid #ffa500;border-radius:4px;"
                   "padding:4px 10px;font-family:monospace;");
const QString hintStyle = QStringLiteral("color:#666;font-size:11px;");

/// One action of the page: what it is called for the eye and for the ear, and where its keys are
/// kept.
struct ShortcutAction
{
    const char *label;
    const char *spokenLabel;
    QString AppSettings::*field;
};

constexpr std::array<ShortcutAction, 5> shortcutActions{{
    {QT_TRANSLATE_NOOP("SettingsDialog", "Start / Pause"),
     QT_TRANSLATE_NOOP("SettingsDialog", "start or pause"), &AppSettings::shortcutStartPause},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Reset"), QT_TRANSLATE_NOOP("SettingsDialog", "reset"),
     &AppSettings::shortcutReset},
    {QT_TRANSLATE_NOOP("SettingsDialog", "+1 Minute"),
     QT_TRANSLATE_NOOP("SettingsDialog", "add 1 minute"), &AppSettings::shortcutPlusMin},
    {QT_TRANSLATE_NOOP("SettingsDialog", "-1 Minute"),
     QT_TRANSLATE_NOOP("SettingsDialog", "subtract 1 minute"), &AppSettings::shortcutMinusMin},
    {QT_TRANSLATE_NOOP("SettingsDialog", "Toggle Output"),
     QT_TRANSLATE_NOOP("SettingsDialog", "toggle output"), &AppSettings::shortcutToggleOutput},
}};

// The record holds the portable form; it is deliberately parsed in the native one.
QKeySequence keysOf(const ShortcutAction &action, const AppSettings &settings)
{
    return {settings.*action.field, QKeySequence::NativeText};
}

// Only these four keep a row waiting; AltGr and the lock keys count as keys.
bool isModifierKey(int key)
{
    return key >= Qt::Key_Shift && key <= Qt::Key_Alt;
}

// Empty for a sequence without any key. A text that names none is parsed to one that is not empty,
// but holds unknown keys alone.
QString nativeText(const QKeySequence &keys)
{
    QString text;
    for (int i = 0; i < keys.count(); ++i) {
        if (keys[uint(i)].key() != Qt::Key_unknown)
            text = keys.toString(QKeySequence::NativeText);
    }
    return text.trimmed().isEmpty() ? QString() : text;
}

} // namespace

QWidget *SettingsDialog::buildShortcutsPage()
{
    static_assert(shortcutActions.size() == shortcutCount);

    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setSpacing(10);
    column->addWidget(makeSectionHeader(tr("Timer Controls")));

    auto *grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setSpacing(8);
    for (int row = 0; row < shortcutCount; ++row)
        addShortcutRow(grid, row);
    column->addLayout(grid);
    column->addWidget(makeSeparator());

    auto *hint = new QLabel(
        tr("Click “Set Key”, then press any key or combination (e.g. Ctrl+1) on your keyboard "
           "or Stream Deck.\nPress Escape to cancel."));
    hint->setStyleSheet(hintStyle);
    hint->setWordWrap(true);
    column->addWidget(hint);

    auto *resetBtn = new Button(tr("Reset All to Defaults"));
    resetBtn->setFixedWidth(150);
    connect(resetBtn, &QPushButton::clicked, this, &SettingsDialog::resetShortcutsToDefaults);
    column->addWidget(resetBtn);
    column->addStretch();
    return page;
}

void SettingsDialog::addShortcutRow(QGridLayout *grid, int row)
{
    const auto index = std::size_t(row);
    const QString action = tr(shortcutActions[index].spokenLabel);
    shortcutSequences[index] = keysOf(shortcutActions[index], *settings);

    auto *keyLabel = new QLabel;
    keyLabel->setMinimumWidth(120);
    shortcutLabels[index] = keyLabel;

    auto *setKeyBtn = new Button;
    setKeyBtn->setFixedWidth(80);
    connect(setKeyBtn, &QPushButton::clicked, this, [this, row] { startKeyCapture(row); });
    setKeyBtns[index] = setKeyBtn;

    QPushButton *clearBtn = makeFixedWidth(tr("Clear"), tr("Clear key for %1").arg(action), 55);
    connect(clearBtn, &QPushButton::clicked, this, [this, row] { clearShortcut(row); });

    showShortcut(row);
    auto *actionLabel = new QLabel(tr(shortcutActions[index].label));
    actionLabel->setBuddy(setKeyBtn);
    grid->addWidget(actionLabel, row, 0);
    grid->addWidget(keyLabel, row, 1);
    grid->addWidget(setKeyBtn, row, 2);
    grid->addWidget(clearBtn, row, 3);
}

// The row's keys in the normal look, and the button to change them.
void SettingsDialog::showShortcut(int row)
{
    const auto index = std::size_t(row);
    const QString keys = nativeText(shortcutSequences[index]);
    shortcutLabels[index]->setText(keys.isEmpty() ? tr("(none)") : keys);
    shortcutLabels[index]->setStyleSheet(keyLabelStyle);
    setKeyBtns[index]->setText(tr("Set Key"));

    const QString action = tr(shortcutActions[index].spokenLabel);
    const QString spokenKeys = keys.isEmpty() ? tr("none") : keys;
    shortcutLabels[index]->setAccessibleName(tr("Key for %1: %2").arg(action, spokenKeys));
    setKeyBtns[index]->setAccessibleName(tr("Set key for %1").arg(action));
}

void SettingsDialog::stopCapture()
{
    captureIndex = noCapture;
    releaseKeyboard();
}

// The waiting row's own button reads "Cancel" but deliberately arms the row again.
void SettingsDialog::startKeyCapture(int row)
{
    if (captureIndex != noCapture)
        showShortcut(captureIndex);
    captureIndex = row;
    const auto index = std::size_t(row);
    shortcutLabels[index]->setText(tr("Press any key..."));
    shortcutLabels[index]->setStyleSheet(waitingKeyLabelStyle);
    setKeyBtns[index]->setText(tr("Cancel"));

    const QString action = tr(shortcutActions[index].spokenLabel);
    shortcutLabels[index]->setAccessibleName(tr("Key for %1: press any key").arg(action));
    setKeyBtns[index]->setAccessibleName(tr("Cancel, waiting for key for %1").arg(action));
    grabKeyboard();
}

void SettingsDialog::keyPressEvent(QKeyEvent *event)
{
    if (captureIndex == noCapture) {
        QDialog::keyPressEvent(event);
        return;
    }
    const int row = captureIndex;
    stopCapture();
    if (isModifierKey(event->key())) {
        // The row waits on for the key that the modifier is held for. The grab is not taken
        // again: that key arrives by normal propagation.
        captureIndex = row;
        return;
    }
    // Escape keeps the old keys and is consumed: it does not close the dialog. No modifier
    // is masked out, so that a keypad digit differs from the same digit above the letters.
    if (event->key() != Qt::Key_Escape) {
        shortcutSequences[std::size_t(row)] =
            QKeySequence(QKeyCombination(event->modifiers(), Qt::Key(event->key())));
    }
    showShortcut(row);
}

void SettingsDialog::clearShortcut(int row)
{
    if (captureIndex == row)
        stopCapture();
    shortcutSequences[std::size_t(row)] = QKeySequence();
    showShortcut(row);
}

void SettingsDialog::resetShortcutsToDefaults()
{
    const AppSettings defaults;
    for (int row = 0; row < shortcutCount; ++row) {
        const auto index = std::size_t(row);
        shortcutSequences[index] = keysOf(shortcutActions[index], defaults);
        showShortcut(row);
    }
    if (captureIndex != noCapture)
        stopCapture();
}

void SettingsDialog::storeShortcuts()
{
    for (std::size_t i = 0; i < shortcutActions.size(); ++i) {
        settings->*shortcutActions[i].field =
            shortcutSequences[i].toString(QKeySequence::PortableText);
    }
}
