#pragma once

#include <memory>

#include <QLabel>
#include <QString>

#include "AppSettings.h"
#include "ControlWindow.h"
#include "FloorWindows.h"
#include "OutputWindow.h"
#include "TimerEngine.h"

/// The program's two windows on the screen, wired as at start-up and with the values of a
/// first run. The application's style sheet goes with it, so that a floor that comes after it
/// is not styled.
class VelmoraStage
{
public:
    /// With a path, the Output window shows that picture.
    explicit VelmoraStage(const QString &picturePath = {});
    ~VelmoraStage();

    /// One second passes in the engine.
    void tick();
    /// Opens the preview by its button.
    bool openPreview();
    /// The preview's timer fires.
    void refreshPreview();

    AppSettings settings;
    TimerEngine engine;
    std::unique_ptr<OutputWindow> output;
    std::unique_ptr<ControlWindow> control;
    const QLabel *figure = nullptr; ///< the Output window's
    const QLabel *controlFigure = nullptr;
    const QLabel *previewPicture = nullptr; ///< set by openPreview()
};

/// The floor's two windows on the screen, the operator's as large as the program's.
class FloorStage
{
public:
    explicit FloorStage(const QString &picturePath = {});

    /// One second passes.
    void tick();

    FloorWindows windows;

private:
    int remaining;
};
