#include <limits>

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "Outline.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

using Flag = bool AppSettings::*;
using Number = int AppSettings::*;

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

} // namespace

// The Clock, Fonts and Timer pages, but for the presets, and the check boxes of every page.
class SettingsDialogPagesTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void clockPage_readsFromTopToBottom()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const auto *column =
            qobject_cast<QVBoxLayout *>(DialogView(dialog).page(QStringLiteral("Clock"))->layout());
        QVERIFY(column);
        QCOMPARE(column->spacing(), 12);
        QCOMPARE(outlineOf(*column),
                 QStringList({"header FORMAT", "radio 24-hour  (14:30)", "radio 12-hour  (2:30 PM)",
                              "separator", "header SECONDS", "check Show seconds on output",
                              "stretch"}));
    }

    void clockForm_showsTheRecord_data()
    {
        QTest::addColumn<bool>("is24hr");
        QTest::newRow("24-hour") << true;
        QTest::newRow("12-hour") << false;
    }

    void clockForm_showsTheRecord()
    {
        QFETCH(const bool, is24hr);
        AppSettings record;
        record.clock24hr = is24hr;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QCOMPARE(view.radio(QStringLiteral("24-hour  (14:30)"))->isChecked(), is24hr);
        QCOMPARE(view.radio(QStringLiteral("12-hour  (2:30 PM)"))->isChecked(), !is24hr);
    }

    void clockForms_excludeEachOtherWithoutAGroup()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QRadioButton *full = view.radio(QStringLiteral("24-hour  (14:30)"));
        QRadioButton *half = view.radio(QStringLiteral("12-hour  (2:30 PM)"));
        QVERIFY(!full->group());
        QVERIFY(!half->group());
        execWith(dialog, [&] {
            QTest::mouseClick(half, Qt::LeftButton, {}, QPoint(10, half->height() / 2));
            QVERIFY(!full->isChecked());
            view.okButton()->click();
        });
        QVERIFY(!record.clock24hr);
    }

    void checkBox_showsAndStoresItsField_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Flag>("field");
        QTest::newRow("seconds") << "Show seconds on output" << &AppSettings::clockShowSeconds;
        QTest::newRow("image") << "Use image instead of background colour"
                               << &AppSettings::bgImageEnabled;
        QTest::newRow("overtime") << "Overtime — continue counting in red past zero"
                                  << &AppSettings::overtimeEnabled;
        QTest::newRow("blink") << "Blink effect at zero" << &AppSettings::blinkEnabled;
    }

    void checkBox_showsAndStoresItsField()
    {
        QFETCH(const QString, text);
        QFETCH(const Flag, field);
        for (const bool initial : {false, true}) {
            AppSettings record;
            record.*field = initial;
            SettingsDialog dialog(&record, nullptr);
            const DialogView view(dialog);
            QVERIFY(view.checkBox(text));
            QCOMPARE(view.checkBox(text)->isChecked(), initial);
            execWith(dialog, [&] {
                view.checkBox(text)->click();
                view.okButton()->click();
            });
            AppSettings wanted;
            wanted.*field = !initial;
            QCOMPARE(fieldLines(record), fieldLines(wanted)); // this one and no other
            QCOMPARE(storedLines(), fieldLines(wanted));
        }
    }

    void fontsPage_readsFromTopToBottom()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const auto *form =
            qobject_cast<QFormLayout *>(DialogView(dialog).page(QStringLiteral("Fonts"))->layout());
        QVERIFY(form);
        QCOMPARE(form->horizontalSpacing(), 10);
        QCOMPARE(form->verticalSpacing(), 10);
        QCOMPARE(outlineOf(*form),
                 QStringList({"Timer font size: stepper", "Clock font size: stepper",
                              "Message font size: stepper"}));
    }

    void fontSize_hasItsRangeAndSuffix_data()
    {
        QTest::addColumn<QString>("rowLabel");
        QTest::addColumn<int>("minimum");
        QTest::addColumn<int>("maximum");
        QTest::newRow("timer") << "Timer font size" << 30 << 550;
        QTest::newRow("clock") << "Clock font size" << 20 << 300;
        QTest::newRow("message") << "Message font size" << 12 << 150;
    }

    void fontSize_hasItsRangeAndSuffix()
    {
        QFETCH(const QString, rowLabel);
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const QSpinBox *spinBox = DialogView(dialog).fontSize(rowLabel);
        QVERIFY(spinBox);
        QTEST(spinBox->minimum(), "minimum");
        QTEST(spinBox->maximum(), "maximum");
        QCOMPARE(spinBox->suffix(), QStringLiteral(" px"));
    }

    void fontSize_showsAndStoresItsField_data()
    {
        QTest::addColumn<QString>("rowLabel");
        QTest::addColumn<Number>("field");
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("shown");
        const struct
        {
            const char *label;
            Number field;
            int minimum;
            int maximum;
        } rows[] = {
            {"Timer font size", &AppSettings::timerFontSize, 30, 550},
            {"Clock font size", &AppSettings::clockFontSize, 20, 300},
            {"Message font size", &AppSettings::messageFontSize, 12, 150},
        };
        for (const auto &row : rows) {
            const QString label = QString::fromLatin1(row.label);
            const auto add = [&](const char *what, int value, int shown) {
                QTest::addRow("%s: %s", row.label, what) << label << row.field << value << shown;
            };
            add("minimum", row.minimum, row.minimum);
            add("within", row.minimum + 7, row.minimum + 7);
            add("maximum", row.maximum, row.maximum);
            add("below", row.minimum - 1, row.minimum);
            add("above", row.maximum + 1, row.maximum);
            add("lowest number", lowest, row.minimum);
            add("highest number", highest, row.maximum);
        }
    }

    void fontSize_showsAndStoresItsField()
    {
        QFETCH(const QString, rowLabel);
        QFETCH(const Number, field);
        QFETCH(const int, value);
        QFETCH(const int, shown);
        AppSettings record;
        record.*field = value;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QCOMPARE(view.fontSize(rowLabel)->value(), shown);
        execWith(dialog, [&] { view.okButton()->click(); });
        AppSettings wanted;
        wanted.*field = shown;
        QCOMPARE(fieldLines(record), fieldLines(wanted));
    }

    void timerPage_readsFromTopToBottom()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const auto *column =
            qobject_cast<QVBoxLayout *>(DialogView(dialog).page(QStringLiteral("Timer"))->layout());
        QVERIFY(column);
        QCOMPARE(column->spacing(), 10);
        QCOMPARE(
            outlineOf(*column),
            QStringList({"header BEHAVIOUR", "check Overtime — continue counting in red past zero",
                         "check Blink effect at zero", "separator", "header DEFAULT DURATION",
                         "[stepper, stepper, stretch]", "separator", "header WARNING THRESHOLD",
                         "stepper", "separator", "header PRESETS", "list",
                         "[stepper, stepper, button Add, button Remove, stretch]", "stretch"}));
    }

    void defaultDuration_hasItsRangesAndSuffixes()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const QList<QSpinBox *> spinBoxes =
            DialogView(dialog).spinBoxesUnder(QStringLiteral("DEFAULT DURATION"));
        QCOMPARE(spinBoxes.size(), 2);
        QCOMPARE(spinBoxes.at(0)->minimum(), 0);
        QCOMPARE(spinBoxes.at(0)->maximum(), 999);
        QCOMPARE(spinBoxes.at(0)->suffix(), QStringLiteral(" min"));
        QCOMPARE(spinBoxes.at(1)->minimum(), 0);
        QCOMPARE(spinBoxes.at(1)->maximum(), 59);
        QCOMPARE(spinBoxes.at(1)->suffix(), QStringLiteral(" sec"));
    }

    void defaultDuration_isSplitAndStored_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<int>("stored");
        QTest::newRow("nothing") << 0 << 0 << 0 << 0;
        QTest::newRow("seconds only") << 59 << 0 << 59 << 59;
        QTest::newRow("one minute") << 60 << 1 << 0 << 60;
        QTest::newRow("five minutes") << 300 << 5 << 0 << 300;
        QTest::newRow("both") << 754 << 12 << 34 << 754;
        QTest::newRow("999 min") << 59940 << 999 << 0 << 59940;
        QTest::newRow("999 min 59 sec") << 59999 << 999 << 59 << 59999;
        QTest::newRow("1000 min 1 sec") << 60001 << 999 << 1 << 59941;
        QTest::newRow("highest number") << highest << 999 << 7 << 59947;
        QTest::newRow("-1 min -1 sec") << -61 << 0 << 0 << 0;
        QTest::newRow("lowest number") << lowest << 0 << 0 << 0;
    }

    void defaultDuration_isSplitAndStored()
    {
        QFETCH(const int, value);
        AppSettings record;
        record.defaultDuration = value;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        const QList<QSpinBox *> spinBoxes = view.spinBoxesUnder(QStringLiteral("DEFAULT DURATION"));
        QTEST(spinBoxes.at(0)->value(), "minutes");
        QTEST(spinBoxes.at(1)->value(), "seconds");
        execWith(dialog, [&] { view.okButton()->click(); });
        QTEST(record.defaultDuration, "stored");
    }

    // The dialog takes up to 59 seconds more than a load lets through. Both are intended.
    void defaultDuration_ofNearlyAThousandMinutesIsStoredUnclamped()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            const QList<QSpinBox *> spinBoxes =
                view.spinBoxesUnder(QStringLiteral("DEFAULT DURATION"));
            spinBoxes.at(0)->setValue(999);
            spinBoxes.at(1)->setValue(59);
            view.okButton()->click();
        });
        QCOMPARE(record.defaultDuration, 59999);
        QVERIFY(storeBytes().contains("defaultDuration=59999\n"));
        loadSettings(record);
        QCOMPARE(record.defaultDuration, 59940);
    }

    void warningThreshold_hasItsRangeAndSuffix()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const QList<QSpinBox *> spinBoxes =
            DialogView(dialog).spinBoxesUnder(QStringLiteral("WARNING THRESHOLD"));
        QCOMPARE(spinBoxes.size(), 1);
        QCOMPARE(spinBoxes.at(0)->minimum(), 1);
        QCOMPARE(spinBoxes.at(0)->maximum(), 3600);
        QCOMPARE(spinBoxes.at(0)->suffix(), QStringLiteral(" sec"));
    }

    void warningThreshold_showsAndStoresItsField_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("shown");
        QTest::newRow("minimum") << 1 << 1;
        QTest::newRow("within") << 61 << 61;
        QTest::newRow("maximum") << 3600 << 3600;
        QTest::newRow("nought") << 0 << 1;
        QTest::newRow("above") << 3601 << 3600;
        QTest::newRow("lowest number") << lowest << 1;
        QTest::newRow("highest number") << highest << 3600;
    }

    void warningThreshold_showsAndStoresItsField()
    {
        QFETCH(const int, value);
        QFETCH(const int, shown);
        AppSettings record;
        record.warningThreshold = value;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QCOMPARE(view.spinBoxesUnder(QStringLiteral("WARNING THRESHOLD")).at(0)->value(), shown);
        execWith(dialog, [&] { view.okButton()->click(); });
        QCOMPARE(record.warningThreshold, shown);
    }

    void numberInputs_areAllSteppers()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        const QList<QSpinBox *> spinBoxes = dialog.findChildren<QSpinBox *>();
        QCOMPARE(spinBoxes.size(), 8);
        for (QSpinBox *spinBox : spinBoxes) {
            spinBox->setValue(40); // within every range
            const QList<QPushButton *> buttons =
                spinBox->parentWidget()->findChildren<QPushButton *>(Qt::FindDirectChildrenOnly);
            QCOMPARE(buttons.size(), 2);
            QCOMPARE(buttons.at(0)->text(), QStringLiteral("◀"));
            QCOMPARE(buttons.at(1)->text(), QStringLiteral("▶"));
            buttons.at(0)->click();
            QCOMPARE(spinBox->value(), 39);
            buttons.at(1)->click();
            buttons.at(1)->click();
            QCOMPARE(spinBox->value(), 41);
        }
    }

    void longestNumbers_fitTheirSteppers()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        dialog.show();
        for (const QString &title : {QStringLiteral("Fonts"), QStringLiteral("Timer")}) {
            const QList<QSpinBox *> spinBoxes = view.showPage(title)->findChildren<QSpinBox *>();
            for (QSpinBox *spinBox : spinBoxes) {
                spinBox->setValue(spinBox->maximum());
                QCOMPARE(spinBox->parentWidget()->height(), 32);
                QVERIFY(spinBox->width()
                        >= spinBox->fontMetrics().horizontalAdvance(spinBox->text()));
            }
        }
    }
};

VELMORA_TEST_MAIN(SettingsDialogPagesTest)
#include "tst_SettingsDialogPages.moc"
