#include <utility>

#include <QAudioOutput>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QTest>

#include "CueFixture.h"
#include "Store.h"
#include "TestMain.h"

namespace {

const QString noFile = QStringLiteral("No file selected");

/// The label in the row of the two buttons; null without one.
QLabel *fileLabel(const ControlFixture &fixture)
{
    const QList<QLabel *> labels = fixture.window->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->styleSheet() == QLatin1String("color:#aaa; font-size:11px;"))
            return label;
    }
    return nullptr;
}

/// What the person does in the file dialog, which is really run.
class DialogScript
{
public:
    enum class End
    {
        Accept,
        Cancel
    };

    // Without a path the name is left empty.
    DialogScript(const QString &path, End end)
    {
        QTimer::singleShot(0, &timers, [this, path, end] { drive(path, end); });
    }

    bool ran = false;
    QString caption;
    QStringList filters;
    QString directory;
    QWidget *parent = nullptr;
    QFileDialog::Options options;
    QFileDialog::FileMode fileMode = QFileDialog::AnyFile;
    QFileDialog::AcceptMode acceptMode = QFileDialog::AcceptSave;

private:
    void drive(const QString &path, End end)
    {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        ran = true;
        caption = dialog->windowTitle();
        filters = dialog->nameFilters();
        directory = dialog->directory().canonicalPath();
        parent = dialog->parentWidget();
        options = dialog->options();
        fileMode = dialog->fileMode();
        acceptMode = dialog->acceptMode();
        auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        if (edit && !path.isEmpty())
            edit->setText(path);
        if (edit && end == End::Accept)
            QTest::keyClick(edit, Qt::Key_Return);
        else
            QTest::keyClick(dialog, Qt::Key_Escape);
    }

    QObject timers;
};

} // namespace

/// The cue's controls, its file and its player.
class ControlWindowCueFileTest : public QObject
{
    Q_OBJECT

public:
    // Heard by nobody, and not dependent on the sound of this machine.
    ControlWindowCueFileTest()
    {
        qputenv("PULSE_SERVER", "unix:/nonexistent/velmora-test");
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QDir::setCurrent(files.path());
    }

private slots:
    void init() { removeStore(); }

    void check_showsTheRecord_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }

    void check_showsTheRecord()
    {
        QFETCH(bool, enabled);
        AppSettings settings;
        settings.soundEnabled = enabled;
        const ControlFixture fixture(settings);
        const auto *check = qobject_cast<QCheckBox *>(fixture.button("Enable sound cue"));
        QVERIFY(check);
        QCOMPARE(check->isChecked(), enabled);
        QVERIFY(storeBytes().isEmpty());
    }

    void check_savesAtOnce_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("clicked");
        QTest::newRow("on") << true << true;
        QTest::newRow("off") << false << true;
        QTest::newRow("on, without a click") << true << false;
        QTest::newRow("off, without a click") << false << false;
    }

    void check_savesAtOnce()
    {
        QFETCH(bool, enabled);
        QFETCH(bool, clicked);
        AppSettings settings;
        settings.soundEnabled = !enabled;
        settings.soundFilePath = QStringLiteral("/music/gong.wav");
        const ControlFixture fixture(settings);
        QAbstractButton *check = fixture.button("Enable sound cue");
        if (clicked)
            check->click();
        else
            check->setChecked(enabled);
        QCOMPARE(fixture.settings.soundEnabled, enabled);
        QVERIFY(storeBytes().contains(enabled ? "soundEnabled=true" : "soundEnabled=false"));
        QVERIFY(storeBytes().contains("soundFilePath=/music/gong.wav"));
    }

    void label_showsTheFileNameOnly_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << "" << noFile;
        QTest::newRow("in folders") << "/music/cues/gong.wav"
                                    << "gong.wav";
        QTest::newRow("in the root") << "/gong.wav"
                                     << "gong.wav";
        QTest::newRow("relative") << "gong.wav"
                                  << "gong.wav";
        QTest::newRow("two dots") << "/music/final.gong.ogg"
                                  << "final.gong.ogg";
        QTest::newRow("no suffix") << "/music.d/gong"
                                   << "gong";
        QTest::newRow("blanks") << "/my music/big gong.mp3"
                                << "big gong.mp3";
    }

    void label_showsTheFileNameOnly()
    {
        QFETCH(QString, path);
        QFETCH(QString, text);
        const ControlFixture fixture(withCue(path));
        QVERIFY(fileLabel(fixture));
        QCOMPARE(fileLabel(fixture)->text(), text);
    }

    void label_showsMarkUpAsItIs()
    {
        const ControlFixture fixture(withCue("/music/<b>gong.wav"));
        QCOMPARE(fileLabel(fixture)->text(), QStringLiteral("<b>gong.wav"));
        QCOMPARE(fileLabel(fixture)->textFormat(), Qt::PlainText);
    }

    void row_holdsLabelBrowseAndTest()
    {
        ControlFixture fixture;
        fixture.showControl();
        const QLabel *label = fileLabel(fixture);
        QVERIFY(label);
        QCOMPARE(label->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(label->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);

        const QAbstractButton *browse = fixture.button(QStringLiteral("Browse\u2026"));
        const QAbstractButton *test = fixture.button("Test");
        QVERIFY(browse);
        QVERIFY(test);
        QCOMPARE(std::pair(browse->minimumWidth(), browse->maximumWidth()), std::pair(80, 80));
        QCOMPARE(std::pair(test->minimumWidth(), test->maximumWidth()), std::pair(50, 50));
        QVERIFY(label->geometry().right() < browse->x());
        QVERIFY(browse->geometry().right() < test->x());
        QVERIFY(fixture.button("Enable sound cue")->geometry().bottom() < browse->y());
    }

    void player_isSetUpAtFullVolume()
    {
        const ControlFixture fixture;
        const QList<QMediaPlayer *> players = fixture.window->findChildren<QMediaPlayer *>();
        const QList<QAudioOutput *> outputs = fixture.window->findChildren<QAudioOutput *>();
        QCOMPARE(players.size(), 1);
        QCOMPARE(outputs.size(), 1);
        QCOMPARE(players.first()->parent(), fixture.window.get());
        QCOMPARE(outputs.first()->parent(), fixture.window.get());
        QCOMPARE(players.first()->audioOutput(), outputs.first());
        QCOMPARE(outputs.first()->volume(), 1.0F);
        QVERIFY(!outputs.first()->isMuted());
    }

    void player_takesThePathUnchecked_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QUrl>("source");
        QTest::newRow("none") << "" << QUrl();
        QTest::newRow("gone") << "/no/such/gong.wav" << QUrl("file:///no/such/gong.wav");
        QTest::newRow("percent and hash") << "/no/100%#1.wav" << QUrl("file:///no/100%25%231.wav");
    }

    void player_takesThePathUnchecked()
    {
        QFETCH(QString, path);
        QFETCH(QUrl, source);
        const CueFixture fixture(withCue(path));
        QCOMPARE(fixture.player->source(), source);
    }

    void browse_asksForAnAudioFile()
    {
        const ControlFixture fixture;
        const DialogScript script(QString(), DialogScript::End::Cancel);
        fixture.button(QStringLiteral("Browse\u2026"))->click();
        QVERIFY(script.ran);
        QCOMPARE(script.caption, QStringLiteral("Select Sound File"));
        QCOMPARE(script.filters,
                 QStringList({"Audio Files (*.wav *.mp3 *.ogg *.flac *.aac)", "All Files (*)"}));
        QCOMPARE(script.parent, fixture.window.get());
        QCOMPARE(script.options, QFileDialog::Options()); // so it may be the native one
        QCOMPARE(script.fileMode, QFileDialog::ExistingFile);
        QCOMPARE(script.acceptMode, QFileDialog::AcceptOpen);
    }

    // The current directory, as none is asked for and none was gone to before.
    void browse_startsWhereTheToolkitWould()
    {
        const ControlFixture fixture;
        const DialogScript script(QString(), DialogScript::End::Cancel);
        fixture.window->browseSoundFile();
        QVERIFY(script.ran);
        QCOMPARE(script.directory, QDir(files.path()).canonicalPath());
    }

    void browse_accepted_takesTheFile_data() { check_showsTheRecord_data(); }

    void browse_accepted_takesTheFile()
    {
        QFETCH(bool, enabled);
        const QString path = QFileInfo(files.sound("big gong.wav", 10)).absoluteFilePath();
        AppSettings settings = withCue("/music/old.wav");
        settings.soundEnabled = enabled;
        const CueFixture fixture(settings);
        const DialogScript script(path, DialogScript::End::Accept);
        fixture.button(QStringLiteral("Browse\u2026"))->click();
        QVERIFY(script.ran);
        QCOMPARE(fixture.settings.soundFilePath, path);
        QCOMPARE(fileLabel(fixture)->text(), QStringLiteral("big gong.wav"));
        QCOMPARE(fixture.player->source(), QUrl::fromLocalFile(path));
        // Choosing a file does not switch the cue on or off, nor is it heard.
        QCOMPARE(fixture.settings.soundEnabled, enabled);
        QCOMPARE(static_cast<QCheckBox *>(fixture.button("Enable sound cue"))->isChecked(),
                 enabled);
        QCOMPARE(fixture.plays(), 0);

        const AppSettings stored = loadedSettings();
        QCOMPARE(stored.soundFilePath, path);
        QCOMPARE(stored.soundEnabled, enabled);
    }

    void browse_accepted_isHeardAtTheNextZero()
    {
        SKIP_WHERE_A_DRIVE_IS_NO_PATH();
        CueFixture fixture(withCue(QString()));
        const DialogScript script(QFileInfo(files.sound("new.wav", 3000)).absoluteFilePath(),
                                  DialogScript::End::Accept);
        fixture.window->browseSoundFile();
        QVERIFY(script.ran);
        QVERIFY(fixture.waitForFile());
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

    // A zero that found no sound is over: choosing a file plays nothing in front of an audience.
    void browse_afterABrokenFile_isNotPlayed()
    {
        SKIP_WHERE_A_DRIVE_IS_NO_PATH();
        CueFixture fixture(withCue(files.file("text.wav", "This is no sound.\n")));
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia));
        fixture.window->onTimerTick(0);
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia));
        const int before = fixture.plays(); // a newer player tries it once more
        const DialogScript script(QFileInfo(files.sound("new.wav", 3000)).absoluteFilePath(),
                                  DialogScript::End::Accept);
        fixture.window->browseSoundFile();
        QVERIFY(script.ran);
        QVERIFY(fixture.waitForFile());
        QCoreApplication::processEvents();
        QCOMPARE(fixture.plays(), before);
    }

    void browse_cancelled_changesNothing_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("none") << "";
        QTest::newRow("one") << "/music/gong.wav";
    }

    void browse_cancelled_changesNothing()
    {
        QFETCH(QString, path);
        const CueFixture fixture(withCue(path));
        const QString label = fileLabel(fixture)->text();
        const QUrl source = fixture.player->source();
        const DialogScript script(files.sound("other.wav", 10), DialogScript::End::Cancel);
        fixture.button(QStringLiteral("Browse\u2026"))->click();
        QVERIFY(script.ran);
        QCOMPARE(fixture.settings.soundFilePath, path);
        QCOMPARE(fileLabel(fixture)->text(), label);
        QCOMPARE(fixture.player->source(), source);
        QVERIFY(storeBytes().isEmpty());
    }

    void test_plays_data() { check_showsTheRecord_data(); }

    void test_plays()
    {
        QFETCH(bool, enabled);
        AppSettings settings = withCue(files.sound("gong.wav", 3000));
        settings.soundEnabled = enabled;
        const CueFixture fixture(settings);
        QVERIFY(fixture.waitForFile());
        fixture.button("Test")->click();
        QCOMPARE(fixture.plays(), 1);
        QCOMPARE(fixture.player->playbackState(), QMediaPlayer::PlayingState);
    }

    void test_leavesTheZeroAlone()
    {
        SKIP_WHERE_A_FILE_PLAYS_ONCE();
        CueFixture fixture(withCue(files.sound("gong.wav", 10000)));
        QVERIFY(fixture.waitForFile());
        fixture.button("Test")->click();
        QVERIFY(fixture.waitForSound());
        fixture.window->onTimerTick(0); // not used up by the test
        QCOMPARE(fixture.plays(), 2);
        QVERIFY(fixture.waitForSound());
        fixture.button("Test")->click();
        fixture.window->onTimerTick(0); // nor re-armed
        QCOMPARE(fixture.plays(), 2);
    }

    void brokenFile_isReplacedByAGoodOne()
    {
        SKIP_WHERE_A_DRIVE_IS_NO_PATH();
        CueFixture fixture(withCue(files.file("text.wav", "This is no sound.\n")));
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia));
        fixture.window->onTimerTick(0);
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia)); // some players try it once more
        fixture.window->onStateChanged(false);
        const DialogScript script(QFileInfo(files.sound("good.wav", 3000)).absoluteFilePath(),
                                  DialogScript::End::Accept);
        fixture.window->browseSoundFile();
        QVERIFY(script.ran);
        QVERIFY(fixture.waitForFile());
        fixture.states.clear();
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.plays(), 1);
    }

private:
    CueFiles files;
};

VELMORA_TEST_MAIN(ControlWindowCueFileTest)
#include "tst_ControlWindowCueFile.moc"
