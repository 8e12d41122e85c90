#include <type_traits>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QMetaMethod>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

// Moves every control of the dialog away from what unusualRecord() shows.
void editEverything(const DialogView &view)
{
    view.radio(QStringLiteral("24-hour  (14:30)"))->click();
    view.checkBox(QStringLiteral("Show seconds on output"))->click();
    view.pick(QStringLiteral("Background"), QColor(101, 102, 103));
    view.pick(QStringLiteral("Timer — normal"), QColor(104, 105, 106));
    view.pick(QStringLiteral("Timer — warning"), QColor(107, 108, 109));
    view.pick(QStringLiteral("Timer — critical"), QColor(110, 111, 112));
    view.pick(QStringLiteral("Clock"), QColor(113, 114, 115));
    view.pick(QStringLiteral("Message"), QColor(116, 117, 118));
    view.clearImageButton()->click();
    view.fontSize(QStringLiteral("Timer font size"))->setValue(550);
    view.fontSize(QStringLiteral("Clock font size"))->setValue(300);
    view.fontSize(QStringLiteral("Message font size"))->setValue(150);
    view.checkBox(QStringLiteral("Overtime — continue counting in red past zero"))->click();
    view.checkBox(QStringLiteral("Blink effect at zero"))->click();
    view.spinBoxesUnder(QStringLiteral("DEFAULT DURATION")).at(0)->setValue(20);
    view.spinBoxesUnder(QStringLiteral("DEFAULT DURATION")).at(1)->setValue(21);
    view.spinBoxesUnder(QStringLiteral("WARNING THRESHOLD")).at(0)->setValue(3600);
    view.presetButton(QStringLiteral("Add"))->click();
    view.resetKeysButton()->click();
}

} // namespace

class SettingsDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void metaObject_declaresOneSignalThenFourSlots()
    {
        static_assert(std::is_base_of_v<QDialog, SettingsDialog>);
        const QMetaObject &meta = SettingsDialog::staticMetaObject;
        QCOMPARE(meta.superClass(), &QDialog::staticMetaObject);
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QMetaMethod method = meta.method(i);
            const QString kind = method.methodType() == QMetaMethod::Signal
                ? QStringLiteral("signal ")
                : method.methodType() == QMetaMethod::Slot ? QStringLiteral("slot ")
                                                           : QStringLiteral("other ");
            methods << kind + QString::fromLatin1(method.methodSignature());
        }
        QCOMPARE(methods,
                 QStringList({"signal settingsChanged()", "slot accept()",
                              "slot pickColor(QColor&,QPushButton*)", "slot addPreset()",
                              "slot removePreset()"}));
    }

    void fresh_hasTitleMinimumWidthAndParent()
    {
        AppSettings record;
        QWidget parent;
        const SettingsDialog dialog(&record, &parent);
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Settings"));
        QCOMPARE(dialog.minimumWidth(), 420);
        QCOMPARE(dialog.parentWidget(), &parent);
    }

    void fresh_ownsEveryWidgetThatItMade()
    {
        AppSettings record;
        const SettingsDialog dialog(&record, nullptr);
        const QWidgetList windows = QApplication::topLevelWidgets();
        QCOMPARE(windows.size(), 1);
        QCOMPARE(windows.first(), &dialog);
    }

    void fresh_showsTheFiveTabsInOrder()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const QTabWidget *tabs = DialogView(dialog).tabs();
        QStringList titles;
        for (int i = 0; i < tabs->count(); ++i)
            titles << tabs->tabText(i);
        QCOMPARE(titles, QStringList({"Clock", "Colors", "Fonts", "Timer", "Shortcuts"}));
        QCOMPARE(tabs->currentIndex(), 0);
    }

    void column_holdsTabsThenButtonsThenUpdateButton()
    {
        AppSettings record;
        const SettingsDialog dialog(&record, nullptr);
        const auto *column = qobject_cast<QVBoxLayout *>(dialog.layout());
        QVERIFY(column);
        QCOMPARE(column->count(), 3);
        QVERIFY(qobject_cast<QTabWidget *>(column->itemAt(0)->widget()));
        const auto *box = qobject_cast<QDialogButtonBox *>(column->itemAt(1)->widget());
        QVERIFY(box);
        QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        const auto *button = qobject_cast<QPushButton *>(column->itemAt(2)->widget());
        QVERIFY(button);
        QCOMPARE(button->text(), QStringLiteral("Check for Updates"));
        QCOMPARE(button->styleSheet(), QStringLiteral("color:#aaa; font-size:11px;"));
        QCOMPARE(column->itemAt(2)->alignment(), Qt::Alignment(Qt::AlignLeft));
    }

    void updateButton_sitsUnderTheButtonsAtTheLeft()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        dialog.show();
        const QRect box = dialog.findChild<QDialogButtonBox *>()->geometry();
        const QRect button = dialog.layout()->itemAt(2)->widget()->geometry();
        QVERIFY(button.top() > box.bottom());
        QCOMPARE(button.left(), box.left());
        QVERIFY(button.width() < box.width());
    }

    void opening_writesNothing()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        dialog.show();
        QCOMPARE(fieldLines(record), fieldLines(unusualRecord()));
        QVERIFY(!storeExists());
    }

    void ok_withoutChange_savesAndReportsOnce()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const QSignalSpy changes(&dialog, &SettingsDialog::settingsChanged);
        const int result = execWith(dialog, [&] { DialogView(dialog).okButton()->click(); });
        QCOMPARE(result, int(QDialog::Accepted));
        QCOMPARE(changes.size(), 1);
        QVERIFY(storeExists());
        QCOMPARE(storedLines(), fieldLines(AppSettings()));
    }

    void ok_withoutChange_keepsTheRecord()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        execWith(dialog, [&] { DialogView(dialog).okButton()->click(); });
        QCOMPARE(fieldLines(record), fieldLines(unusualRecord()));
        QCOMPARE(storedLines(), fieldLines(unusualRecord()));
    }

    void ok_takesOverEveryControl()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        execWith(dialog, [&] {
            const DialogView view(dialog);
            editEverything(view);
            view.okButton()->click();
        });

        AppSettings wanted; // the booleans and the shortcuts are back at their defaults
        wanted.bgColor = QColor(101, 102, 103);
        wanted.timerColorNormal = QColor(104, 105, 106);
        wanted.timerColorWarning = QColor(107, 108, 109);
        wanted.timerColorCritical = QColor(110, 111, 112);
        wanted.clockColor = QColor(113, 114, 115);
        wanted.messageColor = QColor(116, 117, 118);
        wanted.timerFontSize = 550;
        wanted.clockFontSize = 300;
        wanted.messageFontSize = 150;
        wanted.defaultDuration = 1221;
        wanted.warningThreshold = 3600;
        wanted.presets = {45, 90, 45, 300};
        wanted.soundFilePath = unusualRecord().soundFilePath;
        wanted.soundEnabled = true;
        QCOMPARE(fieldLines(record), fieldLines(wanted));
        QCOMPARE(storedLines(), fieldLines(wanted));
    }

    void ok_reportsAfterSavingAndBeforeClosing()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        QStringList order;
        connect(&dialog, &SettingsDialog::settingsChanged, this, [&] {
            order << QStringLiteral("changed");
            QCOMPARE(record.warningThreshold, 17);
            QVERIFY(storeBytes().contains("warningThreshold=17"));
            QVERIFY(dialog.isVisible());
            QCOMPARE(dialog.result(), int(QDialog::Rejected)); // as exec() sets it out
        });
        connect(&dialog, &QDialog::accepted, this, [&] { order << QStringLiteral("accepted"); });
        execWith(dialog, [&] {
            const DialogView view(dialog);
            view.spinBoxesUnder(QStringLiteral("WARNING THRESHOLD")).at(0)->setValue(17);
            view.okButton()->click();
        });
        QCOMPARE(order, QStringList({"changed", "accepted"}));
    }

    // The Control window edits and saves the sound; the dialog has no control for it.
    void ok_leavesSoundToTheRecord()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        execWith(dialog, [&] {
            record.soundFilePath = QStringLiteral("/sounds/bell.ogg");
            record.soundEnabled = false;
            record.warningThreshold = 99; // unlike the sound, this one is the dialog's
            DialogView(dialog).okButton()->click();
        });
        QCOMPARE(record.soundFilePath, QStringLiteral("/sounds/bell.ogg"));
        QVERIFY(!record.soundEnabled);
        QCOMPARE(record.warningThreshold, 17);
        QCOMPARE(storedLines(), fieldLines(record));
    }

    void ok_withUnwritableStore_stillTakesEffect()
    {
        blockStore();
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const QSignalSpy changes(&dialog, &SettingsDialog::settingsChanged);
        const int result = execWith(dialog, [&] {
            const DialogView view(dialog);
            view.checkBox(QStringLiteral("Blink effect at zero"))->click();
            view.okButton()->click();
        });
        removeStore();
        QCOMPARE(result, int(QDialog::Accepted));
        QCOMPARE(changes.size(), 1);
        QVERIFY(!record.blinkEnabled);
    }

    void acceptSlot_doesWhatOkDoes()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const QSignalSpy changes(&dialog, &SettingsDialog::settingsChanged);
        const int result = execWith(dialog, [&] {
            DialogView(dialog).checkBox(QStringLiteral("Blink effect at zero"))->click();
            QVERIFY(QMetaObject::invokeMethod(&dialog, "accept"));
        });
        QCOMPARE(result, int(QDialog::Accepted));
        QCOMPARE(changes.size(), 1);
        QVERIFY(!record.blinkEnabled);
    }

    void enter_idle_pressesOk()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const QSignalSpy changes(&dialog, &SettingsDialog::settingsChanged);
        const int result =
            execWith(dialog, [&] { QTest::keyClick(dialog.windowHandle(), Qt::Key_Return); });
        QCOMPARE(result, int(QDialog::Accepted));
        QCOMPARE(changes.size(), 1);
    }

    void edits_beforeOk_stayInTheDialog()
    {
        saveSettings(unusualRecord());
        const QByteArray stored = storeBytes();
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        const QSignalSpy changes(&dialog, &SettingsDialog::settingsChanged);
        execWith(dialog, [&] {
            editEverything(DialogView(dialog));
            QCOMPARE(fieldLines(record), fieldLines(unusualRecord()));
            QCOMPARE(storeBytes(), stored);
            QCOMPARE(changes.size(), 0);
        });
    }

    void closing_withoutOk_changesNothing_data()
    {
        QTest::addColumn<std::function<void(QDialog &)>>("leave");
        using Leave = std::function<void(QDialog &)>;
        QTest::newRow("Cancel") << Leave([](QDialog &d) { DialogView(d).cancelButton()->click(); });
        QTest::newRow("Escape") << Leave(
            [](QDialog &d) { QTest::keyClick(d.windowHandle(), Qt::Key_Escape); });
        QTest::newRow("close button") << Leave([](QDialog &d) { d.close(); });
    }

    void closing_withoutOk_changesNothing()
    {
        QFETCH(const std::function<void(QDialog &)>, leave);
        saveSettings(unusualRecord());
        const QByteArray stored = storeBytes();
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        const QSignalSpy changes(&dialog, &SettingsDialog::settingsChanged);
        const QSignalSpy rejections(&dialog, &QDialog::rejected);
        bool closed = false;
        const int result = execWith(dialog, [&] {
            editEverything(DialogView(dialog));
            leave(dialog);
            closed = !dialog.isVisible();
        });
        QVERIFY(closed);
        QCOMPARE(result, int(QDialog::Rejected));
        QCOMPARE(rejections.size(), 1);
        QCOMPARE(changes.size(), 0);
        QCOMPARE(fieldLines(record), fieldLines(unusualRecord()));
        QCOMPARE(storeBytes(), stored);
    }
};

VELMORA_TEST_MAIN(SettingsDialogTest)
#include "tst_SettingsDialog.moc"
