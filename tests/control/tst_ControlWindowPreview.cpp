#include <QBoxLayout>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include "CloseCounter.h"
#include "ControlFixture.h"
#include "PreviewWindow.h"
#include "TestMain.h"

namespace {

// Both windows shown, an 800 × 500 Output window, and the preview opened.
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

class ControlWindowPreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void click_whileTheOutputIsHidden_doesNothing()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.button("Preview")->click();
        QVERIFY(!previewWindow());
    }

    void click_whileTheOutputIsHidden_leavesAnOpenPreview()
    {
        PreviewFixture fixture;
        fixture.output.hide();
        fixture.button("Preview")->click();
        QVERIFY(previewWindow()->isVisible());
    }

    void click_opensHidesAndOpensAgain()
    {
        PreviewFixture fixture;
        QWidget *preview = previewWindow();
        QVERIFY(preview);
        QVERIFY(preview->isVisible());
        fixture.button("Preview")->click();
        QVERIFY(!preview->isVisible());
        fixture.button("Preview")->click();
        QVERIFY(preview->isVisible());
        QCOMPARE(previewWindow(), preview);
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
        QCOMPARE(previewWindow()->windowTitle(), QStringLiteral("Output Preview"));
        QCOMPARE(previewWindow()->size(), QSize(640, 360));
        QCOMPARE(previewWindow()->styleSheet(), QStringLiteral("background-color:#111;"));
        QCOMPARE(previewLabel()->styleSheet(), QStringLiteral("background-color:#111;"));
        QCOMPARE(previewWindow()->grab().toImage().pixelColor(1, 1), QColor("#111111"));
    }

    void label_fillsTheWindow()
    {
        const PreviewFixture fixture;
        const auto *layout = qobject_cast<QVBoxLayout *>(previewWindow()->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
        QCOMPARE(layout->count(), 1);
        QCOMPARE(layout->itemAt(0)->widget(), previewLabel());
        QCOMPARE(previewLabel()->alignment(), Qt::AlignCenter);
        QCOMPARE(previewLabel()->size(), QSize(640, 360));
    }

    void refresh_showsTheWholeOutput_data()
    {
        QTest::addColumn<QSize>("output");
        QTest::addColumn<QSize>("picture");
        QTest::newRow("ordinary") << QSize(800, 500) << QSize(576, 360);
        QTest::newRow("as wide as the preview") << QSize(1280, 720) << QSize(640, 360);
        QTest::newRow("flat") << QSize(800, 200) << QSize(640, 160);
        QTest::newRow("upright") << QSize(200, 400) << QSize(180, 360);
    }

    void refresh_showsTheWholeOutput()
    {
        QFETCH(QSize, output);
        PreviewFixture fixture;
        fixture.output.resize(output);
        fixture.refresh();
        QTEST(previewLabel()->pixmap().size(), "picture");
        QCOMPARE(previewLabel()->pixmap().devicePixelRatio(), 1.0);
        QCOMPARE(previewWindow()->size(), QSize(640, 360));
    }

    void refresh_showsWhatTheOutputShows()
    {
        AppSettings record;
        record.bgColor = QColor("#102030");
        PreviewFixture fixture(record);
        fixture.refresh();
        QCOMPARE(previewLabel()->pixmap().toImage().pixelColor(5, 5), QColor("#102030"));

        fixture.settings.bgColor = QColor("#405060");
        fixture.window->onSettingsChanged();
        fixture.refresh();
        QCOMPARE(previewLabel()->pixmap().toImage().pixelColor(5, 5), QColor("#405060"));
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
        AppSettings record;
        record.bgImagePath = directory.filePath(QStringLiteral("columns.png"));
        record.bgImageEnabled = true;
        QVERIFY(columns.save(record.bgImagePath));

        const PreviewFixture fixture(record);
        fixture.refresh();
        const QImage picture = previewLabel()->pixmap().toImage();
        QCOMPARE(picture.width(), 576);
        int greyPixels = 0;
        for (int x = 0; x < picture.width(); ++x) {
            const QColor color = picture.pixelColor(x, 2);
            if (color != QColor(Qt::black) && color != QColor(Qt::white))
                ++greyPixels;
        }
        QVERIFY2(greyPixels > 200, qPrintable(QString::number(greyPixels)));
    }

    void refresh_comesEveryHalfSecond()
    {
        const PreviewFixture fixture;
        QVERIFY(previewLabel()->pixmap().isNull());
        QTRY_VERIFY_WITH_TIMEOUT(!previewLabel()->pixmap().isNull(), 2000);
        const qint64 first = previewLabel()->pixmap().cacheKey();
        QTRY_VERIFY_WITH_TIMEOUT(previewLabel()->pixmap().cacheKey() != first, 2000);
    }

    void refresh_whileHidden_takesNoPicture()
    {
        const PreviewFixture fixture;
        fixture.button("Preview")->click();
        fixture.refresh();
        QVERIFY(previewLabel()->pixmap().isNull());
    }

    void refresh_beforeTheFirstUse_doesNothing()
    {
        ControlFixture fixture;
        fixture.show();
        runOut(fixture.previewTimer());
        QVERIFY(!previewWindow());
    }

    void window_canBeMadeSmallerAndLarger_data()
    {
        QTest::addColumn<QSize>("window");
        QTest::addColumn<QSize>("picture");
        QTest::newRow("smaller") << QSize(320, 180) << QSize(288, 180);
        QTest::newRow("very small") << QSize(80, 50) << QSize(80, 50);
        QTest::newRow("larger") << QSize(1280, 720) << QSize(1152, 720);
        QTest::newRow("higher") << QSize(400, 800) << QSize(400, 250);
    }

    void window_canBeMadeSmallerAndLarger()
    {
        QFETCH(QSize, window);
        const PreviewFixture fixture;
        fixture.refresh();
        previewWindow()->resize(window);
        fixture.refresh();
        QCOMPARE(previewWindow()->size(), window);
        QTEST(previewLabel()->pixmap().size(), "picture");
        fixture.refresh();
        QCOMPARE(previewWindow()->size(), window);
    }

    void window_openedAgain_keepsItsSize()
    {
        const PreviewFixture fixture;
        previewWindow()->resize(480, 300);
        fixture.button("Preview")->click();
        QVERIFY(!previewWindow()->isVisible());
        fixture.button("Preview")->click();
        QVERIFY(previewWindow()->isVisible());
        QCOMPARE(previewWindow()->size(), QSize(480, 300));
    }

    void outputHidden_closesThePreviewInTime()
    {
        const PreviewFixture fixture;
        fixture.window->toggleOutput();
        QVERIFY(previewWindow()->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!previewWindow()->isVisible(), 2000);
    }

    // Only a close counts as the last window's.
    void outputHidden_closesAndDoesNotOnlyHide()
    {
        const PreviewFixture fixture;
        const CloseCounter closes(previewWindow());
        fixture.window->toggleOutput();
        fixture.refresh();
        QVERIFY(!previewWindow()->isVisible());
        QCOMPARE(closes.count, 1);
    }

    void afterTheOutputCameBack_theSameWindowOpens()
    {
        const PreviewFixture fixture;
        const QWidget *preview = previewWindow();
        fixture.window->toggleOutput();
        fixture.refresh();
        fixture.window->toggleOutput();
        fixture.refresh();
        QVERIFY(!preview->isVisible());
        fixture.button("Preview")->click();
        QCOMPARE(previewWindow(), preview);
        QVERIFY(preview->isVisible());
    }

    // It closes with its next refresh, or the program ends with it; see ControlWindowOutput.
    void closingTheControlWindow_leavesThePreviewOpen()
    {
        const PreviewFixture fixture;
        fixture.window->close();
        QVERIFY(previewWindow()->isVisible());
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

VELMORA_TEST_MAIN(ControlWindowPreviewTest)
#include "tst_ControlWindowPreview.moc"
