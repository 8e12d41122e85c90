#include "FormHelpers.h"

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>

#include "AppSettings.h"
#include "Button.h"

namespace {

const QString separatorStyle = QStringLiteral("color:#3a3a3a;");
const QString sectionHeaderStyle =
    QStringLiteral("color:#888;font-size:10px;font-weight:bold;letter-spacing:1px;");

QLabel *makeHeader(const QString &title, QWidget *input)
{
    auto *header = new QLabel(title.toUpper());
    header->setBuddy(input);
    return header;
}

} // namespace

QFrame *makeLine(const QString &styleSheet)
{
    auto *line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    if (!styleSheet.isEmpty())
        line->setStyleSheet(styleSheet);
    return line;
}

QFrame *makeSeparator()
{
    return makeLine(separatorStyle);
}

QLabel *makeSectionHeader(const QString &title, QWidget *input)
{
    QLabel *header = makeHeader(title, input);
    header->setStyleSheet(sectionHeaderStyle);
    return header;
}

QLabel *makeHookedHeader(const QString &title, QWidget *input)
{
    QLabel *header = makeHeader(title, input);
    header->setObjectName(QStringLiteral("sectionHeader"));
    return header;
}

QSpinBox *makeSpinBox(Range range, const QString &suffix, int value, const QString &name)
{
    auto *spinBox = new QSpinBox;
    spinBox->setRange(range.minimum, range.maximum);
    spinBox->setValue(value);
    spinBox->setSuffix(suffix);
    spinBox->setAccessibleName(name);
    return spinBox;
}

QCheckBox *makeCheckBox(const QString &text, bool checked)
{
    auto *box = new QCheckBox(text);
    box->setChecked(checked);
    return box;
}

QPushButton *makeButton(const QString &text, const QString &name)
{
    auto *button = new Button(text);
    button->setAccessibleName(name);
    return button;
}

QPushButton *makeCheckable(const QString &text, const QString &name, bool checked)
{
    QPushButton *button = makeButton(text, name);
    button->setCheckable(true);
    button->setChecked(checked);
    return button;
}

QPushButton *makeHooked(const QString &text, const QString &name, const QString &objectName)
{
    QPushButton *button = makeButton(text, name);
    button->setObjectName(objectName);
    return button;
}

QPushButton *makeFixedWidth(const QString &text, const QString &name, int width)
{
    QPushButton *button = makeButton(text, name);
    button->setFixedWidth(width);
    return button;
}

QList<int> listedPresets(const QListWidget &presetList)
{
    QList<int> presets;
    for (int row = 0; row < presetList.count(); ++row)
        presets.append(presetList.item(row)->data(Qt::UserRole).toInt());
    return presets;
}
