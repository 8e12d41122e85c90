#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include "ControlFixture.h"
#include "DialogView.h"
#include "Modal.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

using Script = std::function<void(SettingsDialog &, const DialogView &)>;

// Opens the settings by their button and lets the person work in the dialog.
bool openSettings(ControlFixture &fixture, const Script &script)
{
    const ModalScript<SettingsDialog> person(
        [&script](SettingsDialog &dialog) { script(dialog, DialogView(dialog)); });
    fixture.button(QStringLiteral("⚙"))->click();
    return person.hasPlayed();
}

void captureKey(SettingsDialog &dialog, const DialogView &view, int row, Qt::Key key)
{
    view.showPage(QStringLiteral("Shortcuts"));
    QTest::mouseClick(view.setKeyButton(row), Qt::LeftButton);
    QTest::keyClick(dialog.windowHandle(), key);
}

} // namespace

// The way from the settings button through the dialog to everything that follows it.
class ControlWindowOpenSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void eachTime_aFreshDialogShowsTheRecord()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(openSettings(fixture, [](SettingsDialog &, const DialogView &view) {
            view.checkBox(QStringLiteral("Blink effect at zero"))->click();
            view.showPage(QStringLiteral("Timer"));
            view.cancelButton()->click();
        }));
        QVERIFY(openSettings(fixture, [](SettingsDialog &, const DialogView &view) {
            QVERIFY(view.checkBox(QStringLiteral("Blink effect at zero"))->isChecked());
            QVERIFY(view.page(QStringLiteral("Clock"))->isVisible());
        }));
        QVERIFY(fixture.window->findChildren<SettingsDialog *>().isEmpty());
    }

    void dialog_editsTheSharedRecord()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(openSettings(fixture, [](SettingsDialog &dialog, const DialogView &view) {
            QVERIFY(dialog.isModal());
            view.spinBoxesUnder(QStringLiteral("WARNING THRESHOLD")).at(0)->setValue(17);
            view.okButton()->click();
        }));
        QCOMPARE(fixture.settings.warningThreshold, 17);
        QCOMPARE(storedLines(), fieldLines(fixture.settings));
    }

    void ok_appliesWhileTheDialogIsStillOpen()
    {
        ControlFixture fixture;
        fixture.showControl();
        const QSpinBox *minutes = fixture.minutes();
        QString figureAtClosing;
        int minutesAtClosing = 0;
        QVERIFY(openSettings(fixture, [&](SettingsDialog &dialog, const DialogView &view) {
            connect(&dialog, &QDialog::accepted, &dialog, [&] {
                figureAtClosing = fixture.figure()->styleSheet();
                minutesAtClosing = minutes->value();
            });
            view.pick(QStringLiteral("Timer — normal"), QColor("#123456"));
            view.spinBoxesUnder(QStringLiteral("DEFAULT DURATION")).at(0)->setValue(12);
            view.okButton()->click();
        }));
        QVERIFY(figureAtClosing.startsWith("color:#123456;"));
        QCOMPARE(minutesAtClosing, 12);
        QVERIFY(fixture.outputFigure()->styleSheet().startsWith("color:#123456;"));
    }

    void ok_leavesTheRunningCountAlone()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.engine.start();
        passSecond(fixture.engine);
        QVERIFY(openSettings(fixture, [](SettingsDialog &, const DialogView &view) {
            view.spinBoxesUnder(QStringLiteral("DEFAULT DURATION")).at(0)->setValue(12);
            view.spinBoxesUnder(QStringLiteral("DEFAULT DURATION")).at(1)->setValue(34);
            view.okButton()->click();
        }));
        QVERIFY(fixture.engine.isRunning());
        QCOMPARE(fixture.engine.remaining(), 299);
        QCOMPARE(fixture.minutes()->value(), 12);
        QCOMPARE(fixture.seconds()->value(), 34);
    }

    void ok_withoutChange_redrawsAndSaves()
    {
        ControlFixture fixture;
        fixture.showControl();
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
        fixture.showControl();
        QVERIFY(openSettings(fixture, [](SettingsDialog &, const DialogView &view) {
            view.presets()->setCurrentRow(0);
            view.presetButton(QStringLiteral("Remove"))->click();
            view.presetButton(QStringLiteral("Add"))->click();
            view.presetButton(QStringLiteral("Add"))->click();
            view.okButton()->click();
        }));
        const auto *strip = fixture.named<QListWidget>("presetList");
        QStringList labels;
        for (int i = 0; i < strip->count(); ++i)
            labels << strip->item(i)->text();
        QCOMPARE(labels, QStringList({"10 min", "15 min", "30 min", "5 min", "5 min"}));
        QVERIFY(strip->selectedItems().isEmpty());
    }

    void cancel_appliesNothing()
    {
        ControlFixture fixture;
        fixture.showControl();
        saveSettings(fixture.settings);
        const QByteArray stored = storeBytes();
        const QStringList before = fieldLines(fixture.settings);
        const QString figure = fixture.figure()->styleSheet();
        fixture.enterTime(1, 2);
        QVERIFY(openSettings(fixture, [](SettingsDialog &, const DialogView &view) {
            view.pick(QStringLiteral("Timer — normal"), QColor("#123456"));
            view.spinBoxesUnder(QStringLiteral("DEFAULT DURATION")).at(0)->setValue(12);
            view.presetButton(QStringLiteral("Add"))->click();
            view.cancelButton()->click();
        }));
        QCOMPARE(fieldLines(fixture.settings), before);
        QCOMPARE(storeBytes(), stored);
        QCOMPARE(fixture.figure()->styleSheet(), figure);
        QCOMPARE(fixture.minutes()->value(), 1);
        QCOMPARE(fixture.named<QListWidget>("presetList")->count(), 4);
    }

    void capturedKey_worksAndTheOldOneDoesNot()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(openSettings(fixture, [](SettingsDialog &dialog, const DialogView &view) {
            captureKey(dialog, view, 2, Qt::Key_X);
            view.okButton()->click();
        }));
        fixture.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(fixture.window.get()));
        QTest::keyClick(fixture.window->windowHandle(), Qt::Key_Up);
        QCOMPARE(fixture.engine.remaining(), 300);
        QTest::keyClick(fixture.window->windowHandle(), Qt::Key_X);
        QCOMPARE(fixture.engine.remaining(), 360);
    }

    void clearedKey_noLongerWorks()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(openSettings(fixture, [](SettingsDialog &, const DialogView &view) {
            view.clearKeyButton(2)->click();
            view.okButton()->click();
        }));
        fixture.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(fixture.window.get()));
        QTest::keyClick(fixture.window->windowHandle(), Qt::Key_Up);
        QCOMPARE(fixture.engine.remaining(), 300);
        QTest::keyClick(fixture.window->windowHandle(), Qt::Key_Down); // the others still do
        QCOMPARE(fixture.engine.remaining(), 240);
    }

    void shortcutKey_whileTheDialogIsOpen_doesNothing()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(openSettings(fixture, [](SettingsDialog &dialog, const DialogView &) {
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Up);
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Space);
        }));
        QCOMPARE(fixture.engine.remaining(), 300);
        QVERIFY(!fixture.engine.isRunning());
    }

    void shortcutKey_canBeCapturedWithoutActing()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(openSettings(fixture, [](SettingsDialog &dialog, const DialogView &view) {
            captureKey(dialog, view, 1, Qt::Key_Up);
            QCOMPARE(view.keyLabel(1)->text(), QStringLiteral("Up"));
            view.okButton()->click();
        }));
        QCOMPARE(fixture.engine.remaining(), 300);
        QCOMPARE(fixture.settings.shortcutReset, QStringLiteral("Up"));
        QCOMPARE(fixture.settings.shortcutPlusMin, QStringLiteral("Up"));
    }
};

VELMORA_TEST_MAIN(ControlWindowOpenSettingsTest)
#include "tst_ControlWindowOpenSettings.moc"
