#pragma once

#include <array>

#include <QColor>
#include <QDialog>
#include <QKeySequence>

struct AppSettings;
class QCheckBox;
class QGridLayout;
class QLabel;
class QLayout;
class QListWidget;
class QPushButton;
class QRadioButton;
class QSpinBox;

/// The modal editor of the settings record, on five tabs.
///
/// It edits controls and working copies only. OK writes everything into the record at
/// once, saves it and reports it; closing the dialog in any other way leaves the record as
/// it was. The sound settings are not edited here.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    /// Shows the values of @p settings, which is not owned and must outlive the dialog.
    explicit SettingsDialog(AppSettings *settings, QWidget *parent = nullptr);

signals:
    /// The record has new values and is saved. Emitted once by accept(), never otherwise.
    void settingsChanged();

public slots:
    /// Writes all values into the record, saves it, emits settingsChanged() and closes.
    void accept() override;
    /// Lets the user pick a colour for the working copy @p target and repaints @p button
    /// with it. Cancelling changes nothing.
    void pickColor(QColor &target, QPushButton *button);
    /// Appends the duration of the new-preset row to the list; 0 is not taken, duplicates are.
    void addPreset();
    /// Removes the list's current preset, if there is one.
    void removePreset();

protected:
    /// Takes the key while a row of the Shortcuts page waits for one.
    void keyPressEvent(QKeyEvent *event) override;

private:
    static constexpr int colorCount = 6;
    static constexpr int shortcutCount = 5;
    static constexpr int noCapture = -1;

    QWidget *buildClockPage();
    QWidget *buildColorsPage();
    QWidget *buildBackgroundImageRow();
    QWidget *buildFontsPage();
    QWidget *buildTimerPage();
    void buildPresetList();
    QLayout *buildNewPresetRow();
    QWidget *buildShortcutsPage();
    void addShortcutRow(QGridLayout *grid, int row);

    void browseBackgroundImage();
    void clearBackgroundImage();
    void showBackgroundImageName();
    void nameColorButtons();
    void storeColors();
    void appendPresetItem(int secs);

    void startKeyCapture(int row);
    void clearShortcut(int row);
    void resetShortcutsToDefaults();
    void stopCapture();
    void showShortcut(int row);
    void storeShortcuts();

    AppSettings *settings = nullptr;
    QRadioButton *clock24hrRadio = nullptr;
    QRadioButton *clock12hrRadio = nullptr;
    QCheckBox *showSecondsCheck = nullptr;
    // In the order of the page's rows, as are the arrays for the shortcuts.
    std::array<QColor, colorCount> workingColors;
    std::array<QPushButton *, colorCount> colorBtns{};
    QString workingBgImagePath;
    QCheckBox *useImageCheck = nullptr;
    QLabel *imageFileLabel = nullptr;
    QSpinBox *timerFontSpin = nullptr;
    QSpinBox *clockFontSpin = nullptr;
    QSpinBox *messageFontSpin = nullptr;
    QCheckBox *overtimeCheck = nullptr;
    QCheckBox *blinkCheck = nullptr;
    QSpinBox *durationMinSpin = nullptr;
    QSpinBox *durationSecSpin = nullptr;
    QSpinBox *warningSpin = nullptr;
    QListWidget *presetsList = nullptr;
    QSpinBox *newPresetMinSpin = nullptr;
    QSpinBox *newPresetSecSpin = nullptr;
    std::array<QLabel *, shortcutCount> shortcutLabels{};
    std::array<QPushButton *, shortcutCount> setKeyBtns{};
    std::array<QKeySequence, shortcutCount> shortcutSequences;
    int captureIndex = noCapture; // the row that waits for a key
};
