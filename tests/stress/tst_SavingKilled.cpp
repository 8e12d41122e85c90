#include <chrono>
#include <thread>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>

#include "SavedRecords.h"
#include "Store.h"
#include "TestMain.h"

namespace {

constexpr int processTimeoutMs = 60'000;
constexpr int longestWaitUs = 40'000;

int killCount()
{
    const int asked = qEnvironmentVariableIntValue("VELMORA_KILLS");
    return asked > 0 ? asked : 50;
}

/// Qt writes into a file of its own, which it renames over the store at the end. Where
/// the file system can, that file has no name until just before.
QStringList unfinishedFiles(const QDir &directory)
{
    QStringList files = directory.entryList(QDir::Files | QDir::Hidden);
    files.removeAll(QFileInfo(storeFilePath()).fileName());
    files.removeAll(QFileInfo(storeFilePath()).fileName() + ".lock");
    return files;
}

} // namespace

/// A process that saves the settings over and over is killed at random moments. The store
/// must then hold one of the two records, whole.
class SavingKilledTest : public QObject
{
    Q_OBJECT

private slots:
    void killed_leavesOneRecordWhole()
    {
        const QStringList first = fieldLines(savedRecord(true));
        const QStringList second = fieldLines(savedRecord(false));
        const auto seed = QRandomGenerator::global()->generate();
        QRandomGenerator random(seed);
        qInfo("Seed of the moments: %u", seed);

        const QString lock = storeFilePath() + ".lock";
        const QDir directory = QFileInfo(storeFilePath()).dir();
        int whileLocked = 0;
        int beforeRename = 0;
        int firsts = 0;
        for (int i = 0; i < killCount(); ++i) {
            QProcess saver;
            saver.start(VELMORA_SAVE_LOOP, QStringList());
            QVERIFY2(saver.waitForReadyRead(processTimeoutMs), qPrintable(saver.errorString()));
            const auto wait = std::chrono::microseconds(random.bounded(longestWaitUs));
            std::this_thread::sleep_for(wait);
            saver.kill();
            QVERIFY(saver.waitForFinished(processTimeoutMs));
            QCOMPARE(saver.exitStatus(), QProcess::CrashExit);

            // The lock that it left must hold up neither the load nor the next process.
            whileLocked += QFile::exists(lock) ? 1 : 0;
            const QStringList unfinished = unfinishedFiles(directory);
            beforeRename += unfinished.isEmpty() ? 0 : 1;
            const QStringList stored = storedLines();
            firsts += stored == first ? 1 : 0;
            if (stored != first && stored != second) {
                QFile::copy(storeFilePath(), QCoreApplication::applicationFilePath() + ".broken");
                QFAIL(qPrintable(QString("Kill %1: neither record, but\n%2")
                                     .arg(i + 1)
                                     .arg(stored.join('\n').left(2000))));
            }
            for (const QString &file : unfinished)
                QVERIFY(QFile::remove(directory.filePath(file)));
        }
        qInfo("%d kills: %d fell into a write (from the lock on the store to its release), %d of "
              "them "
              "just before the new file took the old one's name",
              killCount(), whileLocked, beforeRename);
        qInfo("After them the store held %d times the one record and %d times the other, whole",
              firsts, killCount() - firsts);
        QVERIFY2(whileLocked > 0, "No kill fell into a write, so nothing was proven");
    }
};

VELMORA_TEST_MAIN(SavingKilledTest)
#include "tst_SavingKilled.moc"
