#pragma once

#include <memory>

#include <QAbstractButton>
#include <QLabel>
#include <QList>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QString>
#include <QTimer>

#include "AppSettings.h"
#include "ControlWindow.h"
#include "Find.h"
#include "OutputWindow.h"
#include "ScreenPlacement.h"
#include "TimerEngine.h"

/// The record as it is read from the test's store; the defaults with an empty one.
inline AppSettings loadedSettings()
{
    AppSettings settings;
    loadSettings(settings);
    return settings;
}

/// Lets a timer run out at once. It goes on as if its time had come on its own.
inline void runOut(QTimer *timer)
{
    QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection);
}

/// One second passes for the engine, whether it runs or not.
inline void passSecond(TimerEngine &engine)
{
    QMetaObject::invokeMethod(&engine, "onTimeout", Qt::DirectConnection);
}

/// Record, engine, Output window and Control window, built and wired as start-up does.
/// Neither window is shown until showControl(), showOutput() or show().
class ControlFixture
{
public:
    explicit ControlFixture(const AppSettings &record = loadedSettings())
        : settings(record)
        , output(&settings)
    {
        engine.setDuration(settings.defaultDuration);
        engine.setOvertimeEnabled(settings.overtimeEnabled);
        window = std::make_unique<ControlWindow>(&settings, &engine, &output);
        QObject::connect(&engine, &TimerEngine::tick, &output, &OutputWindow::onTimerTick);
        output.setTotalSeconds(settings.defaultDuration);
        output.onTimerTick(engine.remaining());
    }

    /// Shows the Control window, large enough that nothing in it has to be scrolled to.
    void showControl()
    {
        window->resize(800, 900);
        window->show();
    }

    /// Places and shows the Output window as start-up does.
    void showOutput() { showOnOtherScreen(output, *window); }

    void show()
    {
        showControl();
        showOutput();
    }

    /// The only button with the text, a check box included; null without one.
    QAbstractButton *button(const QString &text) const
    {
        return findByText<QAbstractButton>(*window, text);
    }
    /// The widget with the object name; null without one.
    template<typename Widget>
    Widget *named(const char *objectName) const
    {
        return window->findChild<Widget *>(QLatin1String(objectName));
    }

    /// The preview's large figure.
    QLabel *figure() const { return named<QLabel>("timerPreview"); }
    /// The two spin boxes of the Set Time row; null when there are not exactly these two.
    QSpinBox *minutes() const { return setTimeSpinBox(0); }
    QSpinBox *seconds() const { return setTimeSpinBox(1); }

    /// The window's own two timers, in the order in which they are made.
    QTimer *previewTimer() const { return ownTimer(0); }
    QTimer *blinkTimer() const { return ownTimer(1); }

    /// The lines of the Output window, whether shown or hidden.
    QLabel *outputFigure() const { return outputLine(0); }
    QLabel *outputClock() const { return outputLine(1); }
    QLabel *outputMessage() const
    {
        return output.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
    }
    QProgressBar *outputBar() const { return output.findChild<QProgressBar *>(); }

    /// Puts the count into the Set Time row, as typing would; nothing is loaded by it.
    void enterTime(int minutesValue, int secondsValue)
    {
        minutes()->setValue(minutesValue);
        seconds()->setValue(secondsValue);
    }

    // In the order of construction.
    AppSettings settings;
    TimerEngine engine;
    OutputWindow output;
    std::unique_ptr<ControlWindow> window;

private:
    QSpinBox *setTimeSpinBox(int index) const
    {
        const QList<QSpinBox *> spinBoxes = window->findChildren<QSpinBox *>();
        return spinBoxes.size() == 2 ? spinBoxes.at(index) : nullptr;
    }
    QTimer *ownTimer(int index) const
    {
        const QList<QTimer *> timers =
            window->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
        return timers.size() == 2 ? timers.at(index) : nullptr;
    }
    // Figure and clock stand one above the other in a container of their own.
    QLabel *outputLine(int index) const
    {
        const QList<QLabel *> labels = output.findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            if (const QWidget *container = label->parentWidget(); container != &output)
                return container->findChildren<QLabel *>().value(index);
        }
        return nullptr;
    }
};
