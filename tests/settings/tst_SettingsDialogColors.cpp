#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QTest>

#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "Outline.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

using Color = QColor AppSettings::*;

const QString buttonLook =
    QStringLiteral("background-color:%1;color:%2;border:1px solid #555;border-radius:3px;");

} // namespace

/// The Colors page and its colour buttons.
class SettingsDialogColorsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void page_readsFromTopToBottom()
    {
        AppSettings record = unusualRecord();
        SettingsDialog dialog(&record, nullptr);
        const auto *form = qobject_cast<QFormLayout *>(
            DialogView(dialog).page(QStringLiteral("Colors"))->layout());
        QVERIFY(form);
        QCOMPARE(form->horizontalSpacing(), 10);
        QCOMPARE(form->verticalSpacing(), 10);
        QCOMPARE(
            outlineOf(*form),
            QStringList({"Background: button #010203", "Timer — normal: button #040506",
                         "Timer — warning: button #070809", "Timer — critical: button #0A0B0C",
                         "Clock: button #0D0E0F", "Message: button #101112", "separator",
                         "header BACKGROUND IMAGE", "check Use image instead of background colour",
                         "[label Stage left.png, button Browse…, button Clear]"}));
    }

    void colorButton_isOfItsSize_data() { colorButton_picksItsOwnColor_data(); }

    void colorButton_isOfItsSize()
    {
        QFETCH(const QString, rowLabel);
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        dialog.show();
        view.showPage(QStringLiteral("Colors"));
        const QPushButton *button = view.colorButton(rowLabel);
        QVERIFY(button);
        QCOMPARE(button->minimumSize(), QSize(80, 26));
        QCOMPARE(button->maximumSize(), QSize(80, 26));
        QCOMPARE(button->size(), QSize(80, 26));
    }

    // The button's own sheet leaves the minimum height of 28 and twice 6 of padding to the
    // application's, and with 1 of border on both sides they beat the fixed height of 26.
    void colorButton_isHigherInTheApplicationsDress()
    {
        qApp->setStyleSheet(applicationStyleSheet());
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        dialog.show();
        view.showPage(QStringLiteral("Colors"));
        const QSize size = view.colorButton(QStringLiteral("Clock"))->size();
        qApp->setStyleSheet({});
        QCOMPARE(size, QSize(80, 42));
    }

    void colorButton_showsNameAndContrast_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("textColor");
        const auto add = [](const QColor &color, const char *name, const char *textColor) {
            QTest::newRow(name) << color << QString::fromLatin1(name)
                                << QString::fromLatin1(textColor);
        };
        add(QColor(0, 0, 0), "#000000", "#ffffff");
        add(QColor(255, 255, 255), "#ffffff", "#000000");
        add(QColor(0, 204, 0), "#00cc00", "#ffffff");        // 119748
        add(QColor(255, 136, 0), "#ff8800", "#000000");      // 156077
        add(QColor(255, 34, 0), "#ff2200", "#ffffff");       // 96203
        add(QColor(255, 255, 0), "#ffff00", "#000000");      // 225930
        add(QColor(255, 0, 0), "#ff0000", "#ffffff");        // 76245
        add(QColor(0, 255, 0), "#00ff00", "#000000");        // 149685
        add(QColor(0, 0, 255), "#0000ff", "#ffffff");        // 29070
        add(QColor(128, 128, 128), "#808080", "#ffffff");    // 128000
        add(QColor(129, 129, 129), "#818181", "#000000");    // 129000
        add(QColor(0xAB, 0xCD, 0xEF), "#abcdef", "#000000"); // 198710
        add(QColor(0, 205, 76), "#00cd4c", "#ffffff");       // 128999
        add(QColor(2, 190, 148), "#02be94", "#000000");      // 129000
        add(QColor(0, 185, 179), "#00b9b3", "#000000");      // 129001
        add(QColor(9, 8, 7, 6), "#090807", "#ffffff");       // see-through: the name has no alpha
        QTest::newRow("not a colour") << QColor() << "#000000"
                                      << "#ffffff";
    }

    void colorButton_showsNameAndContrast()
    {
        QFETCH(const QColor, color);
        QFETCH(const QString, name);
        QFETCH(const QString, textColor);
        AppSettings record;
        record.clockColor = color;
        SettingsDialog dialog(&record, nullptr);
        const QPushButton *button = DialogView(dialog).colorButton(QStringLiteral("Clock"));
        QCOMPARE(button->text(), name.toUpper());
        QCOMPARE(button->styleSheet(), buttonLook.arg(name, textColor));
    }

    void colorButton_picksItsOwnColor_data()
    {
        QTest::addColumn<QString>("rowLabel");
        QTest::addColumn<Color>("field");
        QTest::newRow("background") << "Background" << &AppSettings::bgColor;
        QTest::newRow("normal") << "Timer — normal" << &AppSettings::timerColorNormal;
        QTest::newRow("warning") << "Timer — warning" << &AppSettings::timerColorWarning;
        QTest::newRow("critical") << "Timer — critical" << &AppSettings::timerColorCritical;
        QTest::newRow("clock") << "Clock" << &AppSettings::clockColor;
        QTest::newRow("message") << "Message" << &AppSettings::messageColor;
    }

    void colorButton_picksItsOwnColor()
    {
        QFETCH(const QString, rowLabel);
        QFETCH(const Color, field);
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.pick(rowLabel, QColor(0x12, 0xab, 0x34));
            QCOMPARE(view.colorButton(rowLabel)->text(), QStringLiteral("#12AB34"));
            QCOMPARE(view.colorButton(rowLabel)->styleSheet(),
                     buttonLook.arg("#12ab34", "#ffffff"));
            QCOMPARE(fieldLines(record), fieldLines(AppSettings()));
            view.okButton()->click();
        });
        AppSettings wanted;
        wanted.*field = QColor(0x12, 0xab, 0x34);
        QCOMPARE(fieldLines(record), fieldLines(wanted));
    }

    void colorDialog_opensAtTheWorkingColor()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.pick(QStringLiteral("Message"), QColor(1, 2, 3));
            const ModalScript<QColorDialog> person([&](QColorDialog &colors) {
                QCOMPARE(colors.windowTitle(), QStringLiteral("Pick colour"));
                QCOMPARE(colors.parentWidget(), &dialog);
                QCOMPARE(colors.options(), QColorDialog::ColorDialogOptions());
                QCOMPARE(colors.currentColor(), QColor(1, 2, 3));
            });
            view.colorButton(QStringLiteral("Message"))->click();
            QVERIFY(person.hasPlayed());
        });
    }

    void colorDialog_cancelled_changesNothing()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            const ModalScript<QColorDialog> person([](QColorDialog &colors) {
                colors.setCurrentColor(Qt::magenta);
                press(colors, QDialogButtonBox::Cancel);
            });
            view.colorButton(QStringLiteral("Message"))->click();
            QVERIFY(person.hasPlayed());
            QCOMPARE(view.colorButton(QStringLiteral("Message"))->text(),
                     QStringLiteral("#FFFF00"));
            view.okButton()->click();
        });
        QCOMPARE(fieldLines(record), fieldLines(AppSettings()));
    }

    void pickedGrey_turnsTextBlackFromTheThreshold_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("look");
        QTest::newRow("below") << QColor(0x80, 0x80, 0x80) << buttonLook.arg("#808080", "#ffffff");
        QTest::newRow("at") << QColor(0x81, 0x81, 0x81) << buttonLook.arg("#818181", "#000000");
    }

    void pickedGrey_turnsTextBlackFromTheThreshold()
    {
        QFETCH(const QColor, color);
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.pick(QStringLiteral("Background"), color);
            QTEST(view.colorButton(QStringLiteral("Background"))->styleSheet(), "look");
        });
    }

    void pickColor_servesAnyTargetAndButton()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        QColor target(Qt::red);
        QPushButton button;
        execWith(dialog, [&] {
            const ModalScript<QColorDialog> person([](QColorDialog &colors) {
                QCOMPARE(colors.currentColor(), QColor(Qt::red));
                colors.setCurrentColor(Qt::white);
                press(colors, QDialogButtonBox::Ok);
            });
            dialog.pickColor(target, &button);
        });
        QCOMPARE(target, QColor(Qt::white));
        QCOMPARE(button.text(), QStringLiteral("#FFFFFF"));
        QCOMPARE(button.styleSheet(), buttonLook.arg("#ffffff", "#000000"));
    }

    void invalidColor_staysInvalidUntilPicked()
    {
        AppSettings record;
        record.bgColor = QColor();
        record.clockColor = QColor();
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.pick(QStringLiteral("Clock"), QColor(1, 2, 3));
            view.okButton()->click();
        });
        QVERIFY(!record.bgColor.isValid());
        QCOMPARE(record.clockColor, QColor(1, 2, 3));
    }
};

VELMORA_TEST_MAIN(SettingsDialogColorsTest)
#include "tst_SettingsDialogColors.moc"
