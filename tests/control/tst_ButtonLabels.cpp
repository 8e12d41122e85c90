#include <QMessageBox>
#include <QPainter>
#include <QStyle>
#include <QTabWidget>
#include <QTest>

#include "AboutDialog.h"
#include "ControlFixture.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"
#include "UpdateStage.h"
#include "Updater.h"

namespace {

QImage seen(QWidget &window, const QWidget &button)
{
    const QRect place(button.mapTo(&window, QPoint(0, 0)), button.size());
    return window.grab(place).toImage().convertToFormat(QImage::Format_RGB32);
}

/// The smallest rectangle around all pixels in which the two pictures of one size differ.
QRect difference(const QImage &one, const QImage &other)
{
    QRect bounds;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.pixel(x, y) != other.pixel(x, y))
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

/// How large the label is that the window shows, in device pixels.
QSize seenSize(QWidget &window, QAbstractButton &button)
{
    const QImage labelled = seen(window, button);
    const QString text = button.text();
    button.setText(QString());
    const QImage bare = seen(window, button);
    button.setText(text);
    return difference(labelled, bare).size();
}

/// How large it is with room on all sides, on the same ground.
QSize freeSize(const QAbstractButton &button)
{
    const qreal ratio = button.devicePixelRatioF();
    const QSize room = button.size() + QSize(400, 100);
    QImage bare((QSizeF(room) * ratio).toSize(), QImage::Format_RGB32);
    bare.setDevicePixelRatio(ratio);
    bare.fill(Qt::black);
    QImage labelled = bare;
    QPainter painter(&labelled);
    painter.setPen(Qt::white);
    painter.setFont(button.font());
    const bool underlined =
        button.style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, &button) != 0;
    painter.drawText(QRect(QPoint(0, 0), room),
                     Qt::AlignCenter | (underlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                     button.text());
    painter.end();
    return difference(labelled, bare).size();
}

/// The labels of which less is seen than there is, as in "Clear: 30 x 12 of 35 x 12".
QStringList clippedLabels(QWidget &window)
{
    QStringList clipped;
    const QList<QAbstractButton *> buttons = window.findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        if (button->text().isEmpty() || !button->isVisible())
            continue;
        const QSize whole = freeSize(*button);
        const QSize shown = seenSize(window, *button);
        // A faint edge of a letter may get lost in the ground's colour.
        if (shown.width() + 1 < whole.width() || shown.height() + 1 < whole.height())
            clipped +=
                QString::asprintf("%s: %d x %d of %d x %d", qPrintable(button->text()),
                                  shown.width(), shown.height(), whole.width(), whole.height());
    }
    return clipped;
}

} // namespace

/// Whether every button of every window shows its label whole: what is seen of it is as large as
/// the same text drawn with nothing in its way.
class ButtonLabelsTest : public QObject
{
    Q_OBJECT

private slots:
    // At other scales than asked for, this would prove nothing.
    void initTestCase()
    {
        QCOMPARE(qApp->devicePixelRatio(),
                 qEnvironmentVariable("VELMORA_TEST_SCALE", "1").toDouble());
    }

    void init() { removeStore(); }

    void controlWindow_showsEveryLabelWhole()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(fixture.button("Clear"));
        QCOMPARE(clippedLabels(*fixture.window).join("; "), QString());
        fixture.window->toggleOutput(); // the button's other text
        QVERIFY(fixture.button("■  Hide Output Window"));
        QCOMPARE(clippedLabels(*fixture.window).join("; "), QString());
    }

    void settingsDialog_showsEveryLabelWhole()
    {
        ControlFixture fixture; // installs the style sheet
        SettingsDialog dialog(&fixture.settings, nullptr);
        dialog.show();
        auto *tabs = dialog.findChild<QTabWidget *>();
        QCOMPARE(tabs->count(), 5);
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentIndex(i);
            QCOMPARE(clippedLabels(dialog).join("; "), QString());
        }
        // A row of the last page that waits for its key.
        auto *button = tabs->currentWidget()->findChild<QPushButton *>();
        button->click();
        QCOMPARE(button->text(), "Cancel");
        QCOMPARE(clippedLabels(dialog).join("; "), QString());
    }

    void aboutCard_showsEveryLabelWhole()
    {
        ControlFixture fixture;
        AboutDialog dialog(nullptr);
        dialog.show();
        QVERIFY(findByText<QAbstractButton>(dialog, "×"));
        QCOMPARE(clippedLabels(dialog).join("; "), QString());
    }

    void updateBox_showsEveryLabelWhole()
    {
        for (const char *version : {"99.0.0", "1.1.4"}) { // an offer, and none
            ControlFixture fixture;
            UpdateStage stage;
            stage.server.setAnswer(httpAnswer(updateDocument(version)));
            QStringList clipped{"no box"};
            stage.setAction([&clipped](QMessageBox &box) {
                clipped = clippedLabels(box);
                box.close();
            });
            Updater updater;
            updater.check(false);
            QVERIFY(stage.settle());
            QCOMPARE(clipped.join("; "), QString());
        }
    }

    // Qt's own button loses letters in a narrow place; should that change, nothing here could fail.
    void clippedLabel_isFound()
    {
        ControlFixture fixture;
        QWidget window;
        auto *button = new QPushButton("Clear", &window);
        button->setFixedWidth(55);
        window.show();
        QCOMPARE(clippedLabels(window).size(), 1);
    }
};

VELMORA_TEST_MAIN(ButtonLabelsTest)
#include "tst_ButtonLabels.moc"
