#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QResource>
#include <QTest>

#include "Logo.h"
#include "TestMain.h"

/// The logo picture as it is compiled in.
class LogoTest : public QObject
{
    Q_OBJECT

private slots:
    // Qt has directories of its own beside it, and the format cannot be asked of a resource: both
    // are looked up in what the resource compiler has made.
    void resource_isOneFileOfFormatThree()
    {
        QCOMPARE(logoPath, QStringLiteral(":/assets/VELMORA LOGO DESKTOP NO BACKGROUND.png"));
        QFile source(VELMORA_LOGO_SOURCE);
        QVERIFY(source.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromLatin1(source.readAll()).split('\n');
        const QStringList nodes{"  // :", "  // :/assets", "  // " + logoPath};
        QCOMPARE(lines.filter(QRegularExpression("^  // :")), nodes);
        const QStringList versions = lines.filter(QRegularExpression("int version = \\d+;"));
        QCOMPARE(versions.size(), 2); // once to register it, once to clean up
        QCOMPARE(versions.filter("int version = 3;"), versions);
    }

    void resource_isTheFileOfTheAssetsUncompressed()
    {
        QFile asset(QStringLiteral(VELMORA_ASSETS) + "/VELMORA LOGO DESKTOP NO BACKGROUND.png");
        QVERIFY(asset.open(QIODevice::ReadOnly));
        const QByteArray wanted = asset.readAll();
        QVERIFY(wanted.startsWith("\x89PNG\r\n\x1a\n"));
        const QResource resource(logoPath);
        QVERIFY(resource.isValid());
        QCOMPARE(resource.compressionAlgorithm(), QResource::NoCompression);
        QCOMPARE(resource.size(), resource.uncompressedSize());
        QCOMPARE(resource.uncompressedData(), wanted);
    }

    void picture_hasATransparentBackground()
    {
        const QImage image(logoPath);
        QVERIFY(image.hasAlphaChannel());
        for (const int x : {0, image.width() - 1}) {
            for (const int y : {0, image.height() - 1})
                QCOMPARE(image.pixelColor(x, y).alpha(), 0);
        }
    }

    void picture_isReadableOnDarkGround_data()
    {
        QTest::addColumn<int>("height");
        QTest::newRow("title button") << 28;
        QTest::newRow("full height") << QImage(logoPath).height();
    }

    void picture_isReadableOnDarkGround()
    {
        QFETCH(int, height);
        const QImage image = QImage(logoPath).scaledToHeight(height, Qt::SmoothTransformation);
        qsizetype bright = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                bright += color.alpha() > 200 && color.lightness() > 80;
            }
        }
        // A mark and not a speck, and not the whole ground either.
        const qsizetype pixels = qsizetype{image.width()} * image.height();
        QVERIFY2(bright > pixels / 20, qPrintable(QString::number(bright)));
        QVERIFY2(bright < pixels * 9 / 10, qPrintable(QString::number(bright)));
    }
};

VELMORA_TEST_MAIN(LogoTest)
#include "tst_Logo.moc"
