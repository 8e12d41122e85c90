#include <QRegularExpression>
#include <QTest>

#include "StyleSheet.h"
#include "TestMain.h"

namespace {

struct Rule
{
    QString selector;
    QString properties; ///< "name value; name value"
};

const QList<Rule> &wantedRules()
{
    static const QList<Rule> rules{
        {"QMainWindow, QDialog", "background-color #1c1c1c"},
        {"QWidget",
         "background-color #1c1c1c; color #e8e8e8; font-family 'Segoe UI', sans-serif; "
         "font-size 13px"},
        {"QPushButton",
         "background-color #2b2b2b; color #e8e8e8; border 1px solid #444; "
         "border-radius 4px; padding 6px 14px; min-height 28px"},
        {"QPushButton:hover", "background-color #383838; border-color #666"},
        {"QPushButton:pressed", "background-color #1a6633"},
        {"QPushButton:checked", "background-color #1a5c2a; border-color #2a9c4a; color #ffffff"},
        {"QPushButton:disabled", "background-color #222; color #555; border-color #333"},
        {"QPushButton#startBtn",
         "background-color #1a5c1a; border-color #2a8c2a; font-weight bold; "
         "font-size 14px"},
        {"QPushButton#startBtn:hover", "background-color #226622"},
        {"QPushButton#pauseBtn",
         "background-color #5c4a00; border-color #8c7000; font-weight bold"},
        {"QPushButton#pauseBtn:hover", "background-color #6e5900"},
        {"QPushButton#resetBtn",
         "background-color #5c1a1a; border-color #8c2a2a; font-weight bold"},
        {"QPushButton#resetBtn:hover", "background-color #6e2020"},
        {"QPushButton#settingsBtn",
         "background-color transparent; border 1px solid #444; font-size 16px; "
         "min-width 36px"},
        {"QPushButton#outputToggleBtn",
         "background-color #1a3a5c; border-color #2a5c8c; font-weight bold"},
        {"QPushButton#outputToggleBtn:hover", "background-color #224a6e"},
        {"QLabel#timerPreview",
         "color #00cc00; font-size 48px; font-weight bold; font-family monospace; "
         "padding 4px 16px"},
        {"QLabel#sectionHeader",
         "color #888; font-size 10px; font-weight bold; text-transform uppercase; "
         "letter-spacing 1px"},
        {"QLineEdit",
         "background-color #2b2b2b; color #e8e8e8; border 1px solid #444; "
         "border-radius 3px; padding 4px 8px; font-size 13px"},
        {"QLineEdit:focus", "border-color #2a8c4a"},
        {"QFrame[frameShape=\"4\"], QFrame[frameShape=\"5\"]", "color #333"},
        {"QScrollArea", "background-color #1c1c1c; border none"},
        {"QScrollBar:vertical", "background #1c1c1c; width 8px"},
        {"QScrollBar::handle:vertical", "background #444; border-radius 4px; min-height 20px"},
        {"QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical", "height 0"},
        {"QStatusBar", "background-color #161616; color #888; font-size 11px"},
        {"QTabWidget::pane", "border 1px solid #444; background #1c1c1c"},
        {"QTabBar::tab",
         "background #2b2b2b; color #aaa; padding 6px 16px; border 1px solid #444; "
         "border-bottom none"},
        {"QTabBar::tab:selected", "background #1c1c1c; color #e8e8e8"},
        {"QTabBar::tab:hover", "background #333"},
        {"QListWidget", "background-color #2b2b2b; border 1px solid #444; color #e8e8e8"},
        {"QListWidget::item:selected", "background-color #1a5c2a"},
        {"QListWidget#presetList", "background transparent; border none; padding 0"},
        {"QListWidget#presetList::item",
         "background #2b2b2b; border 1px solid #444; padding 4px 10px; color #e8e8e8; "
         "min-width 54px"},
        {"QListWidget#presetList::item:selected", "background #1a5c2a; border-color #2a9c4a"},
        {"QListWidget#presetList::item:hover", "background #383838; border-color #666"},
        {"QCheckBox", "spacing 8px"},
        {"QCheckBox::indicator",
         "width 16px; height 16px; border 1px solid #555; border-radius 2px; "
         "background #2b2b2b"},
        {"QCheckBox::indicator:checked", "background #1a6633; border-color #2a9c4a"},
        {"QRadioButton", "spacing 8px"},
        {"QDialogButtonBox QPushButton", "min-width 80px"},
        {"QColorDialog", "background #1c1c1c"},
    };
    return rules;
}

/// The sheet's rules, with blanks and line breaks around selectors and properties removed.
QList<Rule> rulesOf(const QString &sheet)
{
    QList<Rule> rules;
    const QStringList texts = sheet.split('}');
    for (const QString &text : texts) {
        if (text.trimmed().isEmpty())
            continue;
        QStringList properties;
        const QStringList declarations = text.section('{', 1).split(';', Qt::SkipEmptyParts);
        for (const QString &declaration : declarations) {
            if (declaration.trimmed().isEmpty())
                continue;
            properties.append(declaration.section(':', 0, 0).trimmed() + ' '
                              + declaration.section(':', 1).trimmed());
        }
        rules.append({text.section('{', 0, 0).trimmed(), properties.join("; ")});
    }
    return rules;
}

/// The rules one a line, as in "selector { name: value; name: value; }".
QString oneRuleALine()
{
    QString text;
    for (const Rule &rule : wantedRules()) {
        text += rule.selector + " {";
        const QStringList properties = rule.properties.split("; ");
        for (const QString &property : properties)
            text += ' ' + property.section(' ', 0, 0) + ": " + property.section(' ', 1) + ';';
        text += " }\n";
    }
    return text;
}

} // namespace

/// The sheet as text: every rule and property, their order and their notation.
class StyleSheetTest : public QObject
{
    Q_OBJECT

private slots:
    void sheet_isOf3397Characters() { QCOMPARE(applicationStyleSheet().size(), 3397); }

    void sheet_hasFortyTwoRules()
    {
        QCOMPARE(wantedRules().size(), 42);
        QCOMPARE(rulesOf(applicationStyleSheet()).size(), 42);
    }

    void rule_standsInItsPlaceWithItsProperties_data()
    {
        QTest::addColumn<qsizetype>("index");
        for (qsizetype i = 0; i < wantedRules().size(); ++i)
            QTest::newRow(qPrintable(wantedRules().at(i).selector)) << i;
    }

    void rule_standsInItsPlaceWithItsProperties()
    {
        QFETCH(qsizetype, index);
        const QList<Rule> rules = rulesOf(applicationStyleSheet());
        QVERIFY(index < rules.size());
        QCOMPARE(rules.at(index).selector, wantedRules().at(index).selector);
        QCOMPARE(rules.at(index).properties, wantedRules().at(index).properties);
    }

    // Whatever the line breaks, the blanks within a rule are those of a rule on one line.
    void sheet_isWrittenInOneNotation()
    {
        QCOMPARE(oneRuleALine().size(), 3324);
        QCOMPARE(applicationStyleSheet().simplified(), oneRuleALine().simplified());
    }

    void sheet_breaksLinesInTwoWaysOnly()
    {
        const QString sheet = applicationStyleSheet();
        QVERIFY(sheet.startsWith("\nQMainWindow"));
        QVERIFY(sheet.endsWith("}\n"));
        const QRegularExpression wholeRule("^[^ {][^{]* \\{( [a-z-]+: [^;{}]+;)+ \\}$");
        const QRegularExpression partOfRule("^([^ {][^{]* \\{|    [a-z-]+: [^;{}]+;|\\})$");
        const QStringList lines = sheet.mid(1, sheet.size() - 2).split('\n');
        for (const QString &line : lines) {
            QVERIFY2(wholeRule.match(line).hasMatch() || partOfRule.match(line).hasMatch(),
                     qPrintable(line));
        }
    }
};

VELMORA_TEST_MAIN(StyleSheetTest)
#include "tst_StyleSheet.moc"
