#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QTest>

#include "CueFixture.h"
#include "Modal.h"
#include "Store.h"
#include "TestMain.h"

namespace {

/// The label that shows the file; null without one.
QLabel *fileLabel(const ControlFixture &fixture)
{
    const QList<QLabel *> labels = fixture.window->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->styleSheet() == "color:#aaa; font-size:11px;")
            return label;
    }
    return nullptr;
}

/// "Browse…" is clicked, and in the dialog the path is typed and the key pressed. False when no
/// dialog came up.
bool browse(const ControlFixture &fixture, const QString &path, Qt::Key key)
{
    const ModalScript<QFileDialog> operatorAtWork([&](QFileDialog &dialog) {
        auto *edit = dialog.findChild<QLineEdit *>("fileNameEdit");
        QVERIFY(edit);
        edit->setText(path);
        QTest::keyClick(edit, key);
    });
    fixture.button("Browse…")->click();
    return operatorAtWork.hasPlayed();
}

} // namespace

/// The cue's switch, and the row of its file.
class AudioCueRowsTest : public QObject
{
    Q_OBJECT

public:
    // Heard by nobody, and not dependent on the sound of this machine.
    AudioCueRowsTest()
    {
        qputenv("PULSE_SERVER", "unix:/nonexistent/velmora-test");
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QDir::setCurrent(files.path());
    }

private slots:
    void init() { removeStore(); }

    void check_showsTheRecordAndSavesAtOnce()
    {
        for (const bool enabled : {true, false}) {
            removeStore();
            const ControlFixture fixture(recordWith(&AppSettings::soundFilePath, "/music/gong.wav",
                                                    &AppSettings::soundEnabled, !enabled));
            auto *check = qobject_cast<QCheckBox *>(fixture.button("Enable sound cue"));
            QVERIFY(check);
            QCOMPARE(check->isChecked(), !enabled);
            QVERIFY(storeBytes().isEmpty());
            check->click();
            QCOMPARE(fixture.settings.soundEnabled, enabled);
            QCOMPARE(loadedSettings().soundEnabled, enabled);
            QCOMPARE(loadedSettings().soundFilePath, "/music/gong.wav");
            check->setChecked(!enabled); // by no click
            QCOMPARE(fixture.settings.soundEnabled, !enabled);
            QVERIFY(storeBytes().contains(enabled ? "soundEnabled=false" : "soundEnabled=true"));
        }
    }

    void label_showsTheFileNameOnly_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("text");
        const auto add = [](const QString &path, const QString &text) {
            QTest::newRow(qPrintable(text)) << path << text;
        };
        add("", "No file selected");
        add("/music/cues/gong.wav", "gong.wav");
        add("/gong.wav", "gong.wav");
        add("gong.wav", "gong.wav");
        add("/music/final.gong.ogg", "final.gong.ogg");
        add("/music.d/gong", "gong");
        add("/my music/big gong.mp3", "big gong.mp3");
        add("/music/<b>gong.wav", "<b>gong.wav");
    }

    // Of a name that looks like mark-up, every character.
    void label_showsTheFileNameOnly()
    {
        QFETCH(QString, path);
        const ControlFixture fixture(withCue(path));
        const QLabel *label = fileLabel(fixture);
        QVERIFY(label);
        QTEST(label->text(), "text");
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QCOMPARE(label->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(label->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    }

    // In the current directory, as none is asked for and none was gone to before.
    void browse_asksForAnAudioFile()
    {
        const ControlFixture fixture;
        const ModalScript<QFileDialog> operatorAtWork([&](const QFileDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), "Select Sound File");
            QCOMPARE(
                dialog.nameFilters(),
                QStringList({"Audio Files (*.wav *.mp3 *.ogg *.flac *.aac)", "All Files (*)"}));
            QCOMPARE(dialog.directory().canonicalPath(), QDir(files.path()).canonicalPath());
            QCOMPARE(dialog.parentWidget(), fixture.window.get());
            QCOMPARE(dialog.options(), QFileDialog::Options()); // so it may be the native one
            QCOMPARE(dialog.fileMode(), QFileDialog::ExistingFile);
            QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptOpen);
        });
        fixture.window->browseSoundFile();
        QVERIFY(operatorAtWork.hasPlayed());
    }

    // Choosing a file does not switch the cue on or off, nor is it heard.
    void browse_accepted_takesTheFile()
    {
        for (const bool enabled : {true, false}) {
            const QString path = QFileInfo(files.sound("big gong.wav", 10)).absoluteFilePath();
            AppSettings settings = withCue("/music/old.wav");
            settings.soundEnabled = enabled;
            const CueFixture fixture(settings);
            QVERIFY(browse(fixture, path, Qt::Key_Return));
            QCOMPARE(fixture.settings.soundFilePath, path);
            QCOMPARE(loadedSettings().soundFilePath, path);
            QCOMPARE(fileLabel(fixture)->text(), "big gong.wav");
            QCOMPARE(fixture.player->source(), QUrl::fromLocalFile(path));
            QCOMPARE(fixture.settings.soundEnabled, enabled);
            QCOMPARE(loadedSettings().soundEnabled, enabled);
            QCOMPARE(fixture.button("Enable sound cue")->isChecked(), enabled);
            QCOMPARE(fixture.plays(), 0);
        }
    }

    void browse_cancelled_changesNothing()
    {
        const CueFixture fixture(withCue("/music/gong.wav"));
        QVERIFY(browse(fixture, files.sound("other.wav", 10), Qt::Key_Escape));
        QCOMPARE(fixture.settings.soundFilePath, "/music/gong.wav");
        QCOMPARE(fileLabel(fixture)->text(), "gong.wav");
        QCOMPARE(fixture.player->source(), QUrl("file:///music/gong.wav"));
        QVERIFY(storeBytes().isEmpty());
    }

    void browse_withoutAFileBefore_isHeardAtTheNextZero()
    {
        CueFixture fixture(withCue(QString()));
        const QString path = QFileInfo(files.sound("new.wav", 3000)).absoluteFilePath();
        QVERIFY(browse(fixture, path, Qt::Key_Return));
        QVERIFY(fixture.waitForFile());
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

    // A zero that found no sound is over: choosing a file plays nothing in front of an audience.
    void browse_afterABrokenFile_isHeardAtTheNextZeroOnly()
    {
        CueFixture fixture(withCue(files.file("text.wav", "This is no sound.\n")));
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia));
        fixture.window->onTimerTick(0);
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia));
        fixture.states.clear(); // a newer player tries it once more
        const QString path = QFileInfo(files.sound("good.wav", 3000)).absoluteFilePath();
        QVERIFY(browse(fixture, path, Qt::Key_Return));
        QVERIFY(fixture.waitForFile());
        QCoreApplication::processEvents();
        QCOMPARE(fixture.plays(), 0);
        fixture.window->onStateChanged(false);
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

private:
    CueFiles files;
};

VELMORA_TEST_MAIN(AudioCueRowsTest)
#include "tst_AudioCueRows.moc"
