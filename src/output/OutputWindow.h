#pragma once

#include <QBrush>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

struct AppSettings;
class QLabel;
class QProgressBar;
class QString;

/// What the people on stage see: figure, wall clock, message and progress bar over a
/// colour or a picture.
///
/// It keeps no time of its own: the engine feeds it the count, the Control window the
/// rest, and every look is read from the shared settings record, which it never
/// writes. It neither places nor shows itself. Closing it only hides it.
class OutputWindow : public QWidget
{
    Q_OBJECT

public:
    /// What is shown. The window takes and keeps it as a number; see setViewMode().
    enum ViewMode
    {
        TimerView = 0, ///< the figure
        ClockView = 1, ///< the clock
        BothViews = 2
    };

    /// @p settings is not owned and must outlive the window.
    explicit OutputWindow(const AppSettings *settings, QWidget *parent = nullptr);

    /// Sets the progress bar's full scale, in seconds; values below 1 count as 1.
    void setTotalSeconds(int seconds);
    /// Chooses what is shown, by a ViewMode. Any other value is kept but shows and hides
    /// nothing. With every value but TimerView the clock's text follows at the next clock tick.
    void setViewMode(int mode);
    /// Shows @p text on the message line, as it is: a text that looks like rich text
    /// is shown as such.
    void setMessage(const QString &text);
    /// Empties the message line.
    void clearMessage();

public slots:
    /// The count is now @p seconds: redraws figure and bar, starts the blink at zero
    /// of a count-down if blinking is enabled, ends it at a positive count or any tick of a
    /// count-up. In overtime a running blink goes on.
    void onTimerTick(int seconds);
    /// Reads every look from the record again, the background picture from its file. A picture
    /// that cannot be read leaves the colour. A running blink is not stopped.
    void refreshSettings();
    /// Sets the direction and ends a running blink. The colours do not depend on it.
    void setCountUp(bool countUp);
    /// Sets the clock's text to the present time, unless only the figure is shown.
    void tickClock();
    /// Passes to the other half of the blink.
    void tickBlink();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyViewMode();
    void scaleFonts();
    void loadBackground();
    void applyGround();
    void updateFigure();
    void updateProgress();

    const AppSettings *settings = nullptr;
    int viewMode = BothViews;
    int currentSeconds = 300;
    int totalSeconds = 300;
    bool blinkVisible = true;
    bool countUp = false;
    QPixmap bgPixmap;
    QBrush ground; // no brush until the colour is first used
    int timerFontPx = 150;
    int clockFontPx = 80;
    int messageFontPx = 36;
    QLabel *timerLabel = nullptr;
    QLabel *clockLabel = nullptr;
    QLabel *messageLabel = nullptr;
    QProgressBar *progressBar = nullptr;
    QTimer clockTimer;
    QTimer blinkTimer;
};
