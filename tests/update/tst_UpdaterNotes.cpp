#include "Updater.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QProxyStyle>
#include <QTest>
#include <QTextDocument>

#include "StyleSheet.h"
#include "TestMain.h"
#include "UpdateStage.h"

namespace {

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

} // namespace

/// The release notes: what the box holds, and what a person reads.
class UpdaterNotesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(trustedAuthority().isValid(), qPrintable(trustedAuthority().problem()));
        QVERIFY2(!endpointIdentity().certificate.isNull(),
                 qPrintable(trustedAuthority().problem()));
    }

    void releaseNotes_areEscaped_data()
    {
        QTest::addColumn<QString>("notes");
        QTest::addColumn<QString>("informativeText");
        QTest::addRow("none") << ""
                              << "";
        QTest::addRow("plain") << "Faster start."
                               << "Faster start.";
        QTest::addRow("mark-up") << "<b>Fixes</b>"
                                 << "&lt;b&gt;Fixes&lt;/b&gt;";
        QTest::addRow("ampersand") << "Fixes & more"
                                   << "Fixes &amp; more";
        QTest::addRow("entity") << "&lt;"
                                << "&amp;lt;";
        QTest::addRow("quotes") << "the \"big\" one's"
                                << "the &quot;big&quot; one's";
        QTest::addRow("place markers") << "%1 and %2"
                                       << "%1 and %2";
        QTest::addRow("lines") << "one\ntwo & three"
                               << "one\ntwo &amp; three";
        QTest::addRow("blanks") << "  "
                                << "  ";
    }

    void releaseNotes_areEscaped()
    {
        QFETCH(QString, notes);
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument("2.0.0", "https://a.example/", notes)));
        Updater updater;
        updater.check(true);
        QVERIFY(stage.settle());
        QCOMPARE(stage.boxes().size(), 1);
        QTEST(stage.boxes().constFirst().informativeText, "informativeText");
        QCOMPARE(stage.boxes().constFirst().text,
                 "<b>Velmora 2.0.0 is available</b><br>You have 1.1.4.");
    }

    void releaseNotes_areReadAsWritten_data()
    {
        QTest::addColumn<QString>("notes");
        QTest::addColumn<bool>("selectable");
        for (const char *notes :
             {"Faster start.", "Fixes & more <beta>", "Fixes & more", "The \"big\" one",
              "<b>Fixes</b><br>and <img src='x'>", "&lt;b&gt; &amp;amp;",
              "Faster start.\n\n- one\n- two", "Fixes <beta>\n\n  - one & two\n  - three"}) {
            QTest::addRow("%s, selectable", notes) << notes << true;
            QTest::addRow("%s, not selectable", notes) << notes << false;
        }
    }

    // The box holds the escaped text; the eye gets what the label makes of it.
    void releaseNotes_areReadAsWritten()
    {
        QFETCH(QString, notes);
        QFETCH(bool, selectable);
        qApp->setStyle(new MessageStyle(selectable));
        UpdateStage stage;
        stage.server.setAnswer(httpAnswer(updateDocument("2.0.0", "https://a.example/", notes)));
        QString read;
        stage.setAction([&](QMessageBox &box) {
            const QList<QLabel *> labels = box.findChildren<QLabel *>();
            for (const QLabel *label : labels) {
                if (label->text() != notes.toHtmlEscaped())
                    continue;
                const auto *document = label->findChild<QTextDocument *>();
                read = label->textFormat() == Qt::PlainText || !document ? label->text()
                                                                         : document->toPlainText();
            }
            box.close();
        });
        Updater updater;
        updater.check(true);
        QVERIFY(stage.settle());
        QCOMPARE(read, notes);
    }

    void releaseNotes_growTheBoxByTheirLines_data()
    {
        QTest::addColumn<QString>("styleSheet");
        QTest::addRow("dressed") << applicationStyleSheet();
        QTest::addRow("bare") << QString();
    }

    void releaseNotes_growTheBoxByTheirLines()
    {
        QFETCH(QString, styleSheet);
        qApp->setStyleSheet(styleSheet);
        const auto heightWith = [](const QString &notes) {
            UpdateStage stage;
            stage.server.setAnswer(
                httpAnswer(updateDocument("2.0.0", "https://a.example/", notes)));
            int height = 0;
            stage.setAction([&](QMessageBox &box) {
                height = box.height();
                box.close();
            });
            Updater updater;
            updater.check(true);
            [&] { QVERIFY(stage.settle()); }();
            return height;
        };
        const int line = QFontMetrics(qApp->font()).height();
        const int oneLine = heightWith("<one>");
        QVERIFY(heightWith("<one>\n2\n3\n4\n5\n6\n7\n8") >= oneLine + 7 * (line - 1));
        QVERIFY(heightWith("one\n2\n3\n4\n5\n6\n7\n8") >= oneLine + 7 * (line - 1));
    }
};

VELMORA_TEST_MAIN(UpdaterNotesTest)
#include "tst_UpdaterNotes.moc"
