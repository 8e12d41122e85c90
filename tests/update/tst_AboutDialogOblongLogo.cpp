#include "AboutDialog.h"

#include <QTest>

#include "AboutCard.h"
#include "TestMain.h"

/// The card in an executable whose logo picture is 4 pixels wide and 2 high.
class AboutDialogOblongLogoTest : public QObject
{
    Q_OBJECT

private slots:
    void oblongLogo_keepsItsShape()
    {
        const AboutDialog dialog;
        QCOMPARE(AboutCard(dialog).logo()->pixmap().size(), QSize(64, 32));
    }
};

VELMORA_TEST_MAIN(AboutDialogOblongLogoTest)
#include "tst_AboutDialogOblongLogo.moc"
