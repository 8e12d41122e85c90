#include "TestMain.h"

#include <memory>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include "Store.h"

namespace {

QByteArray screenList(const TestPlatform &platform)
{
    QJsonArray screens;
    for (const QRect &screen : platform.screens) {
        screens.append(QJsonObject{
            {"name", QStringLiteral("screen%1").arg(screens.size())},
            {"x", screen.x() * platform.devicePixelRatio},
            {"y", screen.y() * platform.devicePixelRatio},
            {"width", screen.width() * platform.devicePixelRatio},
            {"height", screen.height() * platform.devicePixelRatio},
            {"logicalDpi", 96},
            {"logicalBaseDpi", 96},
            {"dpr", 1},
        });
    }
    return QJsonDocument(QJsonObject{{"screens", screens}}).toJson();
}

TestPlatform sideBySide(int count)
{
    TestPlatform platform;
    platform.screens.clear();
    for (int i = 0; i < count; ++i)
        platform.screens.append(QRect(i * 1920, 0, 1920, 1080));
    return platform;
}

} // namespace

TestPlatform twoScreens()
{
    return sideBySide(2);
}

TestPlatform threeScreens()
{
    return sideBySide(3);
}

void usePlatform(const TestPlatform &platform, const QString &listPath)
{
    QFile list(listPath);
    if (!list.open(QIODevice::WriteOnly) || list.write(screenList(platform)) < 0)
        qFatal("No screen list for the offscreen platform");
    list.close();
    // The platform takes a colon, as after a drive, for the end of its argument.
    const QString path = listPath.contains(':') ? QDir().relativeFilePath(listPath) : listPath;
    qputenv("QT_QPA_PLATFORM", QByteArray("offscreen:configfile=").append(path.toUtf8()));
    // Not the list's own ratio, which only some versions of the platform heed.
    qputenv("QT_SCALE_FACTOR", QByteArray::number(platform.devicePixelRatio));
    qputenv("QT_SCREEN_SCALE_FACTORS", platform.screenFactors);
}

int runTest(int argc, char *argv[], const TestPlatform &platform,
            const std::function<QObject *()> &makeTest)
{
    const PrivateStore store;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        TestPlatform scaled = platform;
        if (qEnvironmentVariableIsSet("VELMORA_TEST_SCALE"))
            scaled.devicePixelRatio = qEnvironmentVariable("VELMORA_TEST_SCALE").toDouble();
        usePlatform(scaled, store.folder() + "/screens.json");
    }

    QApplication application(argc, argv);
    const std::unique_ptr<QObject> test(makeTest());
    return QTest::qExec(test.get(), argc, argv);
}
