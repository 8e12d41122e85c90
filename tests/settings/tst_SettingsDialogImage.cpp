#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

const QString useImageText = QStringLiteral("Use image instead of background colour");

// Clicks "Browse…" and opens the file under the path in the file dialog.
void browse(const DialogView &view, const QString &path)
{
    const ModalScript<QFileDialog> person([&path](QFileDialog &files) {
        files.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
        press(files, QDialogButtonBox::Open);
    });
    view.browseButton()->click();
}

} // namespace

/// The background image on the Colors page.
class SettingsDialogImageTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(pictures.isValid());
        QImage picture(8, 8, QImage::Format_RGB32);
        picture.fill(Qt::blue);
        QVERIFY(picture.save(pictures.filePath(QStringLiteral("Old ground.png"))));
        QVERIFY(picture.save(pictures.filePath(QStringLiteral("New ground.png"))));
        QFile text(pictures.filePath(QStringLiteral("no picture.bmp")));
        QVERIFY(text.open(QIODevice::WriteOnly));
        QVERIFY(text.write("not a picture") > 0);
    }

    void init() { removeStore(); }

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
        AppSettings record;
        record.bgImagePath = path;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QTEST(view.imageFileLabel()->text(), "text");
        QCOMPARE(view.imageFileLabel()->textFormat(), Qt::PlainText); // mark-up is shown as it is
        execWith(dialog, [&] { view.okButton()->click(); });
        QCOMPARE(record.bgImagePath, path); // the whole path, whatever the label shows
    }

    void imageRow_hasItsLookAndSizes()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        const QLabel *label = view.imageFileLabel();
        QCOMPARE(label->styleSheet(), QStringLiteral("color:#aaa;font-size:11px;"));
        QVERIFY(label->wordWrap());
        QCOMPARE(view.browseButton()->minimumWidth(), 80);
        QCOMPARE(view.browseButton()->maximumWidth(), 80);
        QCOMPARE(view.clearImageButton()->minimumWidth(), 60);
        QCOMPARE(view.clearImageButton()->maximumWidth(), 60);
        const auto *row = qobject_cast<QHBoxLayout *>(label->parentWidget()->layout());
        QVERIFY(row);
        QCOMPARE(row->stretch(0), 1);
        QCOMPARE(row->stretch(1), 0);
        QCOMPARE(row->stretch(2), 0);
    }

    void fileDialog_opensAtTheCurrentImage()
    {
        AppSettings record;
        record.bgImagePath = pictures.filePath(QStringLiteral("Old ground.png"));
        SettingsDialog dialog(&record, nullptr);
        execWith(dialog, [&] {
            const ModalScript<QFileDialog> person([&](QFileDialog &files) {
                QCOMPARE(files.windowTitle(), QStringLiteral("Select background image"));
                QCOMPARE(files.parentWidget(), &dialog);
                QCOMPARE(files.acceptMode(), QFileDialog::AcceptOpen);
                QCOMPARE(files.fileMode(), QFileDialog::ExistingFile);
                QCOMPARE(files.options(), QFileDialog::Options()); // so it may be the native one
                QCOMPARE(files.nameFilters(), QStringList("Images (*.png *.jpg *.jpeg *.bmp)"));
                QCOMPARE(files.directory(), QDir(pictures.path()));
                QCOMPARE(files.selectedFiles(), QStringList(record.bgImagePath));
            });
            DialogView(dialog).browseButton()->click();
            QVERIFY(person.hasPlayed());
        });
    }

    // The dialog's image, which is not the record's before OK.
    void fileDialog_opensAtTheImageChosenLast()
    {
        const QString path = pictures.filePath(QStringLiteral("New ground.png"));
        AppSettings record;
        record.bgImagePath = pictures.filePath(QStringLiteral("Old ground.png"));
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            const auto selectedAtStart = [&view] {
                QStringList selected{QStringLiteral("no file dialog")};
                const ModalScript<QFileDialog> person(
                    [&selected](QFileDialog &files) { selected = files.selectedFiles(); });
                view.browseButton()->click();
                return selected;
            };
            browse(view, path);
            QCOMPARE(selectedAtStart(), QStringList(path));
            view.clearImageButton()->click();
            QCOMPARE(selectedAtStart(), QStringList());
        });
    }

    void fileDialog_cancelled_changesNothing()
    {
        AppSettings record;
        record.bgImagePath = pictures.filePath(QStringLiteral("Old ground.png"));
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            const ModalScript<QFileDialog> person([&](QFileDialog &files) {
                files.selectFile(pictures.filePath(QStringLiteral("New ground.png")));
                press(files, QDialogButtonBox::Cancel);
            });
            view.browseButton()->click();
            QVERIFY(person.hasPlayed());
            QCOMPARE(view.imageFileLabel()->text(), QStringLiteral("Old ground.png"));
            QVERIFY(!view.checkBox(useImageText)->isChecked());
            view.okButton()->click();
        });
        QCOMPARE(record.bgImagePath, pictures.filePath(QStringLiteral("Old ground.png")));
        QVERIFY(!record.bgImageEnabled);
    }

    // Unlike a file for the cue, whose switch is left alone.
    void browsing_takesTheFileAndSwitchesItOn()
    {
        const QString path = pictures.filePath(QStringLiteral("New ground.png"));
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            browse(view, path);
            QCOMPARE(view.imageFileLabel()->text(), QStringLiteral("New ground.png"));
            QVERIFY(view.checkBox(useImageText)->isChecked());
            QCOMPARE(fieldLines(record), fieldLines(AppSettings()));
            view.okButton()->click();
        });
        AppSettings wanted;
        wanted.bgImagePath = path;
        wanted.bgImageEnabled = true;
        QCOMPARE(fieldLines(record), fieldLines(wanted));
        QCOMPARE(storedLines(), fieldLines(wanted));
    }

    void browsing_takesAFileThatIsNoPicture()
    {
        const QString path = pictures.filePath(QStringLiteral("no picture.bmp"));
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            browse(view, path);
            view.okButton()->click();
        });
        QCOMPARE(record.bgImagePath, path);
        QVERIFY(record.bgImageEnabled);
    }

    void clearing_forgetsTheFileAndSwitchesItOff()
    {
        AppSettings record;
        record.bgImagePath = QStringLiteral("/pictures/Ground.png");
        record.bgImageEnabled = true;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.clearImageButton()->click();
            QCOMPARE(view.imageFileLabel()->text(), QStringLiteral("None"));
            QVERIFY(!view.checkBox(useImageText)->isChecked());
            QCOMPARE(record.bgImagePath, QStringLiteral("/pictures/Ground.png"));
            view.okButton()->click();
        });
        QCOMPARE(fieldLines(record), fieldLines(AppSettings()));
    }

    void unchecking_keepsTheFile()
    {
        AppSettings record;
        record.bgImagePath = QStringLiteral("/pictures/Ground.png");
        record.bgImageEnabled = true;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.checkBox(useImageText)->click();
            QCOMPARE(view.imageFileLabel()->text(), QStringLiteral("Ground.png"));
            view.okButton()->click();
        });
        QCOMPARE(record.bgImagePath, QStringLiteral("/pictures/Ground.png"));
        QVERIFY(!record.bgImageEnabled);
    }

    void imageEdits_thenCancel_leaveTheRecord()
    {
        AppSettings record;
        record.bgImagePath = QStringLiteral("/pictures/Ground.png");
        const QStringList before = fieldLines(record);
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            browse(view, pictures.filePath(QStringLiteral("New ground.png")));
            QVERIFY(view.checkBox(useImageText)->isChecked());
            view.clearImageButton()->click();
            view.cancelButton()->click();
        });
        QCOMPARE(fieldLines(record), before);
        QVERIFY(!storeExists());
    }

private:
    QTemporaryDir pictures;
};

VELMORA_TEST_MAIN(SettingsDialogImageTest)
#include "tst_SettingsDialogImage.moc"
