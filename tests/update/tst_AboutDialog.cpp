#include "AboutDialog.h"

#include <QFrame>
#include <QGraphicsDropShadowEffect>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "AboutCard.h"
#include "Accessible.h"
#include "StyleSheet.h"
#include "TestMain.h"
#include "Vendor.h"

namespace {

const QString lineStyle =
    "QFrame { background: qlineargradient(x1:0,y1:0,x2:1,y2:0,stop:0 transparent, stop:0.5 "
    "#555555, stop:1 transparent);border:none; max-height:1px; }";

// The layout's items in order: a widget's class and text, a spacing's size, a nested layout's
// items in brackets.
QStringList outline(const QLayout &layout)
{
    QStringList items;
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem *item = layout.itemAt(i);
        if (const QWidget *widget = item->widget()) {
            const QString text = widget->property("text").toString();
            items.append(QString(widget->metaObject()->className()) + ' ' + text);
        } else if (const QLayout *nested = item->layout()) {
            items.append('[' + outline(*nested).join(", ") + ']');
        } else {
            items.append(item->expandingDirections() ? QString("stretch")
                                                     : QString::number(item->sizeHint().height()));
        }
    }
    return items;
}

} // namespace

/// The card as it is built: window, order, sizes, texts and style sheets, and what a screen reader
/// says of it.
class AboutDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qApp->setStyleSheet(applicationStyleSheet()); // as in the program, for the sizes
    }

    void metaObject_hasNoMethodOfItsOwn()
    {
        const QMetaObject &meta = AboutDialog::staticMetaObject;
        QCOMPARE(meta.superClass(), &QDialog::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 0);
    }

    void window_isAFramelessModalDialog()
    {
        QWidget caller;
        AboutDialog dialog(&caller);
        QCOMPARE(dialog.parentWidget(), &caller);
        QVERIFY(!AboutDialog().parent());
        QCOMPARE(dialog.windowTitle(), "About Velmora");
        QCOMPARE(dialog.windowFlags(), Qt::Dialog | Qt::FramelessWindowHint);
        QVERIFY(dialog.testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(dialog.windowModality(), Qt::ApplicationModal);
        QCOMPARE(dialog.minimumWidth(), 340);
        QCOMPARE(dialog.maximumWidth(), 340);
        QCOMPARE(dialog.maximumHeight(), QWIDGETSIZE_MAX);
        dialog.show();
        QCOMPARE(dialog.height(), dialog.layout()->totalSizeHint().height());
    }

    void window_holdsOnlyTheCardWithItsShadow()
    {
        const AboutDialog dialog;
        const auto *layout = qobject_cast<QVBoxLayout *>(dialog.layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(20, 20, 20, 20));
        QCOMPARE(layout->count(), 1);
        const QWidget *card = AboutCard(dialog).widget();
        QVERIFY(card);
        QCOMPARE(layout->itemAt(0)->widget(), card);
        QCOMPARE(card->styleSheet(),
                 "QWidget#aboutCard {  background: qlineargradient(x1:0,y1:0,x2:0,y2:1,    stop:0 "
                 "#2e2e2e, "
                 "stop:1 #1a1a1a);  border: 2px solid #444444;  border-radius: 16px;}");
        QCOMPARE(card->metaObject()->className(), "QWidget");
        const auto *shadow = qobject_cast<QGraphicsDropShadowEffect *>(card->graphicsEffect());
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
        const QString credits = QString(vendorCreditLine1) + '\n' + vendorCreditLine2;
        QCOMPARE(
            outline(*column).join("; "),
            "[stretch, QPushButton ×]; QLabel ; 8; QLabel VELMORA; QLabel v1.1.4; 14; QFrame ; "
            "12; QLabel Professional Velmora for Events; 6; QLabel "
                + credits + "; 12; QFrame ; 10; QPushButton " + vendorWebAddress
                + "; 10; QFrame ; 12; QPushButton Check for Updates; 16; QPushButton Close");
        for (int i = 0; i < column->count(); ++i)
            QCOMPARE(column->stretch(i), 0);
        QVERIFY(qobject_cast<QHBoxLayout *>(AboutCard(dialog).crossRow()));
    }

    void item_isStyled_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("styleSheet");
        QTest::addColumn<Qt::Alignment>("alignment");
        const auto add = [](const char *item, int index, const QString &styleSheet,
                            Qt::Alignment alignment = {}) {
            QTest::newRow(item) << index << styleSheet << alignment;
        };
        add("cross", 0,
            "QPushButton { background:none; border:none; color:#888; font-size:20px; "
            "border-radius:4px; "
            "}QPushButton:hover { color:#ff6b6b; background:rgba(255,107,107,0.1); }");
        add("logo", 1, "background:none;");
        add("title", 3,
            "color:#ffffff; font-size:20px; font-weight:bold; letter-spacing:3px; "
            "background:none;");
        add("version", 4,
            "color:#aaaaaa; font-size:12px; font-weight:bold; letter-spacing:1px; margin-top:4px; "
            "background:none;");
        add("first line", 6, lineStyle);
        add("tagline", 8, "color:#ffffff; font-size:11px; letter-spacing:0.5px; background:none;");
        add("credits", 10, "color:#888888; font-size:10px; background:none;");
        add("second line", 12, lineStyle);
        add("web site", 14,
            "QPushButton { background:none; border:none; color:#22c55e;  font-size:12px; "
            "font-weight:bold; letter-spacing:0.5px; }QPushButton:hover { color:#4ade80; }",
            Qt::AlignHCenter);
        add("third line", 16, lineStyle);
        add("update", 18,
            "QPushButton { background:rgba(34,197,94,0.1); border:1px solid rgba(34,197,94,0.3);  "
            "color:#22c55e; font-size:12px; font-weight:bold; padding:8px 24px;  "
            "border-radius:8px; "
            "letter-spacing:0.5px; }QPushButton:hover { background:rgba(34,197,94,0.2); "
            "border-color:rgba(34,197,94,0.5); }QPushButton:disabled { opacity:0.5; }",
            Qt::AlignHCenter);
        add("close", 20,
            "QPushButton { background:#2e2e2e; border:1px solid #555; color:#cccccc;  "
            "font-size:12px; "
            "padding:7px 32px; border-radius:8px; }QPushButton:hover { background:#3a3a3a; "
            "border-color:#777; color:#ffffff; }",
            Qt::AlignHCenter);
    }

    void item_isStyled()
    {
        QFETCH(int, index);
        AboutDialog dialog;
        dialog.show();
        QLayoutItem *item = AboutCard(dialog).item(index);
        if (item->layout())
            item = item->layout()->itemAt(1);
        const QWidget *widget = item->widget();
        QTEST(widget->styleSheet(), "styleSheet");
        QTEST(item->alignment(), "alignment");
        QVERIFY(widget->isEnabled());
        if (const auto *label = qobject_cast<const QLabel *>(widget)) {
            QCOMPARE(label->alignment(), Qt::AlignCenter);
            // The vendor's name is not the program's own text.
            QCOMPARE(label->textFormat(), index == 10 ? Qt::PlainText : Qt::AutoText);
        } else if (const auto *line = qobject_cast<const QFrame *>(widget)) {
            QCOMPARE(line->frameShape(), QFrame::HLine);
            QCOMPARE(line->height(), 1);
        }
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

    // Its own sheet leaves the minimum height of 28 and twice 6 of padding to the application's,
    // which beat the fixed height.
    void crossButton_standsAtTheRight()
    {
        AboutDialog dialog;
        const AboutCard card(dialog);
        QCOMPARE(card.crossButton()->maximumSize(), QSize(28, 28));
        dialog.show();
        QCOMPARE(card.crossButton()->size(), QSize(28, 40));
        QCOMPARE(card.crossButton()->geometry().right() + 1, card.widget()->width() - 36);
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

    void card_isSaidAndWalked()
    {
        AboutDialog dialog;
        dialog.show();
        const QString webSite = QString("button Web site ") + vendorWebAddress;
        QCOMPARE(controlLines(dialog),
                 QStringList({"button Close", "picture Velmora logo", webSite,
                              "button Check for Updates", "button Close"}));
        QStringList unsayable = unsayableNames(dialog);
        unsayable.removeOne(webSite); // the vendor's, which need not be words
        QCOMPARE(unsayable, QStringList());
        // The one name that two buttons of a window have in common: they do the same.
        QCOMPARE(sharedButtonNames(dialog), QStringList{"Close"});
        QCOMPARE(tabStops(dialog).size(), 4);
        QCOMPARE(tabDetours(dialog), QStringList());
        AboutCard(dialog).logo()->setPixmap(QPixmap());
        QVERIFY(textLines(dialog).contains("Velmora logo")); // where it would be
    }

    void tab_startsAtTheTop()
    {
        AboutDialog dialog;
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QCOMPARE(dialog.focusWidget(), AboutCard(dialog).crossButton());
    }
};

VELMORA_TEST_MAIN(AboutDialogTest)
#include "tst_AboutDialog.moc"
