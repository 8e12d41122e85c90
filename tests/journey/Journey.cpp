#include "Journey.h"

#include <QCoreApplication>
#include <QTest>

#include "Desktop.h"
#include "Store.h"

void Journey::init()
{
    removeStore();
}

void Journey::cleanup()
{
    if (QTest::currentTestFailed()) {
        const QString file =
            QStringLiteral("%1-%2.png")
                .arg(QCoreApplication::applicationFilePath(), QTest::currentTestFunction());
        desktop::grab(desktop::firstMonitor | desktop::secondMonitor).save(file);
        qInfo("What was to be seen then: %s", qPrintable(file));
        program.kill();
    }
    desktop::plugInSecondMonitor();
    if (program.isRunning())
        QVERIFY(program.close());
    QCOMPARE(program.complaints(), QByteArray());
}
