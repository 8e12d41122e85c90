#include <algorithm>
#include <cmath>
#include <vector>

#include <QElapsedTimer>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include "ControlFixture.h"
#include "DialogView.h"
#include "Modal.h"
#include "PreviewWindow.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Statistics.h"
#include "TestMain.h"
#include "Usage.h"

namespace {

constexpr int ticksAnHour = 3600;
// The first hours fill the caches of fonts, glyphs and style sheets.
constexpr int warmUpHours = 4;
// With an application-wide style sheet Qt keeps what it had worked out for the line
// edits of a dialog that is gone, until the program ends.
constexpr int heapOfADialogKiB = 8;
constexpr int heapOfAnHourKiB = 4;
constexpr int heapOfAShowKiB = 64;
constexpr int residentOfAShowKiB = 4096;

int hoursToShow()
{
    const int asked = qEnvironmentVariableIntValue("VELMORA_SHOW_HOURS");
    return asked > 0 ? asked : 48;
}

/// What is measured once an hour of the show, always in the same state of the windows.
struct Sample
{
    double hour;
    double residentKiB;
    double heapKiB;
    int objects;
    int files;
    int threads;
};

/// The operator: what is done at one tick of each hour or of each few minutes.
class Operator
{
public:
    explicit Operator(ControlFixture &fixture)
        : fixture(fixture)
        , messageEdit(messageEditOf(fixture))
    {
    }

    void act(int tick)
    {
        if (tick % 300 == 10)
            push(QStringLiteral("Message of second %1").arg(tick));
        if (tick % 300 == 200)
            fixture.button("Clear")->click();
        if (tick % 700 == 0)
            clickPreset(tick / 700);
        if (tick % 400 == 50)
            togglePreview();
        if (tick % 600 == 300)
            changeSettings(tick);
        if (tick % 900 == 450)
            fixture.window->onViewChanged(tick / 900 % 3);
        if (tick % 1200 == 700)
            fixture.window->toggleOutput();
        if (tick % 1200 == 705)
            fixture.window->toggleOutput();
        if (tick % ticksAnHour == 1500)
            fixture.button("▲  Count Up")->click();
        if (tick % ticksAnHour == 1560)
            fixture.button("▼  Countdown")->click();
        if (tick % 500 == 499)
            countThroughZero();
    }

    /// Both halves of a blink and of the preview's picture fall into a second.
    void passHalves(int tick)
    {
        if (fixture.blinkTimer()->isActive()) {
            runOut(fixture.blinkTimer());
            fixture.output.tickBlink();
            ++blinks;
        }
        if (tick % 20 == 0)
            runOut(fixture.previewTimer());
    }

    /// Everything as it was at the last sample: no preview, no message, the figure alone.
    void settle()
    {
        if (previewWindow() && previewWindow()->isVisible())
            togglePreview();
        fixture.button("Clear")->click();
        fixture.window->onViewChanged(2);
        clickPreset(0);
        fixture.engine.start();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    int dialogsOpened() const { return dialogs; }

    QString summary() const
    {
        return QStringLiteral("%1 messages, %2 presets, %3 dialogs, %4 previews, %5 blinks")
            .arg(messages)
            .arg(presets)
            .arg(dialogs)
            .arg(previews)
            .arg(blinks);
    }

private:
    static QLineEdit *messageEditOf(const ControlFixture &fixture)
    {
        const QList<QLineEdit *> edits = fixture.window->findChildren<QLineEdit *>();
        for (QLineEdit *edit : edits) {
            if (!edit->placeholderText().isEmpty())
                return edit;
        }
        return nullptr;
    }

    void push(const QString &text)
    {
        messageEdit->setText(text);
        fixture.button("Push")->click();
        QCOMPARE(fixture.outputMessage()->text(), text);
        ++messages;
    }

    void clickPreset(int number)
    {
        const bool wasRunning = fixture.engine.isRunning();
        auto *strip = fixture.named<QListWidget>("presetList");
        QListWidgetItem *item = strip->item(number % strip->count());
        emit strip->itemClicked(item);
        QCOMPARE(fixture.engine.remaining(), item->data(Qt::UserRole).toInt());
        if (wasRunning)
            fixture.engine.start();
        ++presets;
    }

    void togglePreview()
    {
        fixture.button("Preview")->click();
        QCoreApplication::processEvents();
        runOut(fixture.previewTimer());
        ++previews;
    }

    void changeSettings(int tick)
    {
        const ModalScript<SettingsDialog> user([tick](SettingsDialog &dialog) {
            const DialogView view(dialog);
            view.fontSize("Timer font size")->setValue(200 + tick / 600 % 100);
            view.tabs()->setCurrentIndex(tick / 600 % view.tabs()->count());
            view.okButton()->click();
        });
        fixture.window->openSettings();
        QVERIFY(user.hasPlayed());
        QCOMPARE(fixture.settings.timerFontSize, 200 + tick / 600 % 100);
        QCOMPARE(storedLines(), fieldLines(fixture.settings));
        ++dialogs;
    }

    /// The next ticks pass zero, where the figure begins to blink, and go on below it.
    void countThroughZero()
    {
        fixture.engine.setDuration(5);
        fixture.engine.start();
    }

    ControlFixture &fixture;
    QLineEdit *messageEdit;
    int messages = 0;
    int presets = 0;
    int dialogs = 0;
    int previews = 0;
    int blinks = 0;
};

/// Growth of one kind of memory over the show, fitted through the hours after the first few.
void printGrowth(const char *what, const std::vector<Sample> &samples, double Sample::*value)
{
    std::vector<double> hours;
    std::vector<double> values;
    for (const Sample &sample : samples) {
        if (sample.hour > warmUpHours) {
            hours.push_back(sample.hour);
            values.push_back(sample.*value);
        }
    }
    if (hours.size() < 3)
        return;
    const statistics::Line line = statistics::fit(hours, values);
    qInfo(
        "%s: %.0f KiB at hour %.0f, %.0f KiB at hour %.0f; slope %.3f +- %.3f KiB an hour (95 %%)",
        what, values.front(), hours.front(), values.back(), hours.back(), line.slope, line.margin);
}

} // namespace

/// Two days of a conference, as fast as the event loop goes: the engine gets every
/// second, and everything that an operator does in between is done over and over. Memory,
/// objects, open files and threads must be the same at the end as at the beginning.
class LongShowTest : public QObject
{
    Q_OBJECT

private slots:
    void ticksOfTwoDays_useUpNothing()
    {
        AppSettings settings = loadedSettings();
        saveSettings(settings);
        ControlFixture fixture(settings);
        fixture.show();
        fixture.engine.start();
        Operator worker(fixture);

        int heard = 0;
        connect(&fixture.engine, &TimerEngine::tick, this, [&heard] { ++heard; });
        int passed = 0;
        QElapsedTimer time;
        time.start();
        std::vector<Sample> samples;
        for (int hour = 1; hour <= hoursToShow(); ++hour) {
            for (int i = 0; i < ticksAnHour; ++i) {
                const int tick = (hour - 1) * ticksAnHour + i;
                worker.act(tick);
                const int before = fixture.engine.remaining();
                const int heardBefore = heard;
                passSecond(fixture.engine);
                ++passed;
                QCOMPARE(heard, heardBefore + 1);
                QCOMPARE(std::abs(fixture.engine.remaining() - before), 1);
                worker.passHalves(tick);
                QCoreApplication::processEvents();
            }
            worker.settle();
            samples.push_back({double(hour), usage::residentKiB(), usage::heapKiB(),
                               usage::objects(), usage::openFiles(), usage::threads()});
        }
        qInfo("%d ticks (%d hours) in %.0f s: %s", passed, hoursToShow(),
              double(time.elapsed()) / 1000, qPrintable(worker.summary()));
        printGrowth("Resident memory", samples, &Sample::residentKiB);
        printGrowth("Heap in use", samples, &Sample::heapKiB);
        const Sample &first = samples[std::min(samples.size() - 1, std::size_t(warmUpHours))];
        const Sample &last = samples.back();
        qInfo(
            "Objects %d and %d, open files %d and %d, threads %d and %d (hour %.0f and hour %.0f)",
            first.objects, last.objects, first.files, last.files, first.threads, last.threads,
            first.hour, last.hour);
        QCOMPARE(last.objects, first.objects);
        QCOMPARE(last.files, first.files);
        QCOMPARE(last.threads, first.threads);
        const double heap = last.heapKiB - first.heapKiB;
        const double allowed = heapOfAShowKiB + heapOfAnHourKiB * (last.hour - first.hour)
            + heapOfADialogKiB * worker.dialogsOpened();
        QVERIFY2(heap < allowed, qPrintable(QString("The heap has grown by %1 KiB").arg(heap)));
        const double resident = last.residentKiB - first.residentKiB;
        QVERIFY2(resident < residentOfAShowKiB,
                 qPrintable(QString("Resident memory has grown by %1 KiB").arg(resident)));
    }
};

VELMORA_TEST_MAIN(LongShowTest, twoScreens())
#include "tst_LongShow.moc"
