#include "ControlWindow.h"

#include <QApplication>
#include <QAudioDevice>
#include <QAudioOutput>
#include <QAudioSink>
#include <QCheckBox>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QPushButton>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "ControlParts.h"

namespace {

const QString soundFileStyle = QStringLiteral("color:#aaa; font-size:11px;");

// Older than Qt 6.5, whose only player is GStreamer's.
constexpr bool isOldestQt = QT_VERSION < QT_VERSION_CHECK(6, 5, 0);

// From Qt 6.5 to 6.9, all sounds share one connection to PulseAudio, which lives in the thread of the
// first sound. If the server dies while that one plays, the player goes on writing to what the end of
// the connection has deleted, and the program crashes; once the thread has ended, nothing connects
// again. So the connection is made in the main thread, which connects again after three seconds, and
// the player is stopped before it learns of the end: the only event that the connection receives.
class ConnectionGuard : public QObject
{
public:
    explicit ConnectionGuard(QMediaPlayer *player)
        : QObject(player)
        , player(player)
    {
        // Without a format it cannot start, but connects.
        const QAudioDevice device = QMediaDevices::defaultAudioOutput();
        if (!device.isNull())
            QAudioSink(device, QAudioFormat()).start();
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::MetaCall
            && qstrcmp(watched->metaObject()->className(), "QPulseAudioEngine") == 0)
            player->stop();
        return QObject::eventFilter(watched, event);
    }

private:
    QMediaPlayer *player;
};

} // namespace

void ControlWindow::buildCue(QVBoxLayout *column)
{
    soundCheck = new QCheckBox(tr("Enable sound cue"));
    soundCheck->setChecked(settings->soundEnabled);
    connect(soundCheck, &QCheckBox::toggled, this, [this](bool enabled) {
        settings->soundEnabled = enabled;
        saveSettings(*settings);
    });
    column->addWidget(soundCheck);

    soundFileLabel = new QLabel;
    soundFileLabel->setStyleSheet(soundFileStyle);
    soundFileLabel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    soundFileLabel->setTextFormat(Qt::PlainText); // a file's name may look like mark-up
    // A long name is cut off; without this it would push the buttons out of the window.
    soundFileLabel->setMinimumWidth(1);
    soundFileLabel->setAccessibleDescription(tr("Sound file"));
    showSoundFileName();
    QPushButton *browseBtn = makeFixedWidth(tr("Browse…"), tr("Browse for sound file"), 80);
    QPushButton *testBtn = makeFixedWidth(tr("Test"), tr("Test sound"), 50);
    connect(browseBtn, &QPushButton::clicked, this, &ControlWindow::browseSoundFile);
    connect(testBtn, &QPushButton::clicked, this, &ControlWindow::testCue);

    auto *row = new QHBoxLayout;
    row->addWidget(soundFileLabel);
    row->addWidget(browseBtn);
    row->addWidget(testBtn);
    column->addLayout(row);
}

void ControlWindow::setupPlayer()
{
    player = new QMediaPlayer(this);
    setupAudioOutput();
    if constexpr (!isOldestQt && QT_VERSION < QT_VERSION_CHECK(6, 10, 0))
        new ConnectionGuard(player);
    if (!settings->soundFilePath.isEmpty())
        player->setSource(QUrl::fromLocalFile(settings->soundFilePath));
}

void ControlWindow::setupAudioOutput()
{
    audioOutput = new QAudioOutput(this);
    player->setAudioOutput(audioOutput);
    audioOutput->setVolume(1.0F);
}

// Any tick of zero fires it once, whatever the direction and whether or not the engine
// runs. A cue that cannot be played is silently absent.
void ControlWindow::checkCue()
{
    if (cueFired || !settings->soundEnabled || !player->source().isValid())
        return;
    cueFired = true;
    if (!preparePlayer())
        return;
    player->stop();
    player->play();
}

void ControlWindow::testCue()
{
    if (!player->source().isValid() || !preparePlayer())
        return;
    player->setPosition(0);
    player->play();
}

// Has the player heard on the device that is the default now. False when it must not be asked to
// play.
bool ControlWindow::preparePlayer()
{
    if constexpr (isOldestQt)
        return prepareOldestPlayer();
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    // Playing on a device of PulseAudio that is gone would block the player's thread for good, and
    // with the next stop() the whole program.
    if (!device.isDefault() && audioOutput->device().isDefault()) {
        player->stop();
        return false;
    }
    audioOutput->setDevice(device);
    return true;
}

// The oldest player's stream is moved to another default device by the sound server.
bool ControlWindow::prepareOldestPlayer()
{
    // The file is no sound, or was not there; or the sound server or its device has gone.
    if (player->mediaStatus() == QMediaPlayer::InvalidMedia)
        reopenSource();
    // Touched while it opens a file, the player can block the program for good. Asked to play what
    // turns out to be no sound, it would block the program for a second in each stop().
    if (player->mediaStatus() == QMediaPlayer::LoadingMedia) {
        connect(player, &QMediaPlayer::mediaStatusChanged, this, &ControlWindow::playOpened,
                Qt::UniqueConnection);
        return false;
    }
    // A sound is late by the time since its source was set, so that a cue chosen minutes before is
    // not heard; a freshly attached output is in time.
    player->setAudioOutput(nullptr);
    player->setAudioOutput(audioOutput);
    return true;
}

// Until it has played, or another file is opened; a last error of the old one may come in between.
void ControlWindow::playOpened()
{
    const QMediaPlayer::MediaStatus status = player->mediaStatus();
    if (status == QMediaPlayer::LoadedMedia)
        player->play();
    if (status == QMediaPlayer::LoadedMedia || status == QMediaPlayer::NoMedia)
        disconnect(player, &QMediaPlayer::mediaStatusChanged, this, &ControlWindow::playOpened);
}

// In this order nothing blocks. The old output may name a device that is gone.
void ControlWindow::reopenSource()
{
    const QUrl source = player->source();
    player->setAudioOutput(nullptr);
    player->setSource({});
    delete audioOutput;
    setupAudioOutput();
    player->setSource(source);
}

void ControlWindow::browseSoundFile()
{
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Select Sound File"), QString(),
        tr("Audio Files (*.wav *.mp3 *.ogg *.flac *.aac);;All Files (*)"));
    if (path.isEmpty())
        return;
    settings->soundFilePath = path;
    saveSettings(*settings);
    showSoundFileName();
    player->setSource(QUrl::fromLocalFile(path));
}

void ControlWindow::showSoundFileName()
{
    soundFileLabel->setText(settings->soundFilePath.isEmpty()
                                ? tr("No file selected")
                                : QFileInfo(settings->soundFilePath).fileName());
}
