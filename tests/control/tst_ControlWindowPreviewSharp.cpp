#include <QTest>

#include "ControlFixture.h"
#include "PreviewWindow.h"
#include "TestMain.h"

// The preview on a screen with two device pixels to a pixel.
class ControlWindowPreviewSharpTest : public QObject
{
    Q_OBJECT

private slots:
    void refresh_fillsTheLabel_data()
    {
        QTest::addColumn<QSize>("window");
        QTest::addColumn<QSizeF>("shown");
        QTest::newRow("at first") << QSize(640, 360) << QSizeF(576, 360);
        QTest::newRow("smaller") << QSize(320, 180) << QSizeF(288, 180);
        QTest::newRow("higher") << QSize(400, 800) << QSizeF(400, 250);
    }

    void refresh_fillsTheLabel()
    {
        QFETCH(QSize, window);
        QFETCH(QSizeF, shown);
        ControlFixture fixture;
        fixture.show();
        QCOMPARE(fixture.window->devicePixelRatioF(), 2.0);
        fixture.button("Preview")->click();
        runOut(fixture.previewTimer());
        previewWindow()->resize(window);
        runOut(fixture.previewTimer());
        const QPixmap picture = previewLabel()->pixmap();
        QCOMPARE(picture.deviceIndependentSize(), shown);
        QCOMPARE(picture.size(), (shown * 2).toSize());
        QCOMPARE(previewWindow()->size(), window);
    }
};

VELMORA_TEST_MAIN(ControlWindowPreviewSharpTest, {QRect(0, 0, 3840, 2160)}, 2.0)
#include "tst_ControlWindowPreviewSharp.moc"
