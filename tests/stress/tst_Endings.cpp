#include <cstring>
#include <functional>

#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTest>

#include "Desktop.h"
#include "Program.h"
#include "Store.h"
#include "TestMain.h"

/// Starts the built program and closes it, in every state that something could hold it in:
/// VELMORA_ENDINGS times each, or 3 times. Each time the process has to end with status 0.
class Endings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void closing_endsTheProcess_data();
    void closing_endsTheProcess();

private:
    Program program;
};

using Step = std::function<void(Program &)>;
Q_DECLARE_METATYPE(Step)

namespace {

constexpr quint16 httpsPort = 443;

void openPreview(Program &program)
{
    program.clickPreview();
    AWAIT(desktop::hasWindow(previewTitle));
}

/// Its × does nothing while the dialog is open; it is closed right after the dialog.
void openAndCloseSettings(Program &program)
{
    program.clickSettings();
    AWAIT(desktop::hasWindow(settingsTitle));
    desktop::closeWindow(controlTitle);
    desktop::press("Escape");
    AWAIT(!desktop::hasWindow(settingsTitle));
    QVERIFY(program.isRunning());
}

/// The virtual desktop's own network, if it has one, starts with nothing.
bool bringLoopbackUp()
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP;
    const bool done = ioctl(socket, SIOCSIFFLAGS, &request) == 0;
    ::close(socket);
    return done;
}

/// The update check of the start has a connection, and gets no answer.
void awaitUpdateCheck(QTcpServer &server)
{
    AWAIT(server.hasPendingConnections());
    while (server.hasPendingConnections())
        server.nextPendingConnection();
}

} // namespace

void Endings::init()
{
    removeStore();
}

void Endings::cleanup()
{
    program.kill();
}

void Endings::closing_endsTheProcess_data()
{
    QTest::addColumn<bool>("waitsForAnAnswer");
    QTest::addColumn<Step>("step");
    QTest::newRow("at once") << false << Step([](Program &) {});
    QTest::newRow("running count") << false << Step([](Program &) { desktop::press("space"); });
    QTest::newRow("preview open") << false << Step(openPreview);
    QTest::newRow("dialog open") << false << Step(openAndCloseSettings);
    QTest::newRow("update check without an answer") << true << Step([](Program &) {});
}

void Endings::closing_endsTheProcess()
{
    QFETCH(bool, waitsForAnAnswer);
    QFETCH(Step, step);
    QTcpServer server;
    if (waitsForAnAnswer
        && !(bringLoopbackUp() && server.listen(QHostAddress::LocalHost, httpsPort)))
        QSKIP("Not tried: this user may not open the port of HTTPS here");

    const int asked = qEnvironmentVariableIntValue("VELMORA_ENDINGS");
    const int rounds = asked > 0 ? asked : 3;
    qint64 longestMs = 0;
    for (int round = 0; round < rounds; ++round) {
        QVERIFY(program.start());
        if (waitsForAnAnswer)
            awaitUpdateCheck(server);
        step(program);
        if (QTest::currentTestFailed())
            return;
        QElapsedTimer sinceClosing;
        sinceClosing.start();
        QVERIFY(program.close());
        longestMs = qMax(longestMs, sinceClosing.elapsed());
        QCOMPARE(program.complaints(), QByteArray());
    }
    qInfo("%d of %d processes ended, the slowest after %lld ms", rounds, rounds, longestMs);
}

VELMORA_TEST_MAIN(Endings)
#include "tst_Endings.moc"
