#include <algorithm>
#include <limits>

#include <QAudioOutput>
#include <QElapsedTimer>
#include <QTest>

#include "CueFixture.h"
#include "TestMain.h"

/// What the player makes of its file: while it is opened, sounding, at its end, broken, gone.
class CuePlayerTest : public QObject
{
    Q_OBJECT

public:
    // Heard by nobody, and not dependent on the sound of this machine.
    CuePlayerTest() { qputenv("PULSE_SERVER", "unix:/nonexistent/velmora-test"); }

private slots:
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
        const CueFixture fixture(withCue(path));
        QTEST(fixture.player->source(), "source");
    }

    void opening_isPlayed_data()
    {
        QTest::addColumn<bool>("test");
        QTest::newRow("at zero") << false;
        QTest::newRow("by Test") << true;
    }

    // Asked so early, the oldest Qt's player once blocked the program every few times.
    void opening_isPlayed()
    {
        for (int i = 0; i < 10; ++i) {
            CueFixture fixture(withCue(files.sound("gong.wav", 3000)));
            QCOMPARE(fixture.player->mediaStatus(), QMediaPlayer::LoadingMedia);
            play(fixture);
            QVERIFY(fixture.waitForSound());
            QCOMPARE(fixture.player->playbackState(), QMediaPlayer::PlayingState);
        }
    }

    void anotherFile_afterOneWasPlayedWhileOpening_isNotPlayed()
    {
        CueFixture fixture(withCue(files.sound("gong.wav", 3000)));
        fixture.button("Test")->click();
        QVERIFY(fixture.waitForSound());
        fixture.player->setSource(QUrl::fromLocalFile(files.sound("bell.wav", 3000)));
        QVERIFY(fixture.waitForFile());
        QCOMPARE(fixture.player->playbackState(), QMediaPlayer::StoppedState);
        QCOMPARE(fixture.plays(), 1);
    }

    void zero_whileStillSounding_restartsFromTheBeginning()
    {
        CueFixture fixture(withCue(files.sound("gong.wav", 10000)));
        QVERIFY(fixture.waitForFile());
        fixture.button("Test")->click();
        QCOMPARE(fixture.player->playbackState(), QMediaPlayer::PlayingState);
        QVERIFY(fixture.waitForSound());
        fixture.states.clear();
        fixture.window->onTimerTick(0);
        QCOMPARE(fixture.states.size(), 2);
        QCOMPARE(fixture.states.at(0).at(0).value<QMediaPlayer::PlaybackState>(),
                 QMediaPlayer::StoppedState);
        QCOMPARE(fixture.states.at(1).at(0).value<QMediaPlayer::PlaybackState>(),
                 QMediaPlayer::PlayingState);
    }

    void test_whileSounding_startsOver()
    {
        const CueFixture fixture(withCue(files.sound("gong.wav", 10000)));
        QVERIFY(fixture.waitForFile());
        fixture.button("Test")->click();
        QVERIFY(fixture.waitForSound(200));
        const qint64 before = fixture.player->position();
        const QSignalSpy positions(fixture.player, &QMediaPlayer::positionChanged);
        fixture.button("Test")->click();
        QVERIFY(fixture.player->position() < before);
        QVERIFY(!positions.isEmpty());
        QCOMPARE(positions.constFirst().constFirst().toLongLong(), 0);
        QCOMPARE(fixture.player->playbackState(), QMediaPlayer::PlayingState);
        QCOMPARE(fixture.plays(), 1);
    }

    void playedToItsEnd_isPlayedAgainAtOnce_data() { opening_isPlayed_data(); }

    void playedToItsEnd_isPlayedAgainAtOnce()
    {
        CueFixture fixture(withCue(files.sound("short.wav", 300)));
        QVERIFY(fixture.waitForFile());
        QSignalSpy statuses(fixture.player, &QMediaPlayer::mediaStatusChanged);
        // A busy machine may halt the program during one; what blocks it does so each time.
        qint64 shortest = std::numeric_limits<qint64>::max();
        for (int i = 1; i <= 3; ++i) {
            statuses.clear();
            QElapsedTimer timer;
            timer.start();
            play(fixture);
            if (i > 1)
                shortest = std::min(shortest, timer.elapsed());
            QCOMPARE(fixture.plays(), i);
            while (statuses.size() < 2 || fixture.player->mediaStatus() != QMediaPlayer::EndOfMedia)
                QVERIFY(statuses.wait());
            QCOMPARE(fixture.player->playbackState(), QMediaPlayer::StoppedState);
        }
        QVERIFY2(shortest < 900, qPrintable(QString::number(shortest)));
    }

    void play_attachesTheOutputAgainOnTheOldestQt_data() { opening_isPlayed_data(); }

    // Without it, a sound chosen minutes before is late there, as tools/cue/check-cue hears.
    void play_attachesTheOutputAgainOnTheOldestQt()
    {
        CueFixture fixture(withCue(files.sound("gong.wav", 3000)));
        QVERIFY(fixture.waitForFile());
        const QAudioOutput *output = fixture.player->audioOutput();
        QVERIFY(output);
        const QSignalSpy changes(fixture.player, &QMediaPlayer::audioOutputChanged);
        play(fixture);
        QCOMPARE(changes.size(), isOldestQt ? 2 : 0); // taken off, and attached
        QCOMPARE(fixture.player->audioOutput(), output);
    }

    void brokenFile_isSilentAndDelaysNothing_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("gone") << "/no/such/gong.wav";
        QTest::newRow("a folder") << files.path();
        QTest::newRow("a text") << files.file("text.wav", "This is no sound.\n");
        QTest::newRow("a picture") << ":/assets/VELMORA LOGO DESKTOP NO BACKGROUND.png";
        QTest::newRow("rubbish") << files.file("rubbish.mp3", QByteArray(10000, '\x5a'));
    }

    void brokenFile_isSilentAndDelaysNothing()
    {
        QFETCH(QString, path);
        CueFixture fixture(withCue(path));
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia));
        // Three zeroes with a test before each one, as an evening goes on. A busy machine may halt
        // the program during some of them; what blocks it does so each time, and for a second.
        qint64 shortest = std::numeric_limits<qint64>::max();
        for (int i = 0; i < 3; ++i) {
            QElapsedTimer timer;
            timer.start();
            fixture.button("Test")->click();
            fixture.engine.setDuration(1);
            fixture.engine.start();
            passSecond(fixture.engine);
            QCOMPARE(fixture.engine.remaining(), 0);
            fixture.engine.pause();
            shortest = std::min(shortest, timer.elapsed());
            QCoreApplication::processEvents();
        }
        QVERIFY2(shortest < 900, qPrintable(QString::number(shortest)));
        // A newer player may try the file again, to no effect.
        if (isOldestQt)
            QCOMPARE(fixture.plays(), 0);
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia));
        QCOMPARE(fixture.player->playbackState(), QMediaPlayer::StoppedState);
        QCOMPARE(fixture.figure()->text(), "00:00");
        QVERIFY(!QApplication::activeModalWidget()); // nothing is said about it
    }

    void fileThatCameLater_isLeftToQt_data() { opening_isPlayed_data(); }

    // As from a stick: a player that opens it in play() is given the chance, as any player of Qt is
    // by being asked to play. The oldest one is asked once it has opened the file again.
    void fileThatCameLater_isLeftToQt()
    {
        const QString name = QStringLiteral("late, %1.wav").arg(QTest::currentDataTag());
        CueFixture fixture(withCue(files.path() + '/' + name));
        QMediaPlayer other;
        other.setSource(fixture.player->source());
        QVERIFY(fixture.waitForFile(QMediaPlayer::InvalidMedia));
        QTRY_COMPARE(other.mediaStatus(), QMediaPlayer::InvalidMedia);
        QCOMPARE(QUrl::fromLocalFile(files.sound(name, 3000)), other.source());
        play(fixture);
        if (!isOldestQt)
            other.play();
        QCOMPARE(fixture.player->playbackState(), other.playbackState());
        if (isOldestQt) {
            QVERIFY(fixture.waitForSound());
            QCOMPARE(fixture.plays(), 1);
        }
    }

    void fileGoneSinceItWasOpened_isStillPlayed()
    {
        const QString path = files.sound("going.wav", 3000);
        CueFixture fixture(withCue(path));
        QVERIFY(fixture.waitForFile());
#ifdef Q_OS_WIN
        QVERIFY(!QFile::remove(path)); // nobody can take it away while it is open
#else
        QVERIFY(QFile::remove(path));
#endif
        for (int i = 0; i < 2; ++i) {
            fixture.window->onTimerTick(0);
            fixture.window->onStateChanged(false);
            QVERIFY(fixture.waitForSound());
        }
        fixture.button("Test")->click();
        QCOMPARE(fixture.player->playbackState(), QMediaPlayer::PlayingState);
    }

private:
    // A zero that is not used up, or Test, by the row.
    static void play(CueFixture &fixture)
    {
        QFETCH(bool, test);
        if (test) {
            fixture.button("Test")->click();
        } else {
            fixture.window->onStateChanged(false);
            fixture.window->onTimerTick(0);
        }
    }

    CueFiles files;
};

VELMORA_TEST_MAIN(CuePlayerTest)
#include "tst_CuePlayer.moc"
