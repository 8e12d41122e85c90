#include <memory>

#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "Find.h"
#include "Stepper.h"
#include "StyleSheet.h"
#include "TestMain.h"

/// The stepper in a window, as a person uses it.
class StepperUseTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        window = std::make_unique<QWidget>();
        spinBox = new QSpinBox;
        spinBox->setRange(0, 100);
        spinBox->setValue(50);
        stepper = makeStepper(spinBox);
        auto *layout = new QVBoxLayout(window.get());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(stepper);
        window->resize(600, 400);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    void cleanup()
    {
        window.reset();
        qApp->setStyleSheet({});
    }

    void click_stepsByOne()
    {
        QTest::mouseClick(upButton(), Qt::LeftButton);
        QCOMPARE(spinBox->value(), 51);
        QTest::mouseClick(downButton(), Qt::LeftButton);
        QTest::mouseClick(downButton(), Qt::LeftButton);
        QCOMPARE(spinBox->value(), 49);
    }

    void click_emitsTheChange()
    {
        const QSignalSpy changes(spinBox, &QSpinBox::valueChanged);
        QTest::mouseClick(upButton(), Qt::LeftButton);
        QTest::mouseClick(downButton(), Qt::LeftButton);
        QCOMPARE(changes, QList<QVariantList>({{51}, {50}}));
    }

    void click_atABound_changesNothing_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("value");
        QTest::newRow("minimum") << "◀" << 0;
        QTest::newRow("maximum") << "▶" << 100;
    }

    void click_atABound_changesNothing()
    {
        QFETCH(QString, button);
        QFETCH(int, value);
        spinBox->setValue(value);
        const QSignalSpy changes(spinBox, &QSpinBox::valueChanged);
        QTest::mouseClick(findByText<QPushButton>(*stepper, button), Qt::LeftButton);
        QCOMPARE(spinBox->value(), value);
        QCOMPARE(changes.size(), 0);
    }

    void click_keepsToTheCallersSingleStep()
    {
        spinBox->setSingleStep(5);
        QTest::mouseClick(upButton(), Qt::LeftButton);
        QCOMPARE(spinBox->value(), 55);
    }

    // Qt's repeat begins 300 ms after the press by default.
    void heldButton_doesNotRepeat()
    {
        QTest::mousePress(upButton(), Qt::LeftButton);
        bool over = false;
        QTimer::singleShot(700, this, [&over] { over = true; });
        QTRY_VERIFY(over);
        QCOMPARE(spinBox->value(), 50);
        QTest::mouseRelease(upButton(), Qt::LeftButton);
        QCOMPARE(spinBox->value(), 51);
    }

    void releaseBesideTheButton_changesNothing()
    {
        const QPoint beside(-10, -10);
        for (QPushButton *button : {downButton(), upButton()}) {
            QTest::mousePress(button, Qt::LeftButton);
            QTest::mouseMove(button, beside);
            QTest::mouseRelease(button, Qt::LeftButton, Qt::NoModifier, beside);
            QCOMPARE(spinBox->value(), 50);
        }
    }

    void keyboard_stepsAsUsual_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("value");
        QTest::newRow("Up") << Qt::Key_Up << 51;
        QTest::newRow("Down") << Qt::Key_Down << 49;
        QTest::newRow("PageUp") << Qt::Key_PageUp << 60;
        QTest::newRow("PageDown") << Qt::Key_PageDown << 40;
    }

    void keyboard_stepsAsUsual()
    {
        QFETCH(Qt::Key, key);
        QFETCH(int, value);
        QTest::keyClick(spinBox, key);
        QCOMPARE(spinBox->value(), value);
    }

    void keyboard_typesAValue()
    {
        spinBox->selectAll();
        QTest::keyClicks(spinBox, "73");
        QTest::keyClick(spinBox, Qt::Key_Return);
        QCOMPARE(spinBox->value(), 73);
    }

    void wheel_stepsAsUsual_data()
    {
        QTest::addColumn<int>("turn");
        QTest::addColumn<int>("value");
        QTest::newRow("away") << 120 << 51;
        QTest::newRow("towards") << -120 << 49;
    }

    void wheel_stepsAsUsual()
    {
        QFETCH(int, turn);
        QFETCH(int, value);
        const QPointF place = spinBox->rect().center();
        QWheelEvent event(place, spinBox->mapToGlobal(place), QPoint(), QPoint(0, turn),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(spinBox, &event);
        QCOMPARE(spinBox->value(), value);
    }

    void suffix_isShownCentred_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::newRow("minutes") << " min";
        QTest::newRow("seconds") << " sec";
        QTest::newRow("pixels") << " px";
    }

    void suffix_isShownCentred()
    {
        QFETCH(QString, suffix);
        spinBox->setSuffix(suffix);
        const auto *text = spinBox->findChild<QLineEdit *>();
        QVERIFY(text);
        QCOMPARE(text->text(), "50" + suffix);
        QCOMPARE(text->alignment(), Qt::AlignCenter);
        const int textCentre = text->mapTo(stepper, text->rect().center()).x();
        QVERIFY(qAbs(textCentre - stepper->width() / 2) <= 1);
    }

    void height_isAlways32_data()
    {
        QTest::addColumn<QString>("applicationSheet");
        QTest::addColumn<QSize>("windowSize");
        for (const QSize size : {QSize(600, 400), QSize(200, 20), QSize(1800, 1000)}) {
            QTest::addRow("bare in %d pixels", size.height()) << QString() << size;
            QTest::addRow("dressed in %d pixels", size.height()) << applicationStyleSheet() << size;
        }
    }

    void height_isAlways32()
    {
        QFETCH(QString, applicationSheet);
        QFETCH(QSize, windowSize);
        qApp->setStyleSheet(applicationSheet);
        window->resize(windowSize);
        window->layout()->activate();
        QCOMPARE(stepper->height(), 32);
        QCOMPARE(spinBox->height(), 32);
    }

    void width_isAtLeastThatOfThePieces()
    {
        window->resize(10, 10);
        QTRY_VERIFY(stepper->width() < 600);
        QVERIFY(stepper->width() >= 28 + 80 + 28);
        QVERIFY(stepper->minimumSizeHint().width() >= 28 + 80 + 28);
    }

    void pieces_areFlush()
    {
        QCOMPARE(downButton()->geometry(), QRect(0, 0, 28, 32));
        QCOMPARE(spinBox->geometry(), QRect(28, 0, 600 - 28 - 28, 32));
        QCOMPARE(upButton()->geometry(), QRect(600 - 28, 0, 28, 32));
    }

    void button_isDarkGreenWhilePressed()
    {
        for (QPushButton *button : {downButton(), upButton()}) {
            const QPoint beside(14, 4);
            QCOMPARE(button->grab().toImage().pixelColor(beside).name(), QStringLiteral("#3a3a3a"));
            button->setDown(true);
            QCOMPARE(button->grab().toImage().pixelColor(beside).name(), QStringLiteral("#1a6633"));
        }
    }

private:
    QPushButton *downButton() const { return findByText<QPushButton>(*stepper, "◀"); }
    QPushButton *upButton() const { return findByText<QPushButton>(*stepper, "▶"); }

    std::unique_ptr<QWidget> window;
    QWidget *stepper = nullptr;
    QSpinBox *spinBox = nullptr;
};

VELMORA_TEST_MAIN(StepperUseTest)
#include "tst_StepperUse.moc"
