#include "AboutDialog.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include "AboutCard.h"
#include "TestMain.h"

static void removeLogo()
{
    Q_CLEANUP_RESOURCE(oblong);
}

/// The card on a screen with two device pixels to the pixel, in an executable whose logo picture
/// is 4 pixels wide and 2 high.
class AboutDialogLogoTest : public QObject
{
    Q_OBJECT

private slots:
    void oblongLogo_keepsItsShapeSharply()
    {
        AboutDialog dialog;
        const QPixmap logo = AboutCard(dialog).logo()->pixmap();
        QCOMPARE(logo.deviceIndependentSize(), QSizeF(64, 32));
        QCOMPARE(logo.size(), (QSizeF(64, 32) * dialog.devicePixelRatioF()).toSize());
        dialog.show();
        QCOMPARE(AboutCard(dialog).logo()->height(), 32);
    }

    // The last one, as there is no picture from here on.
    void missingLogo_leavesAnEmptyLabelInItsPlace()
    {
        removeLogo();
        QVERIFY(!QFile::exists(":/assets/VELMORA LOGO DESKTOP NO BACKGROUND.png"));
        QTest::failOnWarning(QRegularExpression("^(?!This plugin does not support propagate)"));
        AboutDialog dialog;
        dialog.show();
        const AboutCard card(dialog);
        QVERIFY(card.logo());
        QCOMPARE(card.logo()->pixmap().size(), QSize(0, 0));
        QCOMPARE(card.logo()->styleSheet(), "background:none;");
        QCOMPARE(card.column()->count(), 21);
    }
};

VELMORA_TEST_MAIN(AboutDialogLogoTest, {QRect(0, 0, 1920, 1080)}, 2.0)
#include "tst_AboutDialogLogo.moc"
