#pragma once

#include <QObject>

#include "CuePlayer.h"

struct AppSettings;
class QCheckBox;
class QLabel;
class QLayout;
class QVBoxLayout;
class QWidget;

/// The audio cue: its switch and its file in the Control window, and when it is played.
///
/// The file that it plays and the switch are the record's; a change is saved at once.
class AudioCue : public QObject
{
    Q_OBJECT

public:
    /// Makes the player and opens the record's file, if there is one. @p settings is not owned
    /// and must outlive the cue; @p window owns the player and is the parent of the file dialog.
    AudioCue(AppSettings *settings, QWidget *window);

    /// Adds the switch, and the row with the file's name, "Browse…" and "Test", to @p column.
    /// Called once.
    void addRows(QVBoxLayout *column);

    /// The count is at zero: plays the cue, unless it has fired since it was re-armed, is switched
    /// off or has no file.
    void fire();
    /// The next zero plays the cue again.
    void rearm() { cueFired = false; }
    /// Lets the operator choose the file. Cancelling changes nothing.
    void browse();

private:
    QWidget *makeSwitch();
    QLayout *makeFileRow();
    void test();
    void showFileName();

    AppSettings *settings;
    QWidget *window;
    CuePlayer cuePlayer;
    QLabel *soundFileLabel = nullptr;
    QCheckBox *soundCheck = nullptr;
    bool cueFired = false; // the cue has played for the present zero
};
