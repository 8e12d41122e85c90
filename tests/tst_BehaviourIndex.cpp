#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include "TestMain.h"

/// The index of behaviours beside this file: a table row for each behaviour, whose last cell
/// names the tests that prove it, as `Class::function` or `Class::function:row`.
class BehaviourIndexTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyRow_namesABehaviourAndATest();
    void everyBehaviour_isToldOnce();
    void everyNamedTest_exists();

private:
    struct Row
    {
        int line;
        QString behaviour;
        QString tests;
    };

    QList<Row> rows;
};

namespace {

const QRegularExpression nameInCell("`([^`]+)`");

/// What the test executables can run, by the names that the index uses: every function, and
/// every row of its data beside it.
QSet<QString> existingTests(const QStringList &executables)
{
    QSet<QString> names;
    for (const QString &executable : executables) {
        QProcess process;
        process.start(executable, {"-datatags"});
        if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
            qWarning("%s: %s", qPrintable(executable), qPrintable(process.errorString()));
            continue;
        }
        // "Class function" or "Class function row". A row's name may go on over lines of its
        // own, which no class begins.
        const QStringList lines =
            QString::fromUtf8(process.readAllStandardOutput()).remove('\r').split('\n');
        const QString className = lines.constFirst().section(' ', 0, 0);
        for (const QString &line : lines) {
            if (line.section(' ', 0, 0) != className)
                continue;
            const QString function = className + "::" + line.section(' ', 1, 1);
            names.insert(function);
            if (line.count(' ') > 1)
                names.insert(function + ':' + line.section(' ', 2));
        }
    }
    return names;
}

QStringList linesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split('\n');
}

} // namespace

void BehaviourIndexTest::initTestCase()
{
    const QStringList lines = linesOf(VELMORA_BEHAVIOURS);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (!lines.at(i).startsWith('|'))
            continue;
        const QStringList cells = lines.at(i).split('|');
        QVERIFY2(cells.size() == 4, qPrintable("Not of two cells: " + lines.at(i)));
        const Row row{int(i) + 1, cells.at(1).trimmed(), cells.at(2).trimmed()};
        const bool isHeading = row.behaviour == "Behaviour" || row.behaviour.startsWith("---");
        if (!isHeading)
            rows.append(row);
    }
    QVERIFY2(!rows.isEmpty(), VELMORA_BEHAVIOURS " names no behaviour");
}

void BehaviourIndexTest::everyRow_namesABehaviourAndATest()
{
    static const QRegularExpression form("^\\w+::\\w+(:[^`]+)?$");
    QStringList bad;
    for (const Row &row : std::as_const(rows)) {
        QString rest = row.tests;
        bool isGood = !row.behaviour.isEmpty() && nameInCell.match(row.tests).hasMatch();
        for (const QRegularExpressionMatch &name : nameInCell.globalMatch(row.tests)) {
            isGood = isGood && form.match(name.captured(1)).hasMatch();
            rest.remove(name.captured(0));
        }
        // Between the names there is nothing but commas.
        if (!isGood || !rest.remove(',').trimmed().isEmpty())
            bad.append(QString("%1: %2").arg(row.line).arg(row.tests));
    }
    QVERIFY2(bad.isEmpty(), qPrintable('\n' + bad.join('\n')));
}

void BehaviourIndexTest::everyBehaviour_isToldOnce()
{
    QSet<QString> told;
    for (const Row &row : std::as_const(rows)) {
        QVERIFY2(!told.contains(row.behaviour), qPrintable(row.behaviour));
        told.insert(row.behaviour);
    }
}

void BehaviourIndexTest::everyNamedTest_exists()
{
    QStringList executables = linesOf(VELMORA_TEST_EXECUTABLES);
    executables.removeAll(QString());
    QVERIFY(!executables.isEmpty());
    const QSet<QString> existing = existingTests(executables);

    QStringList unknown;
    for (const Row &row : std::as_const(rows)) {
        for (const QRegularExpressionMatch &match : nameInCell.globalMatch(row.tests)) {
            if (!existing.contains(match.captured(1)))
                unknown.append(QString("%1: %2").arg(row.line).arg(match.captured(1)));
        }
    }
    QVERIFY2(unknown.isEmpty(), qPrintable("No such test:\n" + unknown.join('\n')));
}

VELMORA_TEST_MAIN(BehaviourIndexTest)
#include "tst_BehaviourIndex.moc"
