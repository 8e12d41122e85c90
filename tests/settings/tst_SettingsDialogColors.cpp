#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "Editor.h"
#include "Record.h"
#include "Store.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

using Color = QColor AppSettings::*;

const QString buttonLook = "background-color:%1;color:%2;border:1px solid #555;border-radius:3px;";
const QString useImageText = "Use image instead of background colour";

// Clicks "Browse…" and opens the file under the path in the file dialog.
void browse(const DialogView &view, const QString &path)
{
    const ModalScript<QFileDialog> user([&path](QFileDialog &files) {
        files.findChild<QLineEdit *>("fileNameEdit")->setText(path);
        press(files, QDialogButtonBox::Open);
    });
    view.browseButton()->click();
}

AppSettings recordWithImage(const QString &path, bool isEnabled = false)
{
    AppSettings record;
    record.bgImagePath = path;
    record.bgImageEnabled = isEnabled;
    return record;
}

} // namespace

/// The Colors page: its colour buttons and the background image.
class SettingsDialogColorsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(pictures.isValid());
        QImage picture(8, 8, QImage::Format_RGB32);
        picture.fill(Qt::blue);
        QVERIFY(picture.save(pictures.filePath("Old ground.png")));
        QVERIFY(picture.save(pictures.filePath("New ground.png")));
        QFile text(pictures.filePath("no picture.bmp"));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("not a picture") > 0);
    }

    void init() { removeStore(); }

    // The button's own sheet leaves the minimum height of 28 and twice 6 of padding to the
    // application's, and with 1 of border on both sides they beat the fixed height of 26.
    void colorButton_isHigherInTheApplicationsStyle()
    {
        qApp->setStyleSheet(applicationStyleSheet());
        Editor editor;
        editor.dialog.show();
        editor.showPage("Colors");
        const QSize size = editor.colorButton("Clock")->size();
        qApp->setStyleSheet({});
        QCOMPARE(size, QSize(80, 42));
    }

    void colorButton_showsNameAndContrast_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("textColor");
        const auto add = [](const QColor &color, const char *name, const char *textColor) {
            QTest::newRow(name) << color << QString(name) << QString(textColor);
        };
        add(QColor(0, 0, 0), "#000000", "#ffffff");
        add(QColor(255, 255, 255), "#ffffff", "#000000");
        add(QColor(255, 0, 0), "#ff0000", "#ffffff");        // 76245
        add(QColor(0, 255, 0), "#00ff00", "#000000");        // 149685
        add(QColor(0, 0, 255), "#0000ff", "#ffffff");        // 29070
        add(QColor(128, 128, 128), "#808080", "#ffffff");    // 128000
        add(QColor(129, 129, 129), "#818181", "#000000");    // 129000
        add(QColor(0xAB, 0xCD, 0xEF), "#abcdef", "#000000"); // 198710
        add(QColor(0, 205, 76), "#00cd4c", "#ffffff");       // 128999
        add(QColor(255, 89, 4), "#ff5904", "#ffffff");       // 128944
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
        AppSettings start;
        start.clockColor = color;
        const Editor editor(start);
        QCOMPARE(editor.colorButton("Clock")->text(), name.toUpper());
        QCOMPARE(editor.colorButton("Clock")->styleSheet(), buttonLook.arg(name, textColor));
    }

    void colorButton_picksItsOwnColor_data()
    {
        QTest::addColumn<Color>("field");
        QTest::newRow("Background") << &AppSettings::bgColor;
        QTest::newRow("Timer — normal") << &AppSettings::timerColorNormal;
        QTest::newRow("Timer — warning") << &AppSettings::timerColorWarning;
        QTest::newRow("Timer — critical") << &AppSettings::timerColorCritical;
        QTest::newRow("Clock") << &AppSettings::clockColor;
        QTest::newRow("Message") << &AppSettings::messageColor;
    }

    void colorButton_picksItsOwnColor()
    {
        QFETCH(const Color, field);
        const QString label = QTest::currentDataTag();
        Editor editor;
        const QPushButton *button = editor.colorButton(label);
        QVERIFY(button);
        QCOMPARE(button->minimumSize(), QSize(80, 26));
        QCOMPARE(button->maximumSize(), QSize(80, 26));
        editor.runToOk([&] {
            editor.pick(label, QColor(0x12, 0xab, 0x34));
            QCOMPARE(button->text(), "#12AB34");
            QCOMPARE(button->styleSheet(), buttonLook.arg("#12ab34", "#ffffff"));
            QCOMPARE(fieldLines(editor.record), fieldLines(AppSettings()));
        });
        AppSettings wanted;
        wanted.*field = QColor(0x12, 0xab, 0x34);
        QCOMPARE(fieldLines(editor.record), fieldLines(wanted));
    }

    void colorDialog_opensAtTheWorkingColorAndCanBeCancelled()
    {
        Editor editor;
        editor.runToOk([&] {
            editor.pick("Message", QColor(1, 2, 3));
            const ModalScript<QColorDialog> user([&](QColorDialog &colors) {
                QCOMPARE(colors.windowTitle(), "Pick colour");
                QCOMPARE(colors.parentWidget(), &editor.dialog);
                QCOMPARE(colors.options(), QColorDialog::ColorDialogOptions());
                QCOMPARE(colors.currentColor(), QColor(1, 2, 3));
                colors.setCurrentColor(Qt::magenta);
                press(colors, QDialogButtonBox::Cancel);
            });
            editor.colorButton("Message")->click();
            QVERIFY(user.hasPlayed());
            QCOMPARE(editor.colorButton("Message")->text(), "#010203");
        });
        QCOMPARE(editor.record.messageColor, QColor(1, 2, 3));
    }

    void pickColor_servesAnyTargetAndButton()
    {
        Editor editor;
        QColor target(Qt::red);
        QPushButton button;
        editor.run([&] {
            const ModalScript<QColorDialog> user([](QColorDialog &colors) {
                QCOMPARE(colors.currentColor(), QColor(Qt::red));
                colors.setCurrentColor(Qt::white);
                press(colors, QDialogButtonBox::Ok);
            });
            editor.dialog.pickColor(target, &button);
        });
        QCOMPARE(target, QColor(Qt::white));
        QCOMPARE(button.text(), "#FFFFFF");
        QCOMPARE(button.styleSheet(), buttonLook.arg("#ffffff", "#000000"));
    }

    void invalidColor_staysInvalidUntilPicked()
    {
        AppSettings start;
        start.bgColor = QColor();
        start.clockColor = QColor();
        Editor editor(start);
        editor.runToOk([&] { editor.pick("Clock", QColor(1, 2, 3)); });
        QVERIFY(!editor.record.bgColor.isValid());
        QCOMPARE(editor.record.clockColor, QColor(1, 2, 3));
    }

    void imageLabel_namesTheFile_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << QString() << "None";
        QTest::newRow("full path") << "/no/such/folder/Ground.png"
                                   << "Ground.png";
        QTest::newRow("bare name") << "Ground.png"
                                   << "Ground.png";
        QTest::newRow("dots and blanks") << "/a.b/My stage.v2.jpeg"
                                         << "My stage.v2.jpeg";
        QTest::newRow("mark-up") << "/a/<b>x.png"
                                 << "<b>x.png";
    }

    void imageLabel_namesTheFile()
    {
        QFETCH(const QString, path);
        Editor editor(recordWithImage(path));
        QTEST(editor.imageFileLabel()->text(), "text");
        QCOMPARE(editor.imageFileLabel()->textFormat(), Qt::PlainText); // mark-up is shown as it is
        editor.runToOk();
        QCOMPARE(editor.record.bgImagePath, path); // the whole path, whatever the label shows
    }

    void imageRow_hasItsLookAndSizes()
    {
        const Editor editor;
        const QLabel *label = editor.imageFileLabel();
        QCOMPARE(label->styleSheet(), "color:#aaa;font-size:11px;");
        QVERIFY(label->wordWrap());
        QCOMPARE(editor.browseButton()->minimumWidth(), 80);
        QCOMPARE(editor.browseButton()->maximumWidth(), 80);
        QCOMPARE(editor.clearImageButton()->minimumWidth(), 60);
        QCOMPARE(editor.clearImageButton()->maximumWidth(), 60);
        const auto *row = qobject_cast<QHBoxLayout *>(label->parentWidget()->layout());
        QVERIFY(row);
        QCOMPARE(row->stretch(0), 1);
        QCOMPARE(row->stretch(1), 0);
        QCOMPARE(row->stretch(2), 0);
    }

    void fileDialog_opensAtTheCurrentImageAndCanBeCancelled()
    {
        const QString path = pictures.filePath("Old ground.png");
        Editor editor(recordWithImage(path));
        editor.runToOk([&] {
            const ModalScript<QFileDialog> user([&](QFileDialog &files) {
                QCOMPARE(files.windowTitle(), "Select background image");
                QCOMPARE(files.parentWidget(), &editor.dialog);
                QCOMPARE(files.acceptMode(), QFileDialog::AcceptOpen);
                QCOMPARE(files.fileMode(), QFileDialog::ExistingFile);
                QCOMPARE(files.options(), QFileDialog::Options()); // so it may be the native one
                QCOMPARE(files.nameFilters(), QStringList("Images (*.png *.jpg *.jpeg *.bmp)"));
                QCOMPARE(files.directory(), QDir(pictures.path()));
                QCOMPARE(files.selectedFiles(), QStringList(path));
                files.selectFile(pictures.filePath("New ground.png"));
                press(files, QDialogButtonBox::Cancel);
            });
            editor.browseButton()->click();
            QVERIFY(user.hasPlayed());
            QCOMPARE(editor.imageFileLabel()->text(), "Old ground.png");
        });
        QCOMPARE(fieldLines(editor.record), fieldLines(recordWithImage(path)));
    }

    // The dialog's image, which is not the record's before OK.
    void fileDialog_opensAtTheImageChosenLast()
    {
        const QString path = pictures.filePath("New ground.png");
        Editor editor(recordWithImage(pictures.filePath("Old ground.png")));
        editor.run([&] {
            const auto selectedAtStart = [&editor] {
                QStringList selected{"no file dialog"};
                const ModalScript<QFileDialog> user(
                    [&selected](QFileDialog &files) { selected = files.selectedFiles(); });
                editor.browseButton()->click();
                return selected;
            };
            browse(editor, path);
            QCOMPARE(selectedAtStart(), QStringList(path));
            editor.clearImageButton()->click();
            QCOMPARE(selectedAtStart(), QStringList());
        });
    }

    void browsing_takesTheFileAndSwitchesItOn_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("picture") << "New ground.png";
        QTest::newRow("no picture") << "no picture.bmp";
    }

    // Unlike a file for the cue, whose switch is left alone.
    void browsing_takesTheFileAndSwitchesItOn()
    {
        QFETCH(const QString, file);
        Editor editor;
        editor.runToOk([&] {
            browse(editor, pictures.filePath(file));
            QCOMPARE(editor.imageFileLabel()->text(), file);
            QVERIFY(editor.checkBox(useImageText)->isChecked());
            QCOMPARE(fieldLines(editor.record), fieldLines(AppSettings()));
        });
        const AppSettings wanted = recordWithImage(pictures.filePath(file), true);
        QCOMPARE(fieldLines(editor.record), fieldLines(wanted));
    }

    void clearing_forgetsTheFileAndSwitchesItOff()
    {
        Editor editor(recordWithImage("/pictures/Ground.png", true));
        editor.runToOk([&] {
            editor.clearImageButton()->click();
            QCOMPARE(editor.imageFileLabel()->text(), "None");
            QVERIFY(!editor.checkBox(useImageText)->isChecked());
            QCOMPARE(editor.record.bgImagePath, "/pictures/Ground.png");
        });
        QCOMPARE(fieldLines(editor.record), fieldLines(AppSettings()));
    }

    void unchecking_keepsTheFile()
    {
        Editor editor(recordWithImage("/pictures/Ground.png", true));
        editor.runToOk([&] {
            editor.checkBox(useImageText)->click();
            QCOMPARE(editor.imageFileLabel()->text(), "Ground.png");
        });
        const AppSettings wanted = recordWithImage("/pictures/Ground.png");
        QCOMPARE(fieldLines(editor.record), fieldLines(wanted));
    }

private:
    QTemporaryDir pictures;
};

VELMORA_TEST_MAIN(SettingsDialogColorsTest)
#include "tst_SettingsDialogColors.moc"
