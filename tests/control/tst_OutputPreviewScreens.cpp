#include <QScreen>
#include <QTest>

#include "ControlFixture.h"
#include "PreviewWindow.h"
#include "TestMain.h"

/// The preview on a screen with other pixels than the Output window's: one has one device pixel
/// to a pixel, one has two.
class OutputPreviewScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void refresh_isInThePixelsOfThePreviewsScreen()
    {
        const QList<QScreen *> screens = QGuiApplication::screens();
        QCOMPARE(screens.size(), 2);
        ControlFixture fixture;
        fixture.show();
        fixture.button("Preview")->click();
        fixture.output.showNormal(); // with Qt 6.11, full screen stays where it is
        for (const int previewScreen : {0, 1}) {
            const QScreen *operators = screens.at(previewScreen);
            const QScreen *audience = screens.at(1 - previewScreen);
            fixture.output.setGeometry(QRect(audience->geometry().topLeft(), QSize(800, 450)));
            QTRY_COMPARE(fixture.output.screen(), audience);
            QCOMPARE(fixture.output.devicePixelRatioF(), 2.0 - previewScreen);
            previewWindow()->setGeometry(QRect(operators->geometry().topLeft(), QSize(640, 360)));
            QTRY_COMPARE(previewWindow()->screen(), operators);
            QTRY_COMPARE(previewLabel()->size(), QSize(640, 360)); // not at once with Qt 6.8
            runOut(fixture.previewTimer());
            QCOMPARE(previewLabel()->pixmap().devicePixelRatio(), 1.0 + previewScreen);
            QCOMPARE(previewLabel()->pixmap().deviceIndependentSize(), QSizeF(640, 360));
        }
    }

    // Moved so, a window keeps its device pixels on some desktops; its picture is another one
    // anyway.
    void refresh_afterAMoveWithTheSameDevicePixels_isInThoseOfTheNewScreen()
    {
        const QList<QScreen *> screens = QGuiApplication::screens();
        ControlFixture fixture;
        fixture.show();
        fixture.button("Preview")->click();
        QCoreApplication::processEvents();
        for (const int previewScreen : {0, 1}) {
            const QScreen *screen = screens.at(previewScreen);
            const QSize size = QSize(640, 360) / (1 + previewScreen);
            previewWindow()->setGeometry(QRect(screen->geometry().topLeft(), size));
            QTRY_COMPARE(previewWindow()->screen(), screen);
            runOut(fixture.previewTimer());
            QCOMPARE(previewLabel()->pixmap().devicePixelRatio(), 1.0 + previewScreen);
        }
    }
};

VELMORA_TEST_MAIN(OutputPreviewScreensTest, {QRect(0, 0, 1920, 1080), QRect(1920, 0, 1920, 1080)},
                  1.0, "1;2")
#include "tst_OutputPreviewScreens.moc"
