#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>

#include "StyleSheet.h"
#include "TestMain.h"

namespace {

// Every rule in its place, the line breaks aside.
const QString wanted = QStringLiteral(R"(
QMainWindow, QDialog { background-color: #1c1c1c; }
QWidget { background-color: #1c1c1c; color: #e8e8e8; font-family: 'Segoe UI', sans-serif;
    font-size: 13px; }
QPushButton { background-color: #2b2b2b; color: #e8e8e8; border: 1px solid #444; border-radius:
    4px; padding: 6px 14px; min-height: 28px; }
QPushButton:hover { background-color: #383838; border-color: #666; }
QPushButton:pressed { background-color: #1a6633; }
QPushButton:checked { background-color: #1a5c2a; border-color: #2a9c4a; color: #ffffff; }
QPushButton:disabled { background-color: #222; color: #555; border-color: #333; }
QPushButton#startBtn { background-color: #1a5c1a; border-color: #2a8c2a; font-weight: bold;
    font-size: 14px; }
QPushButton#startBtn:hover { background-color: #226622; }
QPushButton#pauseBtn { background-color: #5c4a00; border-color: #8c7000; font-weight: bold; }
QPushButton#pauseBtn:hover { background-color: #6e5900; }
QPushButton#resetBtn { background-color: #5c1a1a; border-color: #8c2a2a; font-weight: bold; }
QPushButton#resetBtn:hover { background-color: #6e2020; }
QPushButton#settingsBtn { background-color: transparent; border: 1px solid #444; font-size: 16px;
    min-width: 36px; }
QPushButton#outputToggleBtn { background-color: #1a3a5c; border-color: #2a5c8c; font-weight: bold; }
QPushButton#outputToggleBtn:hover { background-color: #224a6e; }
QLabel#timerPreview { color: #00cc00; font-size: 48px; font-weight: bold; font-family: monospace;
    padding: 4px 16px; }
QLabel#sectionHeader { color: #888; font-size: 10px; font-weight: bold; text-transform: uppercase;
    letter-spacing: 1px; }
QLineEdit { background-color: #2b2b2b; color: #e8e8e8; border: 1px solid #444; border-radius: 3px;
    padding: 4px 8px; font-size: 13px; }
QLineEdit:focus { border-color: #2a8c4a; }
QFrame[frameShape="4"], QFrame[frameShape="5"] { color: #333; }
QScrollArea { background-color: #1c1c1c; border: none; }
QScrollBar:vertical { background: #1c1c1c; width: 8px; }
QScrollBar::handle:vertical { background: #444; border-radius: 4px; min-height: 20px; }
QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }
QStatusBar { background-color: #161616; color: #888; font-size: 11px; }
QTabWidget::pane { border: 1px solid #444; background: #1c1c1c; }
QTabBar::tab { background: #2b2b2b; color: #aaa; padding: 6px 16px; border: 1px solid #444;
    border-bottom: none; }
QTabBar::tab:selected { background: #1c1c1c; color: #e8e8e8; }
QTabBar::tab:hover { background: #333; }
QListWidget { background-color: #2b2b2b; border: 1px solid #444; color: #e8e8e8; }
QListWidget::item:selected { background-color: #1a5c2a; }
QListWidget#presetList { background: transparent; border: none; padding: 0; }
QListWidget#presetList::item { background: #2b2b2b; border: 1px solid #444; padding: 4px 10px;
    color: #e8e8e8; min-width: 54px; }
QListWidget#presetList::item:selected { background: #1a5c2a; border-color: #2a9c4a; }
QListWidget#presetList::item:hover { background: #383838; border-color: #666; }
QCheckBox { spacing: 8px; }
QCheckBox::indicator { width: 16px; height: 16px; border: 1px solid #555; border-radius: 2px;
    background: #2b2b2b; }
QCheckBox::indicator:checked { background: #1a6633; border-color: #2a9c4a; }
QRadioButton { spacing: 8px; }
QDialogButtonBox QPushButton { min-width: 80px; }
QColorDialog { background: #1c1c1c; }
)");

QStringList rulesOf(const QString &sheet)
{
    return sheet.simplified().replace("} ", "}\n").split('\n');
}

// Where a button shows its ground and its border, halfway down and clear of its text.
constexpr int ground = 4;
constexpr int border = 0;

QString colorAt(QWidget &widget, int x)
{
    const QImage image = widget.grab().toImage();
    return image.pixelColor(x, image.height() / 2).name();
}

} // namespace

/// The sheet as text, and on widgets: the hooks look as they should without a sheet of their own.
class StyleSheetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qApp->setStyleSheet(applicationStyleSheet()); }

    void sheet_hasItsRulesInOrder()
    {
        QCOMPARE(rulesOf(applicationStyleSheet()), rulesOf(wanted));
        QCOMPARE(applicationStyleSheet().size(), 3397);
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

    void hookedButton_hasItsColorsAndFont_data()
    {
        QTest::addColumn<QString>("atRest");
        QTest::addColumn<QString>("underThePointer");
        QTest::addColumn<QString>("border");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<int>("pixels");
        const auto add = [](const char *name, const char *atRest, const char *underThePointer,
                            const char *border, bool bold, int pixels) {
            QTest::newRow(name) << atRest << underThePointer << border << bold << pixels;
        };
        add("startBtn", "#1a5c1a", "#226622", "#2a8c2a", true, 14);
        add("pauseBtn", "#5c4a00", "#6e5900", "#8c7000", true, 13);
        add("resetBtn", "#5c1a1a", "#6e2020", "#8c2a2a", true, 13);
        add("outputToggleBtn", "#1a3a5c", "#224a6e", "#2a5c8c", true, 13);
        add("settingsBtn", "#1c1c1c", "#1c1c1c", "#444444", false, 16);
        add("anyOtherBtn", "#2b2b2b", "#383838", "#444444", false, 13);
    }

    void hookedButton_hasItsColorsAndFont()
    {
        QWidget window;
        QPushButton button("Text", &window);
        button.setObjectName(QTest::currentDataTag());
        button.resize(120, 42);
        button.ensurePolished();
        QTEST(button.font().bold(), "bold");
        QTEST(button.font().pixelSize(), "pixels");
        QImage image = window.grab(button.geometry()).toImage();
        QTEST(image.pixelColor(ground, 21).name(), "atRest");
        QTEST(image.pixelColor(border, 21).name(), "border");

        // Drawn by the style as under a pointer, for want of one in the tests' platform.
        QStyleOptionButton option;
        option.initFrom(&button);
        option.state |= QStyle::State_MouseOver | QStyle::State_Raised;
        QPainter painter(&image);
        button.style()->drawControl(QStyle::CE_PushButton, &option, &painter, &button);
        painter.end();
        QTEST(image.pixelColor(ground, 21).name(), "underThePointer");
    }

    // The hook's rule outweighs the one for disabled buttons.
    void disabledStartButton_keepsItsLook()
    {
        QPushButton button;
        button.resize(120, 42);
        button.setDown(true);
        QCOMPARE(colorAt(button, ground), QStringLiteral("#1a6633"));
        button.setDown(false);
        button.setObjectName("startBtn");
        button.setEnabled(false);
        button.style()->polish(&button);
        QCOMPARE(colorAt(button, ground), QStringLiteral("#1a5c1a"));
        QCOMPARE(colorAt(button, border), QStringLiteral("#2a8c2a"));
    }

    void hookedLabels_haveTheirFontAndColor()
    {
        QLabel preview("05:00");
        preview.setObjectName("timerPreview");
        preview.ensurePolished();
        QCOMPARE(preview.font().pixelSize(), 48);
        QVERIFY(preview.font().bold());
        QCOMPARE(preview.font().family(), QStringLiteral("monospace"));
        QCOMPARE(preview.palette().color(QPalette::WindowText).name(), QStringLiteral("#00cc00"));
        QLabel header("Presets");
        header.setObjectName("sectionHeader");
        header.ensurePolished();
        QCOMPARE(header.font().pixelSize(), 10);
        QVERIFY(header.font().bold());
        QCOMPARE(header.font().capitalization(), QFont::AllUppercase);
        QCOMPARE(header.font().letterSpacing(), 1.0);
        QCOMPARE(header.palette().color(QPalette::WindowText).name(), QStringLiteral("#888888"));
    }

    void windows_areDark()
    {
        QMainWindow mainWindow;
        QDialog dialog;
        QMessageBox box;
        QWidget other;
        for (QWidget *window : QWidgetList{&mainWindow, &dialog, &box, &other}) {
            window->resize(100, 100);
            QCOMPARE(colorAt(*window, ground), QStringLiteral("#1c1c1c"));
        }
    }
};

VELMORA_TEST_MAIN(StyleSheetTest)
#include "tst_StyleSheet.moc"
