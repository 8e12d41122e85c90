#pragma once

#include <memory>

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QListWidget>
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

/// The defaults, but for the fields that are named with their values.
template<typename Field, typename Value, typename... More>
AppSettings recordWith(Field AppSettings::*field, const Value &value, const More &...more)
{
    AppSettings record;
    if constexpr (sizeof...(more) > 0)
        record = recordWith(more...);
    record.*field = value;
    return record;
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

/// Keeps seconds from passing for the engine by themselves, as one does while a busy machine halts
/// the test: passSecond() passes them.
class HeldSeconds : public QObject
{
public:
    explicit HeldSeconds(const TimerEngine &engine)
        : begin(reinterpret_cast<quintptr>(&engine))
        , end(reinterpret_cast<quintptr>(&engine + 1))
    {
        qApp->installEventFilter(this);
    }

protected:
    // The engine's timer is a part of the engine.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const auto address = reinterpret_cast<quintptr>(watched);
        return event->type() == QEvent::Timer && address >= begin && address < end;
    }

private:
    quintptr begin;
    quintptr end;
};

/// Counts the close events that a widget receives; hiding it is none.
class CloseCounter : public QObject
{
public:
    explicit CloseCounter(QObject *watched) { watched->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Close ? 1 : 0;
        return false;
    }
};

/// Record, engine, Output window and Control window, built and wired as start-up does.
/// Neither window is shown until showControl(), showOutput() or show(). Only passSecond() passes a
/// second, until letSecondsPass().
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

    /// From now on, the engine counts as it does for a user.
    void letSecondsPass() { held.reset(); }

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

    /// The window's large figure.
    QLabel *figure() const { return named<QLabel>("timerPreview"); }
    QListWidget *strip() const { return named<QListWidget>("presetList"); }
    /// The two spin boxes of the Set Time row.
    QSpinBox *minutes() const { return window->findChildren<QSpinBox *>().value(0); }
    QSpinBox *seconds() const { return window->findChildren<QSpinBox *>().value(1); }
    /// The message's edit: no part of a spin box, as the others are.
    QLineEdit *messageEdit() const
    {
        return button(QStringLiteral("Push"))
            ->parentWidget()
            ->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
    }

    /// The window's own two timers, in the order in which they are made.
    QTimer *previewTimer() const { return ownTimers().value(0); }
    QTimer *blinkTimer() const { return ownTimers().value(1); }

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
    std::unique_ptr<HeldSeconds> held = std::make_unique<HeldSeconds>(engine);

    QList<QTimer *> ownTimers() const
    {
        return window->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    }
    // Figure and clock stand one above the other in a container of their own.
    QLabel *outputLine(int index) const
    {
        QList<QLabel *> lines = output.findChildren<QLabel *>();
        lines.removeOne(outputMessage());
        return lines.value(index);
    }
};
