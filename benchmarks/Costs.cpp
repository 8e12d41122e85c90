// What single operations of the program cost, each beside the same of the floor where it has
// one. Windows are really shown and really painted, so it needs a desktop of two screens; it is
// run by tools/benchmark/benchmark on the virtual one. Options are Google Benchmark's.

#include <cstdio>
#include <functional>
#include <vector>

#include <QDialog>
#include <QImage>
#include <QSettings>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>

#include "AboutDialog.h"
#include "PaintWatch.h"
#include "Report.h"
#include "SettingsDialog.h"
#include "Stage.h"

namespace {

using benchmark::State;

bool failed = false;

void fail(State &state, const char *what)
{
    std::fprintf(stderr, "velmora_benchmarks: %s\n", what);
    failed = true;
    state.SkipWithError(what);
}

// Times an action up to the end of the last of the paints that it leads to.
void measurePaints(State &state, const QList<const QWidget *> &widgets,
                   const std::function<void()> &action)
{
    PaintWatch &watch = PaintWatch::instance();
    for (auto _ : state) {
        const PaintWatch::Clock::time_point start = PaintWatch::Clock::now();
        if (!watch.paints(widgets, action)) {
            fail(state, "a widget was not painted");
            break;
        }
        state.SetIterationTime(std::chrono::duration<double>(watch.painted() - start).count());
        QCoreApplication::processEvents(); // what else is to be painted, untimed
    }
}

// Times an action and everything that it leaves to the event loop.
void measureWhole(State &state, const QList<const QWidget *> &widgets,
                  const std::function<void()> &action)
{
    PaintWatch &watch = PaintWatch::instance();
    for (auto _ : state) {
        const PaintWatch::Clock::time_point start = PaintWatch::Clock::now();
        if (!watch.paints(widgets, action)) {
            fail(state, "a widget was not painted");
            break;
        }
        QCoreApplication::processEvents();
        state.SetIterationTime(
            std::chrono::duration<double>(PaintWatch::Clock::now() - start).count());
    }
}

void velmoraTick(State &state, const QString &picture, bool preview)
{
    VelmoraStage stage(picture);
    if (preview && !stage.openPreview()) {
        fail(state, "the preview did not open");
        return;
    }
    QList<const QWidget *> painted{stage.figure, stage.controlFigure};
    if (preview)
        painted.append(stage.previewPicture);
    measureWhole(state, painted, [&stage, preview] {
        stage.tick();
        for (int i = 0; preview && i < 2; ++i) // twice a second
            stage.refreshPreview();
    });
}

void floorTick(State &state, const QString &picture, bool preview)
{
    FloorStage stage(picture);
    if (preview) {
        stage.windows.showPreview();
        QCoreApplication::processEvents();
    }
    const FloorWindows &windows = stage.windows;
    measureWhole(state, {&windows.output.label, &windows.controlLabel}, [&stage, preview] {
        stage.tick();
        for (int i = 0; preview && i < 2; ++i)
            stage.windows.refreshPreview();
    });
}

void velmoraLatency(State &state)
{
    VelmoraStage stage;
    measurePaints(state, {stage.figure}, [&stage] { stage.tick(); });
}

void floorLatency(State &state)
{
    FloorStage stage;
    measurePaints(state, {&stage.windows.output.label}, [&stage] { stage.tick(); });
}

void velmoraRefresh(State &state, const QString &picture)
{
    VelmoraStage stage(picture);
    measureWhole(state, {stage.figure}, [&stage] { stage.output->refreshSettings(); });
}

// The picture is asked for by its file each time, as the program must.
void floorRefresh(State &state, const QString &picture)
{
    FloorStage stage(picture);
    measureWhole(state, {&stage.windows.output.label}, [&stage, &picture] {
        QPixmap pixmap;
        pixmap.load(picture);
        stage.tick();
    });
}

template<typename Dialog, typename... Arguments>
void openDialogs(State &state, Arguments... arguments)
{
    PaintWatch &watch = PaintWatch::instance();
    for (auto _ : state) {
        const PaintWatch::Clock::time_point start = PaintWatch::Clock::now();
        Dialog dialog(arguments...);
        if (!watch.paints({&dialog}, [&dialog] { dialog.show(); })) {
            fail(state, "the dialog was not painted");
            break;
        }
        state.SetIterationTime(std::chrono::duration<double>(watch.painted() - start).count());
    }
}

class FloorDialog : public QDialog
{
public:
    explicit FloorDialog(QWidget *parent)
        : QDialog(parent)
    {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(new QLabel(QStringLiteral("Floor")));
    }
};

void settingsDialog(State &state)
{
    VelmoraStage stage;
    openDialogs<SettingsDialog>(state, &stage.settings, stage.control.get());
}

void aboutDialog(State &state)
{
    VelmoraStage stage;
    openDialogs<AboutDialog>(state, stage.control.get());
}

void floorDialog(State &state)
{
    FloorStage stage;
    openDialogs<FloorDialog>(state, &stage.windows.control);
}

// The other benchmarks are of a first run, which finds nothing.
void emptyStore()
{
    QSettings(QStringLiteral("Velmora"), QStringLiteral("Velmora")).clear();
}

void load(State &state)
{
    AppSettings settings;
    saveSettings(settings);
    for (auto _ : state) {
        const PaintWatch::Clock::time_point start = PaintWatch::Clock::now();
        loadSettings(settings);
        state.SetIterationTime(
            std::chrono::duration<double>(PaintWatch::Clock::now() - start).count());
    }
    emptyStore();
}

// A value changes each time: an unchanged store is not written.
void save(State &state)
{
    AppSettings settings;
    for (auto _ : state) {
        settings.defaultDuration = (settings.defaultDuration + 1) % 60000;
        const PaintWatch::Clock::time_point start = PaintWatch::Clock::now();
        saveSettings(settings);
        state.SetIterationTime(
            std::chrono::duration<double>(PaintWatch::Clock::now() - start).count());
    }
    emptyStore();
}

// A store of one value.
void floorStore(State &state, bool write)
{
    int value = 0;
    for (auto _ : state) {
        const PaintWatch::Clock::time_point start = PaintWatch::Clock::now();
        {
            QSettings store(QStringLiteral("Floor"), QStringLiteral("Floor"));
            if (write)
                store.setValue(QStringLiteral("value"), ++value);
            else
                value += store.value(QStringLiteral("value")).toInt();
        }
        state.SetIterationTime(
            std::chrono::duration<double>(PaintWatch::Clock::now() - start).count());
    }
    benchmark::DoNotOptimize(value);
}

// As large as the screen, so that what it costs is reading and drawing, as for an operator who
// chose a picture made for it.
QString makePicture(const QTemporaryDir &directory)
{
    QImage image(1920, 1080, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * 255 / 1920, y * 255 / 1080, (x ^ y) & 63));
    }
    QString path = directory.filePath(QStringLiteral("picture.png"));
    if (!image.save(path))
        qFatal("benchmark: no picture could be written");
    return path;
}

void add(const char *name, const std::function<void(State &)> &function)
{
    benchmark::RegisterBenchmark(name, function)->UseManualTime()->MinTime(0.2);
}

} // namespace

int main(int argc, char *argv[])
{
    const QTemporaryDir home;
    if (!home.isValid())
        qFatal("benchmark: no directory for the settings");
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    PaintWatch application(argc, argv);
    if (QGuiApplication::screens().size() < 2)
        qFatal("benchmark: needs two screens; run it by tools/benchmark/benchmark");
    PaintWatch::setQuitOnLastWindowClosed(false);

    // Program and floor in turn, at random, so that a slow moment of the machine hits both.
    char repetitions[] = "--benchmark_repetitions=9";
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    std::vector<char *> options{argv[0], repetitions, interleaving};
    for (int i = 1; i < argc; ++i)
        options.push_back(argv[i]);
    int optionCount = int(options.size());
    options.push_back(nullptr);
    benchmark::Initialize(&optionCount, options.data());
    if (benchmark::ReportUnrecognizedArguments(optionCount, options.data()))
        return 1;

    const QString picture = makePicture(home);
    add("floor: tick", [](State &state) { floorTick(state, {}, false); });
    add("floor: tick, picture", [&](State &state) { floorTick(state, picture, false); });
    add("floor: tick, preview", [](State &state) { floorTick(state, {}, true); });
    add("floor: tick, both", [&](State &state) { floorTick(state, picture, true); });
    add("floor: latency", floorLatency);
    add("floor: picture read", [&](State &state) { floorRefresh(state, picture); });
    add("floor: dialog", floorDialog);
    add("floor: read", [](State &state) { floorStore(state, false); });
    add("floor: write", [](State &state) { floorStore(state, true); });
    add("tick, both windows painted", [](State &state) { velmoraTick(state, {}, false); });
    add("the same with a picture", [&](State &state) { velmoraTick(state, picture, false); });
    add("the same, preview refreshed twice", [](State &state) { velmoraTick(state, {}, true); });
    add("the same with picture and preview",
        [&](State &state) { velmoraTick(state, picture, true); });
    add("tick to the figure's paint", velmoraLatency);
    add("refreshSettings, painted", [](State &state) { velmoraRefresh(state, {}); });
    add("refreshSettings with a picture", [&](State &state) { velmoraRefresh(state, picture); });
    add("settings dialog, opened and painted", settingsDialog);
    add("About card, opened and painted", aboutDialog);
    add("loadSettings", load);
    add("saveSettings", save);

    Report report({
        {"tick, both windows painted", "floor: tick"},
        {"the same with a picture", "floor: tick, picture"},
        {"the same, preview refreshed twice", "floor: tick, preview"},
        {"the same with picture and preview", "floor: tick, both"},
        {"tick to the figure's paint", "floor: latency"},
        {"refreshSettings, painted", "floor: latency"},
        {"refreshSettings with a picture", "floor: picture read"},
        {"settings dialog, opened and painted", "floor: dialog"},
        {"About card, opened and painted", "floor: dialog"},
        {"loadSettings", "floor: read"},
        {"saveSettings", "floor: write"},
    });
    const std::size_t run = benchmark::RunSpecifiedBenchmarks(&report);
    return run > 0 && !failed ? 0 : 1;
}
