#include <limits>

#include <QBoxLayout>
#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>

#include "Editor.h"
#include "Record.h"
#include "Store.h"
#include "TestMain.h"

namespace {

using Flag = bool AppSettings::*;
using Number = int AppSettings::*;

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

const QString headerLook = "color:#888;font-size:10px;font-weight:bold;letter-spacing:1px;";
const QString separatorLook = "color:#3a3a3a;";
const QString hintText = "Click “Set Key”, then press any key or combination (e.g. Ctrl+1) on your "
                         "keyboard or Stream Deck.\nPress Escape to cancel.";

QString textOf(const QLayout &layout);

QString textOf(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return (label->styleSheet() == headerLook ? "header " : "label ") + label->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        const char *kind = qobject_cast<const QRadioButton *>(button) ? "radio "
            : qobject_cast<const QCheckBox *>(button)                 ? "check "
                                                                      : "button ";
        return kind + button->text();
    }
    if (qobject_cast<const QListWidget *>(&widget))
        return "list";
    if (const auto *frame = qobject_cast<const QFrame *>(&widget)) {
        const bool isLine = frame->frameShape() == QFrame::HLine;
        return isLine && frame->styleSheet() == separatorLook ? "separator" : "frame";
    }
    if (qobject_cast<const QSpinBox *>(&widget))
        return "number";
    return widget.layout() ? textOf(*widget.layout()) : widget.metaObject()->className();
}

QString textOf(QLayoutItem &item)
{
    if (const QWidget *widget = item.widget())
        return textOf(*widget);
    if (qobject_cast<const QGridLayout *>(item.layout()))
        return "grid";
    if (const QLayout *layout = item.layout())
        return textOf(*layout);
    return item.expandingDirections() ? "stretch" : "space";
}

// What stands in a layout, item by item in its order: "header FORMAT", "stretch"; a row within it
// as "[label None, button Clear]", a labelled row of a form as "Clock: button #FFFFFF". Headers
// and separators count as such only in the look that they have in the dialog.
QStringList outlineOf(const QLayout &layout)
{
    QStringList outline;
    const auto *form = qobject_cast<const QFormLayout *>(&layout);
    for (int i = 0; !form && i < layout.count(); ++i)
        outline << textOf(*layout.itemAt(i));
    for (int row = 0; form && row < form->rowCount(); ++row) {
        if (QLayoutItem *whole = form->itemAt(row, QFormLayout::SpanningRole)) {
            outline << textOf(*whole);
            continue;
        }
        const QWidget *label = form->itemAt(row, QFormLayout::LabelRole)->widget();
        outline << qobject_cast<const QLabel *>(label)->text() + ": "
                + textOf(*form->itemAt(row, QFormLayout::FieldRole));
    }
    return outline;
}

QString textOf(const QLayout &layout)
{
    const QString items = outlineOf(layout).join(", ");
    if (items == "button ◀, number, button ▶")
        return "stepper";
    return '[' + items + ']';
}

} // namespace

/// The order of every page, its check boxes and its numbers.
class SettingsDialogPagesTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void page_readsFromTopToBottom_data()
    {
        QTest::addColumn<QByteArray>("layout");
        QTest::addColumn<int>("spacing");
        QTest::addColumn<QStringList>("outline");
        const auto add = [](const char *page, const char *layout, int spacing,
                            const QStringList &outline) {
            QTest::newRow(page) << QByteArray(layout) << spacing << outline;
        };
        add("Clock", "QVBoxLayout", 12,
            {"header FORMAT", "radio 24-hour  (14:30)", "radio 12-hour  (2:30 PM)", "separator",
             "header SECONDS", "check Show seconds on output", "stretch"});
        add("Colors", "QFormLayout", 10,
            {"Background: button #010203", "Timer — normal: button #040506",
             "Timer — warning: button #070809", "Timer — critical: button #0A0B0C",
             "Clock: button #0D0E0F", "Message: button #101112", "separator",
             "header BACKGROUND IMAGE", "check Use image instead of background colour",
             "[label Stage left.png, button Browse…, button Clear]"});
        add("Fonts", "QFormLayout", 10,
            {"Timer font size: stepper", "Clock font size: stepper", "Message font size: stepper"});
        add("Timer", "QVBoxLayout", 10,
            {"header BEHAVIOUR", "check Overtime — continue counting in red past zero",
             "check Blink effect at zero", "separator", "header DEFAULT DURATION",
             "[stepper, stepper, stretch]", "separator", "header WARNING THRESHOLD", "stepper",
             "separator", "header PRESETS", "list",
             "[stepper, stepper, button Add, button Remove, stretch]", "stretch"});
        add("Shortcuts", "QVBoxLayout", 10,
            {"header TIMER CONTROLS", "grid", "separator", "label " + hintText,
             "button Reset All to Defaults", "stretch"});
    }

    void page_readsFromTopToBottom()
    {
        const Editor editor(unusualRecord());
        const QLayout *layout = editor.page(QTest::currentDataTag())->layout();
        QTEST(QByteArray(layout->metaObject()->className()), "layout");
        QTEST(layout->spacing(), "spacing"); // -1 if a form's two differ
        QTEST(outlineOf(*layout), "outline");
    }

    void clockForm_isOneOfTwo_data()
    {
        QTest::addColumn<bool>("is24hr");
        QTest::newRow("24-hour") << true;
        QTest::newRow("12-hour") << false;
    }

    void clockForm_isOneOfTwo()
    {
        QFETCH(const bool, is24hr);
        AppSettings start;
        start.clock24hr = is24hr;
        Editor editor(start);
        const QRadioButton *full = editor.radio("24-hour  (14:30)");
        const QRadioButton *half = editor.radio("12-hour  (2:30 PM)");
        QCOMPARE(full->isChecked(), is24hr);
        QCOMPARE(half->isChecked(), !is24hr);
        QVERIFY(!full->group() && !half->group());
        editor.runToOk([&] {
            editor.radio(is24hr ? half->text() : full->text())->click();
            QCOMPARE(full->isChecked(), !is24hr);
            QCOMPARE(half->isChecked(), is24hr);
        });
        QCOMPARE(editor.record.clock24hr, !is24hr);
    }

    void checkBox_showsAndStoresItsField_data()
    {
        QTest::addColumn<Flag>("field");
        QTest::newRow("Show seconds on output") << &AppSettings::clockShowSeconds;
        QTest::newRow("Use image instead of background colour") << &AppSettings::bgImageEnabled;
        QTest::newRow("Overtime — continue counting in red past zero")
            << &AppSettings::overtimeEnabled;
        QTest::newRow("Blink effect at zero") << &AppSettings::blinkEnabled;
    }

    void checkBox_showsAndStoresItsField()
    {
        QFETCH(const Flag, field);
        for (const bool initial : {false, true}) {
            AppSettings start;
            start.*field = initial;
            Editor editor(start);
            QCheckBox *box = editor.checkBox(QTest::currentDataTag());
            QVERIFY(box);
            QCOMPARE(box->isChecked(), initial);
            editor.runToOk([&] { box->click(); });
            AppSettings wanted;
            wanted.*field = !initial;
            QCOMPARE(fieldLines(editor.record), fieldLines(wanted)); // this one and no other
        }
    }

    void number_showsAndStoresItsField_data()
    {
        QTest::addColumn<Number>("field");
        QTest::addColumn<int>("minimum");
        QTest::addColumn<int>("maximum");
        QTest::addColumn<QString>("suffix");
        QTest::newRow("Timer font size") << &AppSettings::timerFontSize << 30 << 550 << " px";
        QTest::newRow("Clock font size") << &AppSettings::clockFontSize << 20 << 300 << " px";
        QTest::newRow("Message font size") << &AppSettings::messageFontSize << 12 << 150 << " px";
        QTest::newRow("WARNING THRESHOLD") << &AppSettings::warningThreshold << 1 << 3600 << " sec";
    }

    void number_showsAndStoresItsField()
    {
        QFETCH(const Number, field);
        QFETCH(const int, minimum);
        QFETCH(const int, maximum);
        const QString label = QTest::currentDataTag();
        const struct
        {
            int value;
            int shown;
        } rows[] = {{minimum, minimum},     {minimum + 7, minimum + 7}, {maximum, maximum},
                    {minimum - 1, minimum}, {maximum + 1, maximum},     {lowest, minimum},
                    {highest, maximum}};
        for (const auto &row : rows) {
            AppSettings start;
            start.*field = row.value;
            Editor editor(start);
            const QList<QSpinBox *> ofTimer = editor.spinBoxesUnder(label);
            const QSpinBox *spinBox = ofTimer.value(0, editor.fontSize(label));
            QVERIFY(spinBox && ofTimer.size() <= 1);
            QCOMPARE(spinBox->minimum(), minimum);
            QCOMPARE(spinBox->maximum(), maximum);
            QTEST(spinBox->suffix(), "suffix");
            QCOMPARE(spinBox->value(), row.shown);
            editor.runToOk();
            AppSettings wanted;
            wanted.*field = row.shown;
            QCOMPARE(fieldLines(editor.record), fieldLines(wanted));
        }
    }

    void duration_isInMinutesAndSeconds_data()
    {
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::newRow("DEFAULT DURATION") << 12 << 34; // unusualRecord()'s
        QTest::newRow("PRESETS") << 5 << 0;            // a new preset's, whatever the record holds
    }

    void duration_isInMinutesAndSeconds()
    {
        const Editor editor(unusualRecord());
        const QList<QSpinBox *> spinBoxes = editor.spinBoxesUnder(QTest::currentDataTag());
        QCOMPARE(spinBoxes.size(), 2);
        QCOMPARE(spinBoxes.at(0)->minimum(), 0);
        QCOMPARE(spinBoxes.at(0)->maximum(), 999);
        QCOMPARE(spinBoxes.at(0)->suffix(), " min");
        QTEST(spinBoxes.at(0)->value(), "minutes");
        QCOMPARE(spinBoxes.at(1)->minimum(), 0);
        QCOMPARE(spinBoxes.at(1)->maximum(), 59);
        QCOMPARE(spinBoxes.at(1)->suffix(), " sec");
        QTEST(spinBoxes.at(1)->value(), "seconds");
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
        AppSettings start;
        start.defaultDuration = value;
        Editor editor(start);
        QTEST(editor.spinBoxesUnder("DEFAULT DURATION").at(0)->value(), "minutes");
        QTEST(editor.spinBoxesUnder("DEFAULT DURATION").at(1)->value(), "seconds");
        editor.runToOk();
        QTEST(editor.record.defaultDuration, "stored");
    }

    // The dialog takes up to 59 seconds more than a load lets through. Both are intended.
    void defaultDuration_ofNearlyAThousandMinutes_isStoredUnclamped()
    {
        Editor editor;
        editor.runToOk([&] {
            editor.spinBoxesUnder("DEFAULT DURATION").at(0)->setValue(999);
            editor.spinBoxesUnder("DEFAULT DURATION").at(1)->setValue(59);
        });
        QVERIFY(storeBytes().contains("defaultDuration=59999\n"));
        loadSettings(editor.record);
        QCOMPARE(editor.record.defaultDuration, 59940);
    }

    void longestNumbers_fitTheirSteppers()
    {
        Editor editor;
        editor.dialog.show();
        for (const QString title : {"Fonts", "Timer"}) {
            const QList<QSpinBox *> spinBoxes = editor.showPage(title)->findChildren<QSpinBox *>();
            for (QSpinBox *spinBox : spinBoxes) {
                spinBox->setValue(spinBox->maximum());
                const int textWidth = spinBox->fontMetrics().horizontalAdvance(spinBox->text());
                QVERIFY(spinBox->width() >= textWidth);
            }
        }
    }
};

VELMORA_TEST_MAIN(SettingsDialogPagesTest)
#include "tst_SettingsDialogPages.moc"
