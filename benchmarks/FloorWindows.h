#pragma once

#include <QAudioOutput>
#include <QLabel>
#include <QMediaPlayer>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

/// The window for the audience, as small as it can be: one label over a black ground or,
/// as options, over a picture that is stretched to the window at every paint, and with a wall
/// clock under it.
class FloorOutput : public QWidget
{
public:
    /// An empty path, or one that cannot be read, leaves the black ground.
    explicit FloorOutput(const QString &picturePath);

    /// Shows the time under the label, asked for twice a second.
    void showClock();

    QLabel label;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void tickClock();

    QPixmap picture;
    QLabel clock;
    QTimer clockTimer;
};

/// The least that a count-down of two windows can be made of in Qt: what the
/// program's figures are measured against.
///
/// One label a window, a timer of one second that styles and fills both labels again, and a
/// media player with an audio output, which is never played. Not an application style sheet,
/// a layout beyond the one that centres the label, a wall clock or a store.
class FloorWindows : public QObject
{
public:
    /// Of the audience's figure, as in the program's first run on a screen of 1080 lines.
    static constexpr int figurePixelSize = 300;

    /// @p controlSize is the size of the operator's window, to be the program's.
    FloorWindows(QSize controlSize, const QString &picturePath = {});

    /// Shows the operator's window, then the audience's full screen on the first screen that
    /// is not the operator's.
    void show();
    /// Shows a third window, whose label shows a picture of the audience's, twice a second.
    void showPreview();
    /// Counts down by one second each second.
    void start();
    /// One second has passed.
    void tick();
    /// Takes the preview's picture again.
    void refreshPreview();
    /// Sets the count without drawing it.
    void setRemaining(int seconds);

    QWidget control;
    QLabel controlLabel;
    FloorOutput output;

private:
    void draw();

    QMediaPlayer player;
    QAudioOutput audioOutput;
    QTimer timer;
    int remaining = 300;
    QWidget preview;
    QLabel previewLabel;
    QTimer previewTimer;
};
