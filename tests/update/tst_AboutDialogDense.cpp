#include "AboutDialog.h"

#include <QTest>

#include "AboutCard.h"
#include "TestMain.h"

/// The card on a screen with two device pixels to the pixel.
class AboutDialogDenseTest : public QObject
{
    Q_OBJECT

private slots:
    void logo_fillsItsSquareSharply()
    {
        AboutDialog dialog;
        if (dialog.devicePixelRatioF() != 2.0)
            QSKIP("This platform's screen has another device pixel ratio than 2.");
        const QPixmap logo = AboutCard(dialog).logo()->pixmap();
        const QSizeF size = logo.deviceIndependentSize();
        QCOMPARE(qMax(size.width(), size.height()), 64.0);
        QCOMPARE(qMax(logo.width(), logo.height()), 128);
        dialog.show();
        QCOMPARE(AboutCard(dialog).logo()->height(), int(size.height()));
    }
};

VELMORA_TEST_MAIN(AboutDialogDenseTest, {QRect(0, 0, 1920, 1080)}, 2.0)
#include "tst_AboutDialogDense.moc"
