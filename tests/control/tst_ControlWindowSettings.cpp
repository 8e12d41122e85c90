#include <QCheckBox>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include "AboutDialog.h"
#include "ControlFixture.h"
#include "DialogView.h"
#include "Modal.h"
#include "Operated.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

/// Opens the settings by their button and lets the operator work in the dialog.
bool openSettings(ControlFixture &fixture,
                  const std::function<void(SettingsDialog &, const DialogView &)> &script)
{
    fixture.showControl();
    const ModalScript<SettingsDialog> operatorAtWork(
        [&script](SettingsDialog &dialog) { script(dialog, DialogView(dialog)); });
    fixture.button("⚙")->click();
    return operatorAtWork.hasPlayed();
}

void captureKey(SettingsDialog &dialog, const DialogView &view, int row, Qt::Key key)
{
    view.showPage("Shortcuts");
    QTest::mouseClick(view.setKeyButton(row), Qt::LeftButton);
    QTest::keyClick(dialog.windowHandle(), key);
}

} // namespace

/// What a change of the record does, and the two modal dialogs that the window opens.
class ControlWindowSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void defaultDuration_isInTheSetTimeRow_data()
    {
        QTest::addColumn<int>("duration");
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::newRow("odd seconds") << 754 << 12 << 34;
        QTest::newRow("zero") << 0 << 0 << 0;
        QTest::newRow("below a minute") << 59 << 0 << 59;
        QTest::newRow("largest") << 59940 << 999 << 0;
    }

    // At start, and again with each change.
    void defaultDuration_isInTheSetTimeRow()
    {
        QFETCH(int, duration);
        ControlFixture started(recordWith(&AppSettings::defaultDuration, duration));
        ControlFixture changed;
        changed.settings.defaultDuration = duration;
        changed.window->onSettingsChanged();
        for (const ControlFixture *fixture : {&started, &changed}) {
            QTEST(fixture->minutes()->value(), "minutes");
            QTEST(fixture->seconds()->value(), "seconds");
        }
    }

    void change_leavesCountDurationAndStoreAlone()
    {
        ControlFixture fixture;
        fixture.engine.start();
        passSecond(fixture.engine);
        const QSignalSpy tick(&fixture.engine, &TimerEngine::tick);
        fixture.settings.defaultDuration = 754;
        fixture.window->onSettingsChanged();
        QCOMPARE(tick.count(), 0);
        QVERIFY(fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 299);
        QCOMPARE(fixture.figure()->text(), "04:59");
        QCOMPARE(storeBytes(), QByteArray());
        fixture.engine.reset();
        QCOMPARE(fixture.engine.remaining(), 300);
        QCOMPARE(fixture.outputBar()->value(), 1000); // its full scale is still of the 300
        fixture.button("Set")->click();
        QCOMPARE(fixture.engine.remaining(), 754);
    }

    void change_passesOnOvertime()
    {
        for (const bool enabled : {true, false}) {
            ControlFixture fixture(recordWith(&AppSettings::defaultDuration, 1,
                                              &AppSettings::overtimeEnabled, !enabled));
            fixture.settings.overtimeEnabled = enabled;
            fixture.window->onSettingsChanged();
            fixture.engine.start();
            passSecond(fixture.engine);
            QCOMPARE(fixture.engine.isRunning(), enabled);
        }
    }

    void change_redrawsBothWindows()
    {
        ControlFixture fixture;
        fixture.settings.timerColorNormal = QColor("#123456");
        fixture.settings.messageColor = QColor("#654321");
        fixture.window->onSettingsChanged();
        QVERIFY(fixture.figure()->styleSheet().startsWith("color:#123456;"));
        QVERIFY(fixture.outputMessage()->styleSheet().startsWith("color:#654321;"));
        fixture.settings.warningThreshold = 300;
        fixture.window->onSettingsChanged();
        QVERIFY(fixture.figure()->styleSheet().startsWith("color:#ff8800;"));
    }

    void settingsButton_opensTheDialogModallyAndDestroysIt()
    {
        ControlFixture fixture;
        QPointer<SettingsDialog> used;
        QVERIFY(openSettings(fixture, [&](SettingsDialog &dialog, const DialogView &) {
            used = &dialog;
            QVERIFY(dialog.isModal());
            QCOMPARE(dialog.parentWidget(), fixture.window.get());
        }));
        QVERIFY(!used);
    }

    void title_opensAboutModallyAndDestroysIt()
    {
        ControlFixture fixture;
        fixture.showControl();
        QPointer<AboutDialog> used;
        const ModalScript<AboutDialog> operatorAtWork([&](AboutDialog &dialog) {
            used = &dialog;
            QCOMPARE(dialog.parentWidget(), fixture.window.get());
        });
        fixture.button("  VELMORA")->click();
        QVERIFY(operatorAtWork.hasPlayed());
        QVERIFY(!used);
    }

    void eachTime_aFreshDialogShowsTheRecord()
    {
        ControlFixture fixture;
        QVERIFY(openSettings(fixture, [](SettingsDialog &, const DialogView &view) {
            view.checkBox("Blink effect at zero")->click();
            view.showPage("Timer");
            view.cancelButton()->click();
        }));
        QVERIFY(openSettings(fixture, [](SettingsDialog &, const DialogView &view) {
            QVERIFY(view.checkBox("Blink effect at zero")->isChecked());
            QVERIFY(view.page("Clock")->isVisible());
        }));
    }

    void ok_appliesTheSharedRecordWhileTheDialogIsStillOpen()
    {
        ControlFixture fixture;
        QString figureAtClosing;
        int minutesAtClosing = 0;
        QVERIFY(openSettings(fixture, [&](SettingsDialog &dialog, const DialogView &view) {
            connect(&dialog, &QDialog::accepted, &dialog, [&] {
                figureAtClosing = fixture.figure()->styleSheet();
                minutesAtClosing = fixture.minutes()->value();
            });
            view.pick("Timer — normal", QColor("#123456"));
            view.spinBoxesUnder("DEFAULT DURATION").at(0)->setValue(12);
            view.okButton()->click();
        }));
        QVERIFY(figureAtClosing.startsWith("color:#123456;"));
        QCOMPARE(minutesAtClosing, 12);
        QVERIFY(fixture.outputFigure()->styleSheet().startsWith("color:#123456;"));
        QCOMPARE(fixture.settings.timerColorNormal, QColor("#123456"));
        QCOMPARE(storedLines(), fieldLines(fixture.settings));
    }

    void ok_withoutChange_redrawsAndSaves()
    {
        ControlFixture fixture;
        fixture.enterTime(1, 2); // put back to the default by the change that OK reports
        QVERIFY(openSettings(fixture,
                             [](SettingsDialog &, const DialogView &v) { v.okButton()->click(); }));
        QCOMPARE(fixture.minutes()->value(), 5);
        QCOMPARE(fixture.seconds()->value(), 0);
        QCOMPARE(storedLines(), fieldLines(fixture.settings));
    }

    void ok_withNewPresets_rebuildsTheStrip()
    {
        ControlFixture fixture;
        QVERIFY(openSettings(fixture, [](SettingsDialog &, const DialogView &view) {
            view.presets()->setCurrentRow(0);
            view.presetButton("Remove")->click();
            view.presetButton("Add")->click();
            view.presetButton("Add")->click();
            view.okButton()->click();
        }));
        QStringList labels;
        for (int i = 0; i < fixture.strip()->count(); ++i)
            labels << fixture.strip()->item(i)->text();
        QCOMPARE(labels, QStringList({"10 min", "15 min", "30 min", "5 min", "5 min"}));
        QVERIFY(fixture.strip()->selectedItems().isEmpty());
    }

    void cancel_appliesNothing()
    {
        ControlFixture fixture;
        saveSettings(fixture.settings);
        const QByteArray stored = storeBytes();
        const QStringList before = fieldLines(fixture.settings);
        const QString figure = fixture.figure()->styleSheet();
        fixture.enterTime(1, 2);
        QVERIFY(openSettings(fixture, [](SettingsDialog &, const DialogView &view) {
            view.pick("Timer — normal", QColor("#123456"));
            view.spinBoxesUnder("DEFAULT DURATION").at(0)->setValue(12);
            view.presetButton("Add")->click();
            view.cancelButton()->click();
        }));
        QCOMPARE(fieldLines(fixture.settings), before);
        QCOMPARE(storeBytes(), stored);
        QCOMPARE(fixture.figure()->styleSheet(), figure);
        QCOMPARE(fixture.minutes()->value(), 1);
        QCOMPARE(fixture.strip()->count(), 4);
    }

    void capturedKey_worksAndOldAndClearedOnesDoNot()
    {
        ControlFixture fixture;
        QVERIFY(openSettings(fixture, [](SettingsDialog &dialog, const DialogView &view) {
            captureKey(dialog, view, 2, Qt::Key_X);
            view.clearKeyButton(1)->click();
            view.okButton()->click();
        }));
        QVERIFY(focus(*fixture.window));
        press(*fixture.window, Qt::Key_Up);
        QCOMPARE(fixture.engine.remaining(), 300);
        press(*fixture.window, Qt::Key_X);
        QCOMPARE(fixture.engine.remaining(), 360);
        fixture.engine.start();
        press(*fixture.window, Qt::Key_R);
        QVERIFY(fixture.engine.isRunning());
        press(*fixture.window, Qt::Key_Down); // the others still do
        QCOMPARE(fixture.engine.remaining(), 300);
    }

    void shortcutKey_whileTheDialogIsOpen_canBeCapturedAndDoesNothing()
    {
        ControlFixture fixture;
        QVERIFY(openSettings(fixture, [](SettingsDialog &dialog, const DialogView &view) {
            for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Space, Qt::Key_O})
                QTest::keyClick(dialog.windowHandle(), key);
            captureKey(dialog, view, 1, Qt::Key_Up);
            QCOMPARE(view.keyLabel(1)->text(), "Up");
            view.okButton()->click();
        }));
        QCOMPARE(fixture.engine.remaining(), 300);
        QVERIFY(!fixture.engine.isRunning());
        QVERIFY(!fixture.output.isVisible());
        QCOMPARE(fixture.settings.shortcutReset, "Up");
        QCOMPARE(fixture.settings.shortcutPlusMin, "Up");
    }
};

VELMORA_TEST_MAIN(ControlWindowSettingsTest)
#include "tst_ControlWindowSettings.moc"
