#include <QDialog>
#include <QTest>
#include <QWindow>

#include "ControlFixture.h"
#include "PreviewWindow.h"
#include "TestMain.h"

namespace {

/// Both windows, a time and a message to be taken over, and an eye on all that the buttons
/// change. A dialog is closed as soon as it is open.
struct ClickFixture : ControlFixture
{
    ClickFixture()
    {
        show();
        passSecond(engine);
        enterTime(7, 7);
        messageEdit()->setText("Hello");
        QObject::connect(&closer, &QTimer::timeout, &closer, [this] {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
                ++dialogs;
                dialog->reject();
            }
        });
        closer.start(0);
    }

    QStringList state() const
    {
        const QWidget *preview = previewWindow();
        return {QStringLiteral("running %1").arg(engine.isRunning()),
                QStringLiteral("remaining %1").arg(engine.remaining()),
                QStringLiteral("%1 presets").arg(settings.presets.size()),
                QStringLiteral("message %1").arg(outputMessage()->text()),
                QStringLiteral("edit %1").arg(messageEdit()->text()),
                QStringLiteral("output %1").arg(output.isVisible()),
                QStringLiteral("preview %1").arg(preview && preview->isVisible()),
                QStringLiteral("%1 dialogs").arg(dialogs)};
    }

private:
    int dialogs = 0;
    QTimer closer;
};

} // namespace

/// When a button of the Control window acts: once it is released.
class ControlWindowClicksTest : public QObject
{
    Q_OBJECT

private slots:
    void button_actsOnlyWhenItIsReleased_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text :
             {"  VELMORA", "⚙", "▶  START", "⏸  PAUSE", "↺  RESET", "+1 min", "−1 min", "Set",
              "Add to Preset", "Push", "Clear", "▶  Show Output Window", "Preview"})
            QTest::newRow(text) << text;
    }

    // A press that was a mistake is taken back by leaving the button before letting it go.
    void button_actsOnlyWhenItIsReleased()
    {
        QFETCH(QString, text);
        ClickFixture fixture;
        const QAbstractButton *button = fixture.button(text);
        QVERIFY(button);
        if (text == "⏸  PAUSE")
            fixture.engine.start();
        QWindow *window = fixture.window->windowHandle();
        const QPoint on = button->mapTo(fixture.window.get(), button->rect().center());
        const QPoint off(2, 2); // the window's margin
        QVERIFY(QTest::qWaitForWindowExposed(window));
        const QStringList before = fixture.state();

        QTest::mousePress(window, Qt::LeftButton, {}, on);
        QVERIFY(button->isDown());
        QTest::mouseMove(window, off);
        QTest::mouseRelease(window, Qt::LeftButton, {}, off);
        QVERIFY(!button->isDown());
        QCOMPARE(fixture.state(), before);

        QTest::mouseClick(window, Qt::LeftButton, {}, on);
        QVERIFY(fixture.state() != before);
    }
};

VELMORA_TEST_MAIN(ControlWindowClicksTest)
#include "tst_ControlWindowClicks.moc"
