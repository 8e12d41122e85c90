#include "Stage.h"

#include <QPushButton>
#include <QTimer>

#include "Figure.h"
#include "PaintWatch.h"
#include "ScreenPlacement.h"

namespace {

// Two digits of minutes all the time, far from the colours and the blink of the end.
constexpr int longest = 5999;
constexpr int shortest = 600;

// Its size in a first run, so that the floor's is alike.
QSize controlSize()
{
    static const QSize size = [] {
        AppSettings settings;
        TimerEngine engine;
        OutputWindow output(&settings);
        const ControlWindow control(&settings, &engine, &output);
        const QSize hint = control.sizeHint().expandedTo(control.minimumSize());
        qApp->setStyleSheet(QString());
        return hint;
    }();
    return size;
}

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("benchmark: %s", what);
}

} // namespace

VelmoraStage::VelmoraStage(const QString &picturePath)
{
    loadSettings(settings);
    settings.bgImagePath = picturePath;
    settings.bgImageEnabled = !picturePath.isEmpty();
    engine.setDuration(longest);

    output = std::make_unique<OutputWindow>(&settings);
    control = std::make_unique<ControlWindow>(&settings, &engine, output.get());
    QObject::connect(&engine, &TimerEngine::tick, output.get(), &OutputWindow::onTimerTick);
    output->setTotalSeconds(longest);
    output->onTimerTick(engine.remaining());

    controlFigure = control->findChild<QLabel *>(QStringLiteral("timerPreview"));
    const QList<QLabel *> labels = output->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->text() == figureText(longest))
            figure = label;
    }
    require(figure && controlFigure, "the program's figures were not found");
    require(PaintWatch::instance().paints({figure, controlFigure},
                                          [this] {
                                              control->show();
                                              showOnOtherScreen(*output, *control);
                                          }),
            "the program's windows were not painted");
    // What is compared must be alike: the figures' glyphs are most of every tick.
    require(figure->fontInfo().pixelSize() == FloorWindows::figurePixelSize,
            "the program's figure is not as large as the floor's");
}

VelmoraStage::~VelmoraStage()
{
    control.reset();
    output.reset();
    qApp->setStyleSheet(QString());
}

void VelmoraStage::tick()
{
    if (engine.remaining() < shortest)
        engine.setDuration(longest);
    QMetaObject::invokeMethod(&engine, "onTimeout", Qt::DirectConnection);
}

bool VelmoraStage::openPreview()
{
    const QWidgetList before = QApplication::topLevelWidgets();
    const QList<QPushButton *> buttons = control->findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->text() == ControlWindow::tr("Preview"))
            button->click();
    }
    const QWidgetList after = QApplication::topLevelWidgets();
    for (const QWidget *window : after) {
        if (!before.contains(window) && window->isVisible())
            previewPicture = window->findChild<QLabel *>();
    }
    return previewPicture
        && PaintWatch::instance().paints({previewPicture}, [this] { refreshPreview(); });
}

void VelmoraStage::refreshPreview()
{
    // The Control window's only running timer: the blink's stands still this far from zero.
    const QList<QTimer *> timers =
        control->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    for (QTimer *timer : timers) {
        if (timer->isActive())
            QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection);
    }
}

FloorStage::FloorStage(const QString &picturePath)
    : windows(controlSize(), picturePath)
    , remaining(longest)
{
    windows.setRemaining(longest);
    windows.tick();
    require(PaintWatch::instance().paints({&windows.output.label, &windows.controlLabel},
                                          [this] { windows.show(); }),
            "the floor's windows were not painted");
}

void FloorStage::tick()
{
    if (--remaining < shortest) {
        remaining = longest;
        windows.setRemaining(longest);
    }
    windows.tick();
}
