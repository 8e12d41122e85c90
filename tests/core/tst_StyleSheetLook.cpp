#include <memory>

#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>

#include "StyleSheet.h"
#include "TestMain.h"

namespace {

// Inside the left border and the rounded corners, clear of the text.
QString groundOf(QWidget &widget)
{
    const QImage image = widget.grab().toImage();
    return image.pixelColor(4, image.height() / 2).name();
}

QString borderOf(QWidget &widget)
{
    const QImage image = widget.grab().toImage();
    return image.pixelColor(0, image.height() / 2).name();
}

} // namespace

/// The sheet on widgets: the hooks look as they should without a sheet of their own.
class StyleSheetLookTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qApp->setStyleSheet(applicationStyleSheet()); }

    void hookedButton_hasItsColorAndFont_data()
    {
        QTest::addColumn<QString>("ground");
        QTest::addColumn<QString>("border");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<int>("pixels");
        QTest::newRow("startBtn") << "#1a5c1a"
                                  << "#2a8c2a" << true << 14;
        QTest::newRow("pauseBtn") << "#5c4a00"
                                  << "#8c7000" << true << 13;
        QTest::newRow("resetBtn") << "#5c1a1a"
                                  << "#8c2a2a" << true << 13;
        QTest::newRow("outputToggleBtn") << "#1a3a5c"
                                         << "#2a5c8c" << true << 13;
        QTest::newRow("settingsBtn") << "#1c1c1c"
                                     << "#444444" << false << 16;
        QTest::newRow("anyOtherBtn") << "#2b2b2b"
                                     << "#444444" << false << 13;
    }

    void hookedButton_hasItsColorAndFont()
    {
        QFETCH(QString, ground);
        QFETCH(QString, border);
        QFETCH(bool, bold);
        QFETCH(int, pixels);
        QWidget window;
        QPushButton button("Text", &window);
        button.setObjectName(QTest::currentDataTag());
        button.resize(120, 42);
        button.ensurePolished();
        QCOMPARE(button.styleSheet(), QString());
        QCOMPARE(button.font().bold(), bold);
        QCOMPARE(button.font().pixelSize(), pixels);
        const QImage image = window.grab(button.geometry()).toImage();
        QCOMPARE(image.pixelColor(4, 21).name(), ground);
        QCOMPARE(image.pixelColor(0, 21).name(), border);
    }

    void hookedButton_changesUnderThePointer_data()
    {
        QTest::addColumn<QString>("ground");
        QTest::newRow("startBtn") << "#226622";
        QTest::newRow("pauseBtn") << "#6e5900";
        QTest::newRow("resetBtn") << "#6e2020";
        QTest::newRow("outputToggleBtn") << "#224a6e";
        QTest::newRow("anyOtherBtn") << "#383838";
    }

    void hookedButton_changesUnderThePointer()
    {
        QFETCH(QString, ground);
        QPushButton button;
        button.setObjectName(QTest::currentDataTag());
        button.resize(120, 42);
        button.ensurePolished();

        // Drawn by the style as under a pointer, for want of one in the tests' platform.
        QStyleOptionButton option;
        option.initFrom(&button);
        option.state |= QStyle::State_MouseOver | QStyle::State_Raised;
        QImage image(button.size(), QImage::Format_RGB32);
        QPainter painter(&image);
        button.style()->drawControl(QStyle::CE_PushButton, &option, &painter, &button);
        painter.end();
        QCOMPARE(image.pixelColor(4, 21).name(), ground);
    }

    void pressedButton_isDarkGreen()
    {
        QPushButton button;
        button.resize(120, 42);
        button.setDown(true);
        QCOMPARE(groundOf(button), QStringLiteral("#1a6633"));
    }

    // The hook's rule outweighs the one for disabled buttons.
    void disabledStartButton_keepsItsGround()
    {
        QPushButton button;
        button.setObjectName("startBtn");
        button.resize(120, 42);
        button.setEnabled(false);
        QCOMPARE(groundOf(button), QStringLiteral("#1a5c1a"));
        QCOMPARE(borderOf(button), QStringLiteral("#2a8c2a"));
    }

    void timerPreview_isLargeAndGreen()
    {
        QLabel label("05:00");
        label.setObjectName("timerPreview");
        label.ensurePolished();
        QCOMPARE(label.font().pixelSize(), 48);
        QVERIFY(label.font().bold());
        QCOMPARE(label.font().family(), QStringLiteral("monospace"));
        QCOMPARE(label.palette().color(QPalette::WindowText).name(), QStringLiteral("#00cc00"));
    }

    void sectionHeader_isSmallAndGrey()
    {
        QLabel label("Presets");
        label.setObjectName("sectionHeader");
        label.ensurePolished();
        QCOMPARE(label.font().pixelSize(), 10);
        QVERIFY(label.font().bold());
        QCOMPARE(label.font().capitalization(), QFont::AllUppercase);
        QCOMPARE(label.font().letterSpacing(), 1.0);
        QCOMPARE(label.palette().color(QPalette::WindowText).name(), QStringLiteral("#888888"));
    }

    void window_isDark_data()
    {
        QTest::addColumn<std::shared_ptr<QWidget>>("window");
        const auto add = [](const char *name, QWidget *window) {
            QTest::newRow(name) << std::shared_ptr<QWidget>(window);
        };
        add("main window", new QMainWindow);
        add("dialog", new QDialog);
        add("message box", new QMessageBox);
        add("any other", new QWidget);
    }

    void window_isDark()
    {
        QFETCH(std::shared_ptr<QWidget>, window);
        window->resize(100, 100);
        QCOMPARE(groundOf(*window), QStringLiteral("#1c1c1c"));
    }
};

VELMORA_TEST_MAIN(StyleSheetLookTest)
#include "tst_StyleSheetLook.moc"
