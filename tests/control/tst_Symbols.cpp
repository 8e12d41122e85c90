#include <algorithm>

#include <QGlyphRun>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPainter>
#include <QRawFont>
#include <QTabBar>
#include <QTest>
#include <QTextDocument>
#include <QTextLayout>
#include <QToolTip>

#include "AboutDialog.h"
#include "ControlFixture.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"
#include "UpdateStage.h"
#include "Updater.h"

namespace {

// For private use: no font that stands in for others knows it.
constexpr char32_t unknownCharacter = 0x10fffd;

/// A text as the widget draws it, with the font that it draws it in.
struct Drawn
{
    QString text;
    QFont font;

    bool operator==(const Drawn &) const = default;
};

QString textOf(const QLabel &label)
{
    if (label.textFormat() == Qt::PlainText || !Qt::mightBeRichText(label.text()))
        return label.text();
    QTextDocument document;
    document.setHtml(label.text());
    return document.toPlainText();
}

QStringList textsOf(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return {textOf(*label)};
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return {button->text()};
    if (const auto *edit = qobject_cast<const QLineEdit *>(&widget))
        return {edit->text(), edit->placeholderText()};
    QStringList texts;
    if (const auto *tabs = qobject_cast<const QTabBar *>(&widget)) {
        for (int i = 0; i < tabs->count(); ++i)
            texts.append(tabs->tabText(i));
    } else if (const auto *list = qobject_cast<const QListWidget *>(&widget)) {
        for (int i = 0; i < list->count(); ++i)
            texts.append(list->item(i)->text());
    }
    return texts;
}

/// What the window and everything in it shows, or can show by being hovered or scrolled.
QList<Drawn> textsIn(QWidget &window)
{
    QList<Drawn> drawn;
    const QList<QWidget *> widgets = QList<QWidget *>{&window} + window.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        widget->ensurePolished();
        const QStringList texts = textsOf(*widget);
        for (const QString &text : texts)
            drawn.append({text, widget->font()});
        drawn.append({widget->toolTip(), QToolTip::font()});
    }
    return drawn;
}

bool hasGlyph(char32_t character, const QFont &font)
{
    QTextLayout layout(QString::fromUcs4(&character, 1), font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    bool found = false;
    const QList<QGlyphRun> runs = layout.glyphRuns();
    for (const QGlyphRun &run : runs) {
        const QList<quint32> glyphs = run.glyphIndexes();
        if (glyphs.contains(0U))
            return false;
        found = found || !glyphs.isEmpty();
    }
    return found;
}

QImage picture(char32_t character, const QFont &font, qreal ratio)
{
    constexpr int side = 80;
    QImage image(QSize(side, side) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setPen(Qt::white);
    painter.setFont(font);
    painter.drawText(QRect(0, 0, side, side), Qt::AlignCenter, QString::fromUcs4(&character, 1));
    return image;
}

bool isSeen(char32_t character, const QFont &font, qreal ratio)
{
    const QImage image = picture(character, font, ratio);
    return image != picture(' ', font, ratio) && image != picture(unknownCharacter, font, ratio);
}

/// The characters that no font draws, as in "⏸ (U+23F8)".
QStringList missingOf(const QList<Drawn> &texts)
{
    QStringList missing;
    for (const Drawn &drawn : texts) {
        const QList<uint> characters = drawn.text.toUcs4();
        for (const char32_t character : characters) {
            if (character == '\n' || QChar::isSpace(character))
                continue;
            if (hasGlyph(character, drawn.font) && isSeen(character, drawn.font, 1.0)
                && isSeen(character, drawn.font, 2.0))
                continue;
            const QString name = QStringLiteral("%1 (U+%2)")
                                     .arg(QString::fromUcs4(&character, 1),
                                          QString::number(character, 16).toUpper());
            if (!missing.contains(name))
                missing.append(name);
        }
    }
    return missing;
}

using Collector = QList<Drawn> (*)();

QList<Drawn> settingsTexts()
{
    ControlFixture fixture;
    SettingsDialog dialog(&fixture.settings, nullptr);
    QList<Drawn> texts = textsIn(dialog);
    // The waiting rows of the Shortcuts page read differently.
    const QList<QPushButton *> buttons = dialog.findChildren<QPushButton *>();
    for (QPushButton *button : buttons) {
        if (button->text() == QLatin1String("Set Key"))
            button->click();
    }
    return texts + textsIn(dialog);
}

QList<Drawn> controlTexts()
{
    ControlFixture fixture;
    QList<Drawn> texts = textsIn(*fixture.window);
    fixture.window->toggleOutput(); // the button's other text
    texts += textsIn(*fixture.window);
    return texts;
}

QList<Drawn> outputTexts()
{
    ControlFixture fixture;
    fixture.output.onTimerTick(-754);
    return textsIn(fixture.output) + QList<Drawn>{{"0123456789 AM PM", fixture.output.font()}};
}

QList<Drawn> aboutTexts()
{
    ControlFixture fixture;
    AboutDialog dialog(nullptr);
    return textsIn(dialog);
}

QList<Drawn> updateTexts(const char *version)
{
    ControlFixture fixture; // installs the style sheet
    UpdateStage stage;
    stage.server.setAnswer(httpAnswer(updateDocument(version)));
    QList<Drawn> texts;
    stage.setAction([&texts](QMessageBox &box) {
        texts = textsIn(box);
        box.close();
    });
    Updater updater;
    updater.check(false);
    return stage.settle() ? texts : QList<Drawn>();
}

QList<Drawn> offerTexts()
{
    return updateTexts("99.0.0");
}

QList<Drawn> upToDateTexts()
{
    return updateTexts("1.1.4");
}

} // namespace

/// Whether the user can read what the windows say: every character must be drawn by a font that
/// is installed here, and not as the box that stands for a missing one.
class SymbolsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { removeStore(); }

    // Should a machine have a font that draws it after all, nothing here could fail.
    void unknownCharacter_isFoundMissing()
    {
        const QString text = QString::fromUcs4(&unknownCharacter, 1);
        QCOMPARE(missingOf({{text, QFont()}}), QStringList(text + " (U+10FFFD)"));
    }

    void everyCharacter_isDrawnByAFont_data()
    {
        QTest::addColumn<Collector>("collect");
        QTest::addColumn<QString>("sample");
        QTest::newRow("Control window") << &controlTexts << "⏸  PAUSE";
        QTest::newRow("Output window") << &outputTexts << "-12:34";
        QTest::newRow("Settings dialog") << &settingsTexts << "Press any key...";
        QTest::newRow("About card") << &aboutTexts << "×";
        QTest::newRow("offered update") << &offerTexts << "Download";
        QTest::newRow("no update") << &upToDateTexts << "You're up to date.\nVersion 1.1.4";
    }

    void everyCharacter_isDrawnByAFont()
    {
        QFETCH(Collector, collect);
        QFETCH(QString, sample);
        const QList<Drawn> texts = collect();
        QVERIFY(std::any_of(texts.begin(), texts.end(),
                            [&](const Drawn &drawn) { return drawn.text == sample; }));
        QCOMPARE(missingOf(texts).join(", "), QString());
    }

    void symbol_isDrawnInEveryFontOfTheWindows()
    {
        const QList<Drawn> shown = controlTexts() + settingsTexts() + aboutTexts();
        QList<Drawn> symbols;
        for (const Drawn &drawn : shown) {
            const Drawn all{"▶⏸↺⚙▼▲⏱🕐⊞■◀−…×—“”", drawn.font};
            if (!symbols.contains(all))
                symbols.append(all);
        }
        QVERIFY(symbols.size() > 5);
        QCOMPARE(missingOf(symbols).join(", "), QString());
    }
};

VELMORA_TEST_MAIN(SymbolsTest)
#include "tst_Symbols.moc"
