#include "AboutDialog.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include "AboutCard.h"
#include "TestMain.h"

/// The card in an executable without the logo picture.
class AboutDialogNoLogoTest : public QObject
{
    Q_OBJECT

private slots:
    void missingLogo_leavesAnEmptyLabelInItsPlace()
    {
        QVERIFY(!QFile::exists(":/assets/VELMORA LOGO DESKTOP NO BACKGROUND.png"));
        QTest::failOnWarning(QRegularExpression("^(?!This plugin does not support propagate)"));
        AboutDialog dialog;
        dialog.show();
        QVERIFY(AboutCard(dialog).logo());
        QVERIFY(AboutCard(dialog).logo()->pixmap().isNull());
        QCOMPARE(AboutCard(dialog).logo()->pixmap().size(), QSize(0, 0));
        QCOMPARE(AboutCard(dialog).logo()->alignment(), Qt::AlignCenter);
        QCOMPARE(AboutCard(dialog).logo()->styleSheet(), "background:none;");
        QCOMPARE(outline(*AboutCard(dialog).column()),
                 QStringList({"[stretch QPushButton]",
                              "QLabel",
                              "8",
                              "QLabel",
                              "QLabel",
                              "14",
                              "QFrame",
                              "12",
                              "QLabel",
                              "6",
                              "QLabel",
                              "12",
                              "QFrame",
                              "10",
                              "QPushButton",
                              "10",
                              "QFrame",
                              "12",
                              "QPushButton",
                              "16",
                              "QPushButton"}));
    }
};

VELMORA_TEST_MAIN(AboutDialogNoLogoTest)
#include "tst_AboutDialogNoLogo.moc"
