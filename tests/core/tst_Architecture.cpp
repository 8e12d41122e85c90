#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "TestMain.h"

namespace {

const QString sourceRoot = QStringLiteral(VELMORA_SOURCES);

/// What each subsystem may use, itself included.
const QMap<QString, QStringList> allowed{
    {"timer", {"timer"}},
    {"core", {"core"}},
    {"output", {"output", "core"}},
    {"update", {"update", "core"}},
    {"settings", {"settings", "core", "update"}},
    {"control", {"control", "core", "timer", "output", "update", "settings"}},
};

struct Outcome
{
    int exitCode = -1;
    QString errors;
};

/// What the preprocessor says to a file of @p subsystem that includes @p header.
Outcome include(const QString &subsystem, const QString &header)
{
    const QTemporaryDir folder;
    QFile source(folder.filePath("source.cpp"));
    QFile directories(QStringLiteral(VELMORA_INCLUDES) + '/' + subsystem + ".txt");
    if (!source.open(QIODevice::WriteOnly) || !directories.open(QIODevice::ReadOnly))
        return {};
    source.write("#include \"" + header.toUtf8() + "\"\n");
    source.close();

    QStringList arguments{"-std=c++20", "-fPIC", "-E", "-o", folder.filePath("source.ii")};
    const QStringList lines = QString::fromUtf8(directories.readAll()).split('\n');
    for (const QString &line : lines) {
        if (!line.isEmpty())
            arguments += {"-I", line};
    }
    arguments.append(source.fileName());

    QProcess compiler;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "C"); // the message is looked at
    compiler.setProcessEnvironment(environment);
    compiler.start(VELMORA_COMPILER, arguments);
    if (!compiler.waitForFinished())
        return {};
    return {compiler.exitCode(), QString::fromLocal8Bit(compiler.readAllStandardError())};
}

} // namespace

/// That the link graph of the subsystems is the architecture: the real compiler, given the
/// include directories of a subsystem's library, finds the headers of those libraries that
/// it may use and of no others.
class ArchitectureTest : public QObject
{
    Q_OBJECT

private slots:
    void include_isFoundAlongTheGraphOnly_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        for (const QString &from : allowed.keys()) {
            for (const QString &to : allowed.keys())
                QTest::addRow("%s to %s", qPrintable(from), qPrintable(to)) << from << to;
        }
    }

    void include_isFoundAlongTheGraphOnly()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        const QStringList headers = QDir(sourceRoot + '/' + to).entryList({"*.h"}, QDir::Files);
        QVERIFY(!headers.isEmpty());
        for (const QString &header : headers) {
            const Outcome outcome = include(from, header);
            if (allowed.value(from).contains(to)) {
                QVERIFY2(outcome.exitCode == 0, qPrintable(outcome.errors));
                continue;
            }
            // Not just any failure: it is this header that is missing.
            const QString name = QRegularExpression::escape(header);
            const QRegularExpression missing(name + ": No such file|'" + name + "' file not found");
            QVERIFY2(outcome.exitCode > 0, qPrintable(header));
            QVERIFY2(missing.match(outcome.errors).hasMatch(), qPrintable(outcome.errors));
        }
    }

    void include_namesNoFolder()
    {
        static const QRegularExpression includes("^\\s*#\\s*include\\s*[\"<]([^\">]*)[\">]",
                                                 QRegularExpression::MultilineOption);
        QDirIterator files(sourceRoot, {"*.h", "*.cpp", "*.in"}, QDir::Files,
                           QDirIterator::Subdirectories);
        QVERIFY(files.hasNext());
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(file.readAll());
            for (const QRegularExpressionMatch &match : includes.globalMatch(text)) {
                const QString name = match.captured(1);
                const QString place = file.fileName() + ": " + name;
                QVERIFY2(!name.contains(".."), qPrintable(place));
                QVERIFY2(!allowed.contains(name.section('/', 0, -2).section('/', -1)),
                         qPrintable(place));
                QVERIFY2(!name.contains('/') || !QFileInfo::exists(sourceRoot + '/' + name),
                         qPrintable(place));
            }
        }
    }

    void folders_areTheSubsystems()
    {
        const QStringList folders =
            QDir(sourceRoot).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
        QCOMPARE(folders, allowed.keys());
    }
};

VELMORA_TEST_MAIN(ArchitectureTest)
#include "tst_Architecture.moc"
