#include <functional>

#include <QBoxLayout>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include "ControlFixture.h"
#include "PreviewWindow.h"
#include "TestMain.h"

namespace {

/// Both windows shown, an 800 × 500 Output window, and the preview opened.
class PreviewFixture : public ControlFixture
{
public:
    explicit PreviewFixture(const AppSettings &record = loadedSettings())
        : ControlFixture(record)
    {
        show();
        button("Preview")->click();
    }
    void refresh() const { runOut(previewTimer()); }
};

} // namespace

/// On a screen with one device pixel to a pixel, and on one with two.
class OutputPreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(qApp->devicePixelRatio(),
                 qEnvironmentVariable("VELMORA_TEST_SCALE", "1").toDouble());
    }

    void click_whileTheOutputIsHidden_doesNothing()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.button("Preview")->click();
        QVERIFY(!previewWindow());
        runOut(fixture.previewTimer());
        QVERIFY(!previewWindow());

        PreviewFixture open;
        open.output.hide();
        open.button("Preview")->click();
        QVERIFY(previewWindow()->isVisible());
    }

    void click_opensHidesAndOpensTheSameWindowAgain()
    {
        const PreviewFixture fixture;
        QWidget *preview = previewWindow();
        QVERIFY(preview);
        QVERIFY(preview->isVisible());
        preview->resize(480, 300);
        fixture.button("Preview")->click();
        QVERIFY(!preview->isVisible());
        fixture.refresh();
        QVERIFY(previewLabel()->pixmap().isNull()); // no picture is taken of what nobody sees
        fixture.button("Preview")->click();
        QVERIFY(preview->isVisible());
        QCOMPARE(previewWindow(), preview);
        QCOMPARE(preview->size(), QSize(480, 300));
    }

    void window_isOfItsOwnAndOnTop()
    {
        const PreviewFixture fixture;
        const QWidget *preview = previewWindow();
        QVERIFY(!preview->parentWidget());
        QCOMPARE(preview->windowType(), Qt::Window);
        QVERIFY(preview->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        QVERIFY(!preview->windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(!preview->isModal());
    }

    void window_hasTitleSizeAndLook()
    {
        const PreviewFixture fixture;
        QCOMPARE(previewWindow()->windowTitle(), "Output Preview");
        QCOMPARE(previewWindow()->size(), QSize(640, 360));
        QCOMPARE(previewWindow()->styleSheet(), "background-color:#111;");
        QCOMPARE(previewWindow()->grab().toImage().pixelColor(1, 1), QColor("#111111"));
        const auto *layout = qobject_cast<QVBoxLayout *>(previewWindow()->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
        QCOMPARE(layout->count(), 1);
        QCOMPARE(layout->itemAt(0)->widget(), previewLabel());
        QCOMPARE(previewLabel()->styleSheet(), "background-color:#111;");
        QCOMPARE(previewLabel()->alignment(), Qt::AlignCenter);
        QCOMPARE(previewLabel()->size(), QSize(640, 360));
    }

    void refresh_showsTheWholeOutput_data()
    {
        QTest::addColumn<QSize>("output");
        QTest::addColumn<QSize>("window");
        QTest::addColumn<QSize>("picture");
        const QSize first(640, 360);
        QTest::newRow("ordinary") << QSize(800, 500) << first << QSize(576, 360);
        QTest::newRow("as wide as the preview") << QSize(1280, 720) << first << QSize(640, 360);
        QTest::newRow("flat") << QSize(800, 200) << first << QSize(640, 160);
        QTest::newRow("upright") << QSize(200, 400) << first << QSize(180, 360);
        QTest::newRow("smaller") << QSize(800, 500) << QSize(320, 180) << QSize(288, 180);
        QTest::newRow("very small") << QSize(800, 500) << QSize(80, 50) << QSize(80, 50);
        QTest::newRow("larger") << QSize(800, 500) << QSize(1280, 720) << QSize(1152, 720);
        QTest::newRow("higher") << QSize(800, 500) << QSize(400, 800) << QSize(400, 250);
    }

    // The picture fills the preview as far as its shape allows, and never keeps it large.
    void refresh_showsTheWholeOutput()
    {
        QFETCH(QSize, output);
        QFETCH(QSize, window);
        QFETCH(QSize, picture);
        PreviewFixture fixture;
        fixture.output.resize(output);
        fixture.refresh();
        previewWindow()->resize(window);
        for (int i = 0; i < 2; ++i) {
            fixture.refresh();
            const QPixmap pixmap = previewLabel()->pixmap();
            QCOMPARE(pixmap.size(), picture * qApp->devicePixelRatio());
            QCOMPARE(pixmap.deviceIndependentSize(), QSizeF(picture));
            QCOMPARE(previewWindow()->size(), window);
        }
    }

    void refresh_showsWhatTheOutputShows()
    {
        PreviewFixture fixture(recordWith(&AppSettings::bgColor, QColor("#102030")));
        fixture.refresh();
        QCOMPARE(previewLabel()->pixmap().toImage().pixelColor(5, 5), QColor("#102030"));
        fixture.settings.bgColor = QColor("#405060");
        fixture.window->onSettingsChanged();
        fixture.refresh();
        QCOMPARE(previewLabel()->pixmap().toImage().pixelColor(5, 5), QColor("#405060"));
    }

    // Whatever it is that changes, in the same turn of the event loop, too.
    void refresh_showsEachChangeAtOnce()
    {
        PreviewFixture fixture;
        fixture.refresh();
        const auto changesThePicture = [&fixture](const std::function<void()> &change) {
            const QImage before = previewLabel()->pixmap().toImage();
            change();
            fixture.refresh();
            return previewLabel()->pixmap().toImage() != before;
        };
        QVERIFY(changesThePicture([&] { fixture.output.onTimerTick(7); }));
        QVERIFY(changesThePicture([&] { fixture.output.setTotalSeconds(8); }));
        // The window is not on its screen yet.
        QVERIFY(changesThePicture([&] { fixture.output.setViewMode(OutputWindow::ClockView); }));
        QCoreApplication::processEvents();
        QVERIFY(changesThePicture([&] { fixture.output.setViewMode(OutputWindow::TimerView); }));
        QVERIFY(changesThePicture([&] { fixture.output.resize(700, 500); }));
        // Without a text the message has no room; the layout gives it some, a turn later.
        QVERIFY(changesThePicture([&] {
            fixture.output.setMessage("Wrap up");
            QCoreApplication::processEvents();
        }));
        QVERIFY(changesThePicture([&] { fixture.output.clearMessage(); }));
    }

    // A picture of what is on the preview already would be most of what the preview costs.
    void refresh_takesNoPictureOfWhatIsShownAlready()
    {
        PreviewFixture fixture;
        fixture.refresh();
        QCoreApplication::processEvents();
        fixture.refresh();
        const qint64 picture = previewLabel()->pixmap().cacheKey();
        fixture.refresh();
        QCOMPARE(previewLabel()->pixmap().cacheKey(), picture);
        previewWindow()->resize(320, 200);
        fixture.refresh();
        QCOMPARE(previewLabel()->pixmap().deviceIndependentSize(), QSizeF(320, 200));
    }

    void refresh_ofAHiddenPreview_waitsUntilItIsShown()
    {
        PreviewFixture fixture;
        fixture.refresh();
        QCoreApplication::processEvents();
        const qint64 picture = previewLabel()->pixmap().cacheKey();
        fixture.button("Preview")->click();
        fixture.output.onTimerTick(7);
        fixture.refresh();
        QCOMPARE(previewLabel()->pixmap().cacheKey(), picture);
        fixture.button("Preview")->click();
        fixture.refresh();
        QVERIFY(previewLabel()->pixmap().cacheKey() != picture);
    }

    // Of black and white columns, a picture that is only thinned out keeps black and white.
    void refresh_isSmooth()
    {
        QImage columns(800, 500, QImage::Format_RGB32);
        for (int x = 0; x < columns.width(); ++x) {
            for (int y = 0; y < columns.height(); ++y)
                columns.setPixelColor(x, y, x % 2 ? Qt::white : Qt::black);
        }
        const QTemporaryDir directory;
        const QString path = directory.filePath("columns.png");
        QVERIFY(columns.save(path));
        const PreviewFixture fixture(
            recordWith(&AppSettings::bgImagePath, path, &AppSettings::bgImageEnabled, true));
        fixture.refresh();
        const QImage picture = previewLabel()->pixmap().toImage();
        int greyPixels = 0;
        for (int x = 0; x < picture.width(); ++x) {
            const QColor color = picture.pixelColor(x, 2);
            if (color != QColor(Qt::black) && color != QColor(Qt::white))
                ++greyPixels;
        }
        QVERIFY2(greyPixels > 200, qPrintable(QString::number(greyPixels)));
    }

    // It closes and does not only hide: only a close counts as the last window's.
    void outputHidden_closesThePreviewWithTheNextRefresh()
    {
        const PreviewFixture fixture;
        const QWidget *preview = previewWindow();
        const CloseCounter closes(previewWindow());
        fixture.window->toggleOutput();
        QVERIFY(preview->isVisible());
        fixture.refresh();
        QVERIFY(!preview->isVisible());
        QCOMPARE(closes.count, 1);
        // It stays away when the Output window comes back, and opens again when it is asked for.
        fixture.window->toggleOutput();
        fixture.refresh();
        QVERIFY(!preview->isVisible());
        fixture.button("Preview")->click();
        QCOMPARE(previewWindow(), preview);
        QVERIFY(preview->isVisible());
    }

    void destruction_takesThePreviewWithIt()
    {
        PreviewFixture fixture;
        const QPointer<QWidget> preview = previewWindow();
        QVERIFY(preview);
        fixture.window.reset();
        QVERIFY(!preview);
    }
};

VELMORA_TEST_MAIN(OutputPreviewTest)
#include "tst_OutputPreview.moc"
