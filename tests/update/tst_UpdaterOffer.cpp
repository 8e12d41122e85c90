#include "Updater.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QProxyStyle>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocument>

#include "Accessible.h"
#include "StyleSheet.h"
#include "TestMain.h"
#include "UpdateStage.h"

namespace {

const QString page = "https://download.example/velmora?a=1&b=%20#c";

// Styles differ in whether a message box's texts can be selected, and a label that can do
// so treats its text in another way.
class MessageStyle : public QProxyStyle
{
public:
    explicit MessageStyle(bool selectable)
        : QProxyStyle("Fusion")
        , selectable(selectable)
    {
    }

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returnData) const override
    {
        if (hint == SH_MessageBox_TextInteractionFlags)
            return selectable ? Qt::TextSelectableByMouse : Qt::NoTextInteraction;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }

private:
    bool selectable;
};

// Closes the box whatever a check says before.
void closeSoon(QMessageBox &box)
{
    QTimer::singleShot(0, &box, &QWidget::close);
}

QByteArray answerWithNotes(const QString &notes)
{
    return httpAnswer(updateDocument("2.0.0", page, notes));
}

} // namespace

/// The two message boxes: what they hold, what the user reads, and what the browser opens.
class UpdaterOfferTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        qApp->setStyle("Fusion");
        qApp->setStyleSheet({});
    }

    void box_looksLikeThis_data()
    {
        using Buttons = QList<QPair<QString, QMessageBox::ButtonRole>>;
        QTest::addColumn<QString>("version");
        QTest::addColumn<QStringList>("texts"); // title, text, informative text
        QTest::addColumn<Qt::TextFormat>("format");
        QTest::addColumn<Buttons>("buttons");
        QTest::addColumn<QMessageBox::StandardButtons>("standardButtons");
        QTest::addRow("offer")
            << "1.2.0"
            << QStringList{"Update Available \u2014 Velmora",
                           "<b>Velmora 1.2.0 is available</b><br>You have 1.1.4.", "Faster start."}
            << Qt::RichText
            << Buttons{{"Download", QMessageBox::AcceptRole}, {"Later", QMessageBox::RejectRole}}
            << QMessageBox::StandardButtons(QMessageBox::NoButton);
        QTest::addRow("confirmation")
            << "1.1.4" << QStringList{"Velmora", "You're up to date.\nVersion 1.1.4", QString()}
            << Qt::AutoText << Buttons{{"OK", QMessageBox::AcceptRole}}
            << QMessageBox::StandardButtons(QMessageBox::Ok);
    }

    // A window that is active does not become the box's parent.
    void box_looksLikeThis()
    {
        QFETCH(QString, version);
        QWidget window;
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        UpdateStage stage;
        stage.setAction([](QMessageBox &box) {
            closeSoon(box);
            QTEST(QStringList({box.windowTitle(), box.text(), box.informativeText()}), "texts");
            QTEST(box.textFormat(), "format");
            QTEST(box.standardButtons(), "standardButtons");
            QList<QPair<QString, QMessageBox::ButtonRole>> buttons;
            for (QAbstractButton *button : box.buttons())
                buttons.append({button->text().remove('&'), box.buttonRole(button)});
            QTEST(buttons, "buttons");
            QCOMPARE(box.icon(), QMessageBox::Information);
            QVERIFY(box.isModal());
            QVERIFY(!box.parent());
        });
        QVERIFY(stage.check(httpAnswer(updateDocument(version, page, "Faster start.")), false));
        QCOMPARE(stage.boxes().size(), 1);
    }

    void versionText_isShownAsReceived_data()
    {
        QTest::addColumn<QString>("version");
        for (const char *version :
             {"2.0.%1", "2.0.%2", "2.%2.%1", "2.%10.0", "2.<i>0</i>", "2.0&amp;", " 2.0.0 ",
              "2.0.0\n2.1.0", "2.0.0 \xC3\xA4\xE2\x82\xAC"})
            QTest::addRow("%s", version) << QString(version);
    }

    // Not escaped, unlike the release notes: the box draws its mark-up.
    void versionText_isShownAsReceived()
    {
        QFETCH(QString, version);
        UpdateStage stage;
        QVERIFY(stage.check(httpAnswer(updateDocument(version))));
        QCOMPARE(stage.texts(), QStringList(offerText(version)));
    }

    void releaseNotes_areEscaped_data()
    {
        QTest::addColumn<QString>("notes");
        QTest::addColumn<QString>("informativeText");
        const char *const rows[][2] = {
            {"", ""},
            {"Faster start.", "Faster start."},
            {"<b>Fixes</b>", "&lt;b&gt;Fixes&lt;/b&gt;"},
            {"Fixes & more", "Fixes &amp; more"},
            {"&lt;", "&amp;lt;"},
            {"the \"big\" one's", "the &quot;big&quot; one's"},
            {"%1 and %2", "%1 and %2"},
            {"one\ntwo & three", "one\ntwo &amp; three"},
            {"  ", "  "},
        };
        for (const auto &row : rows)
            QTest::addRow("\"%s\"", row[0]) << QString(row[0]) << QString(row[1]);
    }

    void releaseNotes_areEscaped()
    {
        QFETCH(QString, notes);
        UpdateStage stage;
        QVERIFY(stage.check(answerWithNotes(notes)));
        QCOMPARE(stage.texts(), QStringList(offerText("2.0.0")));
        QTEST(stage.boxes().constFirst().informativeText, "informativeText");
    }

    void releaseNotes_areReadAsWritten_data()
    {
        QTest::addColumn<QString>("notes");
        for (const char *notes :
             {"Faster start.", "Fixes & more <beta>", "Fixes & more", "The \"big\" one",
              "<b>Fixes</b><br>and <img src='x'>", "&lt;b&gt; &amp;amp;",
              "Faster start.\n\n- one\n- two", "Fixes <beta>\n\n  - one & two\n  - three"})
            QTest::addRow("%s", notes) << QString(notes);
    }

    // The box holds the escaped text; the eye gets what the label makes of it.
    void releaseNotes_areReadAsWritten()
    {
        QFETCH(QString, notes);
        for (const bool selectable : {true, false}) {
            qApp->setStyle(new MessageStyle(selectable));
            UpdateStage stage;
            QString read;
            stage.setAction([&](QMessageBox &box) {
                const QList<QLabel *> labels = box.findChildren<QLabel *>();
                for (const QLabel *label : labels) {
                    if (label->text() != notes.toHtmlEscaped())
                        continue;
                    const auto *document = label->findChild<QTextDocument *>();
                    const bool isPlain = label->textFormat() == Qt::PlainText || !document;
                    read = isPlain ? label->text() : document->toPlainText();
                }
                box.close();
            });
            QVERIFY(stage.check(answerWithNotes(notes)));
            QCOMPARE(read, notes);
        }
    }

    void box_isSaidWithoutMarkUpAndWalked_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("lines");
        // The second would be filled in, were the text a template.
        for (const QString version : {"1.2.0", "1.2.0.%2"}) {
            QTest::newRow(qPrintable(version))
                << version << "Velmora " + version + " is available. You have 1.1.4."
                << QStringList{"button Download", "button Later",
                               "Velmora " + version + " is available\nYou have 1.1.4.",
                               "Faster start."};
        }
        QTest::newRow("confirmation")
            << "1.1.4" << QString() << QStringList{"button OK", upToDateText};
    }

    void box_isSaidWithoutMarkUpAndWalked()
    {
        QFETCH(QString, version);
        QFETCH(QString, name);
        qApp->setStyleSheet(applicationStyleSheet()); // as in the program, for the places
        UpdateStage stage;
        QStringList lines;
        stage.setAction([&](QMessageBox &box) {
            closeSoon(box);
            lines = controlLines(box) + textLines(box);
            if (!name.isEmpty())
                QCOMPARE(QAccessible::queryAccessibleInterface(&box)->text(QAccessible::Name),
                         name);
            QCOMPARE(unsayableNames(box), QStringList());
            QCOMPARE(tabDetours(box), QStringList());
        });
        QVERIFY(stage.check(httpAnswer(updateDocument(version, {}, "Faster start.")), false));
        QTEST(lines, "lines");
    }

    void releaseNotes_growTheBoxByTheirLines()
    {
        const auto heightWith = [](const QString &notes) {
            UpdateStage stage;
            int height = 0;
            stage.setAction([&](QMessageBox &box) {
                height = box.height();
                box.close();
            });
            return stage.check(answerWithNotes(notes)) ? height : 0;
        };
        for (const QString &styleSheet : {QString(), applicationStyleSheet()}) {
            qApp->setStyleSheet(styleSheet);
            const int line = QFontMetrics(qApp->font()).height();
            const int oneLine = heightWith("<one>");
            QVERIFY(oneLine > 0);
            QVERIFY(heightWith("<one>\n2\n3\n4\n5\n6\n7\n8") >= oneLine + 7 * (line - 1));
            QVERIFY(heightWith("one\n2\n3\n4\n5\n6\n7\n8") >= oneLine + 7 * (line - 1));
        }
    }

    void download_opensHttpsAddressesOnly_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QStringList>("opened");
        QTest::addRow("https") << page << QStringList(page);
        QTest::addRow("https, other letters in capitals")
            << "https://Download.Example/A" << QStringList("https://download.example/A");
        QTest::addRow("https, blank inside")
            << "https://a.example/a b" << QStringList("https://a.example/a%20b");
        // The scheme ends with its colon.
        for (const char *address : {"https:a.example", "https:/a.example", "https:"})
            QTest::addRow("\"%s\"", address) << address << QStringList(address);
        for (const char *address : {"",
                                    "http://a.example/",
                                    "HTTPS://a.example/",
                                    "Https://a.example/",
                                    "httpS://a.example/",
                                    "ftp://a.example/",
                                    "file:///etc/hostname",
                                    "javascript:alert(1)",
                                    "httpsx://a.example/",
                                    "xhttps://a.example/",
                                    "https",
                                    "https//a.example/",
                                    " https://a.example/",
                                    "\thttps://a.example/",
                                    "\nhttps://a.example/",
                                    "a.example",
                                    "//a.example/",
                                    "/https:",
                                    "https://[",
                                    "https://a.example:port/",
                                    "https ://a.example/",
                                    "%68ttps://a.example/",
                                    "\"https://a.example/\""})
            QTest::addRow("\"%s\"", address) << address << QStringList();
    }

    void download_opensHttpsAddressesOnly()
    {
        QTest::failOnWarning(QRegularExpression("^(?!This plugin does not support propagate)"));
        QFETCH(QString, address);
        UpdateStage stage;
        stage.press("Download");
        QVERIFY(stage.check(httpAnswer(updateDocument("2.0.0", address))));
        QCOMPARE(stage.boxes().size(), 1);
        QTEST(stage.opened(), "opened");
    }

    void anyOtherEnd_opensNothing_data()
    {
        using End = std::function<void(QMessageBox &)>;
        QTest::addColumn<End>("end");
        QTest::addRow("Later") << End();
        QTest::addRow("Escape") << End([](QMessageBox &b) { QTest::keyClick(&b, Qt::Key_Escape); });
        QTest::addRow("closing the window") << End([](QMessageBox &box) { box.close(); });
        QTest::addRow("hiding the window") << End([](QMessageBox &box) { box.hide(); });
    }

    void anyOtherEnd_opensNothing()
    {
        QFETCH(const std::function<void(QMessageBox &)>, end);
        UpdateStage stage;
        if (end)
            stage.setAction(end);
        else
            stage.press("Later");
        QVERIFY(stage.check(httpAnswer(updateDocument("2.0.0", page)), false));
        QCOMPARE(stage.boxes().size(), 1);
        QVERIFY(stage.opened().isEmpty());
    }

    void linkInTheVersion_isNotFollowed()
    {
        const QString address = "https://link.example/";
        UpdateStage stage;
        QStringList clicked;
        stage.setAction([&](QMessageBox &box) {
            const QList<QLabel *> labels = box.findChildren<QLabel *>();
            for (QLabel *label : labels) {
                connect(label, &QLabel::linkActivated, label,
                        [&](const QString &link) { clicked.append(link); });
                for (int x = 0; x < label->width(); x += 8) {
                    for (int y = 0; y < label->height(); y += 8)
                        QTest::mouseClick(label, Qt::LeftButton, Qt::NoModifier, QPoint(x, y));
                }
            }
            QTest::keyClick(&box, Qt::Key_Tab);
            QTest::keyClick(&box, Qt::Key_Return);
        });
        const QString version = "2.0.0.<a href=\"" + address + "\">newest</a>";
        QVERIFY(stage.check(httpAnswer(updateDocument(version))));
        QCOMPARE(stage.opened(), QStringList());
        QVERIFY(clicked.contains(address));
    }
};

VELMORA_TEST_MAIN(UpdaterOfferTest)
#include "tst_UpdaterOffer.moc"
