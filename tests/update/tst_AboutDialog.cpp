#include "AboutDialog.h"

#include <QFrame>
#include <QGraphicsDropShadowEffect>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "AboutCard.h"
#include "Maker.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

const QString cardStyle =
    "QWidget#aboutCard {  background: qlineargradient(x1:0,y1:0,x2:0,y2:1,    stop:0 #2e2e2e, "
    "stop:1 #1a1a1a);  border: 2px solid #444444;  border-radius: 16px;}";
const QString lineStyle =
    "QFrame { background: qlineargradient(x1:0,y1:0,x2:1,y2:0,stop:0 transparent, stop:0.5 "
    "#555555, stop:1 transparent);border:none; max-height:1px; }";
const QString crossStyle =
    "QPushButton { background:none; border:none; color:#888; font-size:20px; border-radius:4px; "
    "}QPushButton:hover { color:#ff6b6b; background:rgba(255,107,107,0.1); }";
const QString webSiteStyle =
    "QPushButton { background:none; border:none; color:#22c55e;  font-size:12px; "
    "font-weight:bold; letter-spacing:0.5px; }QPushButton:hover { color:#4ade80; }";
const QString updateStyle =
    "QPushButton { background:rgba(34,197,94,0.1); border:1px solid rgba(34,197,94,0.3);  "
    "color:#22c55e; font-size:12px; font-weight:bold; padding:8px 24px;  border-radius:8px; "
    "letter-spacing:0.5px; }QPushButton:hover { background:rgba(34,197,94,0.2); "
    "border-color:rgba(34,197,94,0.5); }QPushButton:disabled { opacity:0.5; }";
const QString closeStyle =
    "QPushButton { background:#2e2e2e; border:1px solid #555; color:#cccccc;  font-size:12px; "
    "padding:7px 32px; border-radius:8px; }QPushButton:hover { background:#3a3a3a; "
    "border-color:#777; color:#ffffff; }";

} // namespace

/// The card as it is built: window, order, sizes, texts and style sheets.
class AboutDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void metaObject_hasNoMethodOfItsOwn()
    {
        const QMetaObject &meta = AboutDialog::staticMetaObject;
        QCOMPARE(meta.superClass(), &QDialog::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 0);
    }

    void window_isAFramelessModalDialog()
    {
        const AboutDialog dialog;
        QCOMPARE(dialog.windowTitle(), "About Velmora");
        QCOMPARE(dialog.windowFlags(), Qt::Dialog | Qt::FramelessWindowHint);
        QVERIFY(dialog.testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(dialog.isModal());
        QCOMPARE(dialog.windowModality(), Qt::ApplicationModal);
    }

    void window_isParentedToTheCaller()
    {
        QWidget caller;
        const AboutDialog dialog(&caller);
        QCOMPARE(dialog.parentWidget(), &caller);
        QVERIFY(dialog.isWindow());
        QVERIFY(!AboutDialog().parent());
    }

    void window_isAsWideAsGivenAndAsHighAsItsContents()
    {
        AboutDialog dialog;
        QCOMPARE(dialog.minimumWidth(), 340);
        QCOMPARE(dialog.maximumWidth(), 340);
        dialog.show();
        QCOMPARE(dialog.width(), 340);
        QCOMPARE(dialog.height(), dialog.layout()->totalSizeHint().height());
        QCOMPARE(dialog.maximumHeight(), QWIDGETSIZE_MAX);
    }

    void ownLayout_holdsOnlyTheCard()
    {
        const AboutDialog dialog;
        const auto *layout = qobject_cast<QVBoxLayout *>(dialog.layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(20, 20, 20, 20));
        QCOMPARE(layout->count(), 1);
        QCOMPARE(layout->itemAt(0)->widget(), AboutCard(dialog).widget());
        QCOMPARE(AboutCard(dialog).widget()->parentWidget(), &dialog);
    }

    void card_isDressed()
    {
        const AboutDialog dialog;
        QVERIFY(AboutCard(dialog).widget());
        QCOMPARE(AboutCard(dialog).widget()->styleSheet(), cardStyle);
        QCOMPARE(AboutCard(dialog).widget()->metaObject()->className(), "QWidget");
    }

    void card_castsAShadow()
    {
        const AboutDialog dialog;
        const auto *shadow =
            qobject_cast<QGraphicsDropShadowEffect *>(AboutCard(dialog).widget()->graphicsEffect());
        QVERIFY(shadow);
        QCOMPARE(shadow->blurRadius(), 40.0);
        QCOMPARE(shadow->color(), QColor(0, 0, 0, 160));
        QCOMPARE(shadow->offset(), QPointF(0.0, 8.0));
        QVERIFY(shadow->isEnabled());
    }

    void card_holdsItsItemsInOrder()
    {
        const AboutDialog dialog;
        const QBoxLayout *column = AboutCard(dialog).column();
        QVERIFY(qobject_cast<const QVBoxLayout *>(column));
        QCOMPARE(column->contentsMargins(), QMargins(36, 20, 36, 28));
        QCOMPARE(column->spacing(), 0);
        QCOMPARE(outline(*column),
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
        for (int i = 0; i < column->count(); ++i)
            QCOMPARE(column->stretch(i), 0);
        QVERIFY(qobject_cast<QHBoxLayout *>(AboutCard(dialog).crossRow()));
    }

    void labels_sayTheirTexts_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("styleSheet");
        QTest::addRow("logo") << 1 << QString() << "background:none;";
        QTest::addRow("title") << 3 << "VELMORA"
                               << "color:#ffffff; font-size:20px; font-weight:bold; "
                                  "letter-spacing:3px; background:none;";
        QTest::addRow("version") << 4 << "v1.1.4"
                                 << "color:#aaaaaa; font-size:12px; font-weight:bold; "
                                    "letter-spacing:1px; margin-top:4px; background:none;";
        QTest::addRow("tagline") << 8 << "Professional Velmora for Events"
                                 << "color:#ffffff; font-size:11px; letter-spacing:0.5px; "
                                    "background:none;";
        QTest::addRow("credits") << 10
                                 << QString::fromUtf8(makerCreditLine1) + '\n'
                + QString::fromUtf8(makerCreditLine2)
                                 << "color:#888888; font-size:10px; background:none;";
    }

    void labels_sayTheirTexts()
    {
        QFETCH(int, index);
        const AboutDialog dialog;
        QLayoutItem *item = AboutCard(dialog).item(index);
        const auto *label = qobject_cast<QLabel *>(item->widget());
        QVERIFY(label);
        QTEST(label->text(), "text");
        QTEST(label->styleSheet(), "styleSheet");
        QCOMPARE(label->alignment(), Qt::AlignCenter);
        QCOMPARE(item->alignment(), Qt::Alignment());
    }

    // The maker's name is not the program's own text.
    void credits_areNoMarkUp()
    {
        const AboutDialog dialog;
        const auto *credits = qobject_cast<QLabel *>(AboutCard(dialog).item(10)->widget());
        QVERIFY(credits);
        QCOMPARE(credits->textFormat(), Qt::PlainText);
    }

    void buttons_sayTheirTexts_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("styleSheet");
        QTest::addColumn<Qt::Alignment>("alignment");
        const Qt::Alignment centred = Qt::AlignHCenter;
        QTest::addRow("cross") << 0 << QString(QChar(0x00d7)) << crossStyle << Qt::Alignment();
        QTest::addRow("web site") << 14 << QString(makerWebAddress) << webSiteStyle << centred;
        QTest::addRow("update") << 18 << "Check for Updates" << updateStyle << centred;
        QTest::addRow("close") << 20 << "Close" << closeStyle << centred;
    }

    void buttons_sayTheirTexts()
    {
        QFETCH(int, index);
        const AboutDialog dialog;
        QLayoutItem *item = AboutCard(dialog).item(index);
        if (item->layout())
            item = item->layout()->itemAt(1);
        const auto *button = qobject_cast<QPushButton *>(item->widget());
        QVERIFY(button);
        QTEST(button->text(), "text");
        QTEST(button->styleSheet(), "styleSheet");
        QTEST(item->alignment(), "alignment");
        QVERIFY(button->isEnabled());
    }

    void separators_areThinLines_data()
    {
        QTest::addColumn<int>("index");
        QTest::addRow("below the version") << 6;
        QTest::addRow("below the credits") << 12;
        QTest::addRow("below the web site") << 16;
    }

    void separators_areThinLines()
    {
        QFETCH(int, index);
        qApp->setStyleSheet(applicationStyleSheet());
        AboutDialog dialog;
        QLayoutItem *item = AboutCard(dialog).item(index);
        const auto *line = qobject_cast<QFrame *>(item->widget());
        QVERIFY(line);
        QCOMPARE(line->frameShape(), QFrame::HLine);
        QCOMPARE(line->styleSheet(), lineStyle);
        QCOMPARE(item->alignment(), Qt::Alignment());
        dialog.show();
        QCOMPARE(line->height(), 1);
        qApp->setStyleSheet({});
    }

    void logo_fillsItsSquare()
    {
        const AboutDialog dialog;
        const QImage expected = QImage(":/assets/VELMORA LOGO DESKTOP NO BACKGROUND.png")
                                    .scaled(64, 64, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                                    .convertToFormat(QImage::Format_ARGB32_Premultiplied);
        const QImage logo = AboutCard(dialog).logo()->pixmap().toImage().convertToFormat(
            QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(logo.size(), expected.size());
        QCOMPARE(qMax(logo.width(), logo.height()), 64);
        // A pixmap is rounded elsewhere on the way than an image, by one or two of 255.
        QCOMPARE(logo.sizeInBytes(), expected.sizeInBytes());
        for (qsizetype i = 0; i < logo.sizeInBytes(); ++i)
            QVERIFY(qAbs(int(logo.constBits()[i]) - int(expected.constBits()[i])) <= 2);
    }

    void crossButton_isHeldToItsSize()
    {
        const AboutDialog dialog;
        QCOMPARE(AboutCard(dialog).crossButton()->minimumSize(), QSize(28, 28));
        QCOMPARE(AboutCard(dialog).crossButton()->maximumSize(), QSize(28, 28));
    }

    // Its own sheet leaves the minimum height of 28 and twice 6 of padding to the application's,
    // which beat the fixed height.
    void crossButton_isHigherInTheApplicationsDress()
    {
        qApp->setStyleSheet(applicationStyleSheet());
        AboutDialog dialog;
        dialog.show();
        const QSize size = AboutCard(dialog).crossButton()->size();
        qApp->setStyleSheet({});
        QCOMPARE(size, QSize(28, 40));
    }

    void crossButton_standsAtTheRight()
    {
        AboutDialog dialog;
        dialog.show();
        const AboutCard card(dialog);
        const QRect cross = card.crossButton()->geometry();
        QCOMPARE(cross.size(), QSize(28, 28));
        QCOMPARE(cross.right() + 1, card.widget()->width() - 36);
        QCOMPARE(cross.top(), 20);
    }

    void card_paintsNothingAroundItsShadow()
    {
        AboutDialog dialog;
        dialog.show();
        const QImage picture = dialog.grab().toImage();
        QCOMPARE(picture.pixelColor(0, 0).alpha(), 0);
        // The card's own ground inside, the shadow below it.
        QCOMPARE(picture.pixelColor(170, 40).alpha(), 255);
        const int below = picture.pixelColor(170, picture.height() - 15).alpha();
        QVERIFY2(below > 0 && below < 160, qPrintable(QString::number(below)));
    }
};

VELMORA_TEST_MAIN(AboutDialogTest)
#include "tst_AboutDialog.moc"
