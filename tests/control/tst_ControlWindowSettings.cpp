#include <QListWidget>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include "AboutDialog.h"
#include "ControlFixture.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

// Runs the action from a zero timer while the click's modal dialog is open, then closes
// the dialog. Returns whether one of the type was open.
template<typename Dialog, typename Action>
bool clickAndUse(QAbstractButton &button, Action action)
{
    bool open = false;
    QTimer::singleShot(0, &button, [&open, action] {
        auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
        open = dialog != nullptr;
        if (dialog) {
            action(*dialog);
            dialog->reject();
        } else if (QWidget *other = QApplication::activeModalWidget()) {
            other->close();
        }
    });
    button.click();
    return open;
}

} // namespace

// What a change of the record does, and the two modal dialogs that the window opens.
class ControlWindowSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void change_movesTheSetTimeRow_data()
    {
        QTest::addColumn<int>("duration");
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::newRow("odd seconds") << 754 << 12 << 34;
        QTest::newRow("zero") << 0 << 0 << 0;
        QTest::newRow("below a minute") << 59 << 0 << 59;
        QTest::newRow("largest") << 59940 << 999 << 0;
    }

    void change_movesTheSetTimeRow()
    {
        QFETCH(int, duration);
        ControlFixture fixture;
        fixture.settings.defaultDuration = duration;
        fixture.window->onSettingsChanged();
        QTEST(fixture.minutes()->value(), "minutes");
        QTEST(fixture.seconds()->value(), "seconds");
    }

    void change_leavesTheCountAlone()
    {
        ControlFixture fixture;
        fixture.settings.defaultDuration = 754;
        fixture.window->onSettingsChanged();
        QCOMPARE(fixture.engine.remaining(), 300);
        QCOMPARE(fixture.figure()->text(), QStringLiteral("05:00"));
    }

    void change_leavesARunningCountRunning()
    {
        ControlFixture fixture;
        fixture.engine.start();
        passSecond(fixture.engine);
        fixture.settings.defaultDuration = 754;
        fixture.window->onSettingsChanged();
        QVERIFY(fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 299);
    }

    void change_leavesTheDurationAlone()
    {
        ControlFixture fixture;
        fixture.settings.defaultDuration = 754;
        fixture.window->onSettingsChanged();
        fixture.engine.reset();
        QCOMPARE(fixture.engine.remaining(), 300);
        fixture.button("Set")->click();
        QCOMPARE(fixture.engine.remaining(), 754);
    }

    void change_leavesTheOutputsFullScale()
    {
        ControlFixture fixture;
        fixture.settings.defaultDuration = 600;
        fixture.window->onSettingsChanged();
        QCOMPARE(fixture.outputBar()->value(), 1000);
    }

    void change_passesOnOvertime_data()
    {
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("after");
        QTest::newRow("off") << true << false;
        QTest::newRow("on") << false << true;
    }

    void change_passesOnOvertime()
    {
        QFETCH(bool, before);
        QFETCH(bool, after);
        AppSettings record;
        record.defaultDuration = 1;
        record.overtimeEnabled = before;
        ControlFixture fixture(record);
        fixture.settings.overtimeEnabled = after;
        fixture.window->onSettingsChanged();
        fixture.engine.start();
        passSecond(fixture.engine);
        QCOMPARE(fixture.engine.isRunning(), after);
    }

    void change_refreshesTheOutput()
    {
        ControlFixture fixture;
        fixture.settings.messageColor = QColor("#123456");
        fixture.window->onSettingsChanged();
        QVERIFY(fixture.outputMessage()->styleSheet().startsWith("color:#123456;"));
    }

    void change_redrawsThePreview()
    {
        ControlFixture fixture;
        fixture.settings.timerColorNormal = QColor("#123456");
        fixture.window->onSettingsChanged();
        QCOMPARE(
            fixture.figure()->styleSheet(),
            QStringLiteral("color:#123456;font-size:48px;font-weight:bold;font-family:monospace;"
                           "padding:4px 16px;"));
    }

    void change_redrawsThePreviewWithTheNewThreshold()
    {
        ControlFixture fixture;
        fixture.settings.warningThreshold = 300;
        fixture.window->onSettingsChanged();
        QVERIFY(fixture.figure()->styleSheet().startsWith("color:#ff8800;"));
    }

    void change_rebuildsThePresets()
    {
        ControlFixture fixture;
        fixture.settings.presets = {90, 60};
        fixture.window->onSettingsChanged();
        const auto *list = fixture.named<QListWidget>("presetList");
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->item(0)->text(), QStringLiteral("1:30"));
        QCOMPARE(list->item(1)->text(), QStringLiteral("1 min"));
    }

    void change_renewsTheShortcuts()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(fixture.window.get()));
        fixture.settings.shortcutPlusMin = QStringLiteral("X");
        fixture.window->onSettingsChanged();
        QTest::keyClick(fixture.window.get(), Qt::Key_X);
        QCOMPARE(fixture.engine.remaining(), 360);
    }

    void change_emitsNoTickAndWritesNothing()
    {
        ControlFixture fixture;
        const QSignalSpy tick(&fixture.engine, &TimerEngine::tick);
        fixture.settings.defaultDuration = 754;
        fixture.window->onSettingsChanged();
        QCOMPARE(tick.count(), 0);
        QCOMPARE(storeBytes(), QByteArray());
    }

    void settingsButton_opensTheDialogModally()
    {
        ControlFixture fixture;
        fixture.showControl();
        const QWidget *owner = nullptr;
        QVERIFY(clickAndUse<SettingsDialog>(*fixture.button("⚙"), [&owner](SettingsDialog &dialog) {
            owner = dialog.parentWidget();
        }));
        QCOMPARE(owner, fixture.window.get());
    }

    void settingsDialog_isDestroyedAfterUse()
    {
        ControlFixture fixture;
        fixture.showControl();
        QPointer<SettingsDialog> used;
        QVERIFY(clickAndUse<SettingsDialog>(*fixture.button("⚙"),
                                            [&used](SettingsDialog &dialog) { used = &dialog; }));
        QVERIFY(!used);
    }

    void settingsDialog_reportsToTheWindow()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(
            clickAndUse<SettingsDialog>(*fixture.button("⚙"), [&fixture](SettingsDialog &dialog) {
                fixture.settings.defaultDuration = 754;
                emit dialog.settingsChanged();
            }));
        QCOMPARE(fixture.minutes()->value(), 12);
        QCOMPARE(fixture.seconds()->value(), 34);
    }

    void title_opensAboutModally()
    {
        ControlFixture fixture;
        fixture.showControl();
        const QWidget *owner = nullptr;
        QPointer<AboutDialog> used;
        QVERIFY(clickAndUse<AboutDialog>(*fixture.button("  VELMORA"),
                                         [&owner, &used](AboutDialog &dialog) {
                                             owner = dialog.parentWidget();
                                             used = &dialog;
                                         }));
        QCOMPARE(owner, fixture.window.get());
        QVERIFY(!used);
    }
};

VELMORA_TEST_MAIN(ControlWindowSettingsTest)
#include "tst_ControlWindowSettings.moc"
