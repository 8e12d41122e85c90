#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>

#include "Button.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

const QColor ground("#1c1c1c");

/// The relative luminance of the colour, from 0 to 1.
double luminance(const QColor &color)
{
    const auto linear = [](double share) {
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const double lighter = std::max(luminance(one), luminance(other));
    const double darker = std::min(luminance(one), luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

QImage pictureOf(QWidget &widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

bool isNear(const QColor &one, const QColor &other)
{
    return qAbs(one.red() - other.red()) + qAbs(one.green() - other.green())
        + qAbs(one.blue() - other.blue())
        < 200;
}

/// The columns in which the button shows the colour, or the faded edge of a letter in it.
QList<int> columnsOf(QWidget &button, const QColor &color)
{
    const QImage picture = pictureOf(button);
    QList<int> columns;
    for (int x = 0; x < picture.width(); ++x) {
        int y = 0;
        while (y < picture.height() && !isNear(picture.pixelColor(x, y), color))
            ++y;
        if (y < picture.height())
            columns += x;
    }
    return columns;
}

/// A button on a window of its own, as the program shows it.
struct ShownButton
{
    explicit ShownButton(const QString &styleSheet = {})
        : button("HHHHHHHH", &window)
    {
        button.setStyleSheet(styleSheet);
        window.resize(400, 100);
        window.show();
    }

    QWidget window;
    Button button;
};

} // namespace

class ButtonTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qApp->setStyleSheet(applicationStyleSheet()); }

    void label_takesTheRoomOfThePaddingAndStaysInTheMiddle()
    {
        ShownButton shown("color:#ff0000;");
        shown.button.adjustSize();
        const QList<int> whole = columnsOf(shown.button, Qt::red);
        QVERIFY(whole.size() > 10);
        const int textWidth = shown.button.fontMetrics().horizontalAdvance(shown.button.text());
        shown.button.setFixedWidth(textWidth + 4); // the border, and next to nothing of the padding
        const QList<int> columns = columnsOf(shown.button, Qt::red);
        QCOMPARE(columns.size(), whole.size());
        const int left = columns.first();
        const int right = shown.button.width() - 1 - columns.last();
        QVERIFY2(qAbs(left - right) <= 2,
                 qPrintable(QStringLiteral("%1, %2").arg(left).arg(right)));
    }

    void label_isDrawnWithoutAnyRoom()
    {
        ShownButton shown("QPushButton { color:#ff0000; font-size:20px; border:none; }");
        shown.button.setText("×");
        shown.button.setFixedSize(28, 28); // what the padding takes alone
        QVERIFY(columnsOf(shown.button, Qt::red).size() >= 5);
    }

    void wideButton_looksAsQtsOwn_data()
    {
        QTest::addColumn<QString>("styleSheet");
        QTest::newRow("plain") << QString();
        QTest::newRow("left") << "QPushButton { text-align:left; padding:0; }";
        QTest::newRow("padded on the left")
            << "QPushButton { text-align:left; padding:0 0 0 60px; }";
        QTest::newRow("no border") << "QPushButton { border:none; background:none; }";
    }

    void wideButton_looksAsQtsOwn()
    {
        QFETCH(QString, styleSheet);
        ShownButton shown(styleSheet);
        shown.button.setGeometry(0, 0, 200, 50);
        QPushButton own(shown.button.text(), &shown.window);
        own.setStyleSheet(styleSheet);
        own.setGeometry(0, 50, 200, 50);
        own.show();
        for (const bool enabled : {true, false}) {
            shown.button.setEnabled(enabled);
            own.setEnabled(enabled);
            QCOMPARE(pictureOf(shown.button), pictureOf(own));
        }
    }

    void pressedColour_reachesTheLabel()
    {
        ShownButton shown("QPushButton { color:#ff0000; } QPushButton:pressed { color:#0000ff; }");
        QVERIFY(!columnsOf(shown.button, Qt::red).isEmpty());
        QTest::mousePress(&shown.button, Qt::LeftButton);
        const QList<int> red = columnsOf(shown.button, Qt::red);
        const QList<int> blue = columnsOf(shown.button, Qt::blue);
        QTest::mouseRelease(&shown.button, Qt::LeftButton);
        QVERIFY(red.isEmpty());
        QVERIFY(!blue.isEmpty());
    }

    void hoverColour_reachesTheLabel()
    {
        ShownButton shown("QPushButton { color:#ff0000; } QPushButton:hover { color:#0000ff; }");
        QVERIFY(QTest::qWaitForWindowExposed(&shown.window));
        QTest::mouseMove(&shown.window, shown.window.rect().bottomRight() - QPoint(2, 2));
        QTRY_VERIFY(!columnsOf(shown.button, Qt::red).isEmpty());
        QTest::mouseMove(&shown.button, QPoint(10, 10));
        QTest::mouseMove(&shown.button, QPoint(11, 11)); // Qt knows by the second move
        QTRY_VERIFY(columnsOf(shown.button, Qt::red).isEmpty());
        QVERIFY(!columnsOf(shown.button, Qt::blue).isEmpty());
    }

    // The style sheet draws no focus; the system's style may, and a sheet with an outline does.
    void focus_isSeen()
    {
        ShownButton shown("QPushButton:focus { outline:1px solid #ff00ff; border-color:#00ffff; }");
        shown.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&shown.window));
        shown.button.clearFocus();
        QVERIFY(columnsOf(shown.button, Qt::cyan).isEmpty());
        shown.button.setFocus();
        QVERIFY(!columnsOf(shown.button, Qt::cyan).isEmpty());
        QVERIFY(!columnsOf(shown.button, Qt::magenta).isEmpty());
    }

    void radioButton_hasARingThatStandsOut()
    {
        QWidget window;
        RadioButton button(QString(), &window);
        button.setAutoExclusive(false);
        button.resize(20, 20);
        window.show();
        QStyleOptionButton option;
        option.initFrom(&button);
        const QPoint middle =
            button.style()
                ->subElementRect(QStyle::SE_RadioButtonIndicator, &option, &button)
                .center();
        for (const bool chosen : {true, false}) {
            button.setChecked(chosen);
            const QImage picture = pictureOf(button);
            // In every direction from the middle, something of the ring.
            for (const QPoint &step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
                double best = 1.0;
                for (QPoint place = middle + 5 * step; picture.valid(place); place += step)
                    best = std::max(best, contrast(picture.pixelColor(place), ground));
                QVERIFY2(best >= 3.0, qPrintable(QString::number(best)));
            }
        }
    }
};

VELMORA_TEST_MAIN(ButtonTest)
#include "tst_Button.moc"
