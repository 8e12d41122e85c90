#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QResource>
#include <QTest>

#include "Logo.h"
#include "TestMain.h"

namespace {

/// What the resource compiler has made of the picture.
QString generatedSource()
{
    QFile source(VELMORA_LOGO_SOURCE);
    return source.open(QIODevice::ReadOnly) ? QString::fromLatin1(source.readAll()) : QString();
}

} // namespace

/// The logo picture as it is compiled in.
class LogoTest : public QObject
{
    Q_OBJECT

private slots:
    void path_hasTheFilesExactName()
    {
        QCOMPARE(logoPath, QStringLiteral(":/assets/VELMORA LOGO DESKTOP NO BACKGROUND.png"));
        QVERIFY(QFile::exists(logoPath));
    }

    void resource_isOneFileInOneDirectory()
    {
        QStringList entries;
        QDirIterator iterator(":/assets", QDir::AllEntries | QDir::NoDotAndDotDot,
                              QDirIterator::Subdirectories);
        while (iterator.hasNext())
            entries.append(iterator.next());
        QCOMPARE(entries, QStringList{logoPath});
    }

    // Qt has directories of its own beside it, so the compiled-in tree is looked at.
    void resource_hasNothingBesideTheDirectory()
    {
        const QString source = generatedSource();
        const QStringList nodes{"  // :", "  // :/assets", "  // " + logoPath};
        QStringList found;
        const QStringList lines = source.split('\n');
        for (const QString &line : lines) {
            if (line.startsWith("  // :"))
                found.append(line);
        }
        QCOMPARE(found, nodes);
    }

    void resource_isStoredUncompressed()
    {
        const QResource resource(logoPath);
        QVERIFY(resource.isValid());
        QCOMPARE(resource.compressionAlgorithm(), QResource::NoCompression);
        QCOMPARE(resource.size(), resource.uncompressedSize());
    }

    // The format cannot be asked of a resource; the registration that is compiled in names it.
    void resource_isInFormatThree()
    {
        const QString text = generatedSource();
        QCOMPARE(text.count("int version = 3;"), 2); // once to register it, once to clean up
        QCOMPARE(text.count(QRegularExpression("int version = \\d+;")), 2);
    }

    void resource_isTheFileOfTheAssets()
    {
        QFile asset(QStringLiteral(VELMORA_ASSETS) + "/VELMORA LOGO DESKTOP NO BACKGROUND.png");
        QVERIFY(asset.open(QIODevice::ReadOnly));
        const QByteArray wanted = asset.readAll();
        QVERIFY(!wanted.isEmpty());
        QCOMPARE(QResource(logoPath).uncompressedData(), wanted);
    }

    void picture_isAPng()
    {
        QFile file(logoPath);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.read(8), QByteArray("\x89PNG\r\n\x1a\n"));
        QVERIFY(!QImage(logoPath).isNull());
    }

    void picture_hasATransparentBackground()
    {
        const QImage image(logoPath);
        QVERIFY(image.hasAlphaChannel());
        const int right = image.width() - 1;
        const int bottom = image.height() - 1;
        for (const QPoint corner :
             {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)})
            QCOMPARE(image.pixelColor(corner).alpha(), 0);
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
                if (color.alpha() > 200 && color.lightness() > 80)
                    ++bright;
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
