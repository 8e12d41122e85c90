#pragma once

#include <functional>

#include <QByteArray>
#include <QList>
#include <QRect>
#include <QString>

class QObject;

/// What a test executable runs on, unless the environment asks for another platform.
struct TestPlatform
{
    /// The screens of the offscreen platform in device-independent pixels, the first one
    /// primary.
    QList<QRect> screens{QRect(0, 0, 1920, 1080)};
    /// Device pixel ratio of all screens, unless the environment's VELMORA_TEST_SCALE asks for
    /// another one. (A QT_SCALE_FACTOR of the developer's desktop is not honoured.)
    double devicePixelRatio = 1.0;
    /// What each screen's ratio is multiplied by, in their order, divided by ";"; empty for 1. The
    /// screens are then as much smaller.
    QByteArray screenFactors{};
};

/// Two screens side by side, 1920 × 1080 pixels each.
TestPlatform twoScreens();
/// Three screens side by side, 1920 × 1080 pixels each.
TestPlatform threeScreens();

/// Has applications that are made from now on run offscreen on @p platform. The list of its
/// screens is written to @p listPath, which must stay until then.
void usePlatform(const TestPlatform &platform, const QString &listPath);

/// Runs the test object that @p makeTest returns, with an application of its own on
/// @p platform and a settings store of its own, which starts empty and is removed at the
/// end. The developer's settings are neither read nor written.
int runTest(int argc, char *argv[], const TestPlatform &platform,
            const std::function<QObject *()> &makeTest);

/// The entry routine of a test executable.
#define VELMORA_TEST_MAIN(TestClass, ...)                                                          \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        return runTest(argc, argv, TestPlatform{__VA_ARGS__}, [] { return new TestClass; });       \
    }
