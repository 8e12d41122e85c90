#include "FormParts.h"

#include <QFrame>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>

QFrame *makeLine(const QString &styleSheet)
{
    auto *line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    if (!styleSheet.isEmpty())
        line->setStyleSheet(styleSheet);
    return line;
}

QLabel *makeTitle(const QString &title, QWidget *input)
{
    auto *label = new QLabel(title.toUpper());
    label->setBuddy(input);
    return label;
}

QSpinBox *makeSpinBox(int minimum, int maximum, const QString &suffix, int value,
                      const QString &name)
{
    auto *spinBox = new QSpinBox;
    spinBox->setRange(minimum, maximum);
    spinBox->setValue(value);
    spinBox->setSuffix(suffix);
    spinBox->setAccessibleName(name);
    return spinBox;
}

QList<int> listedPresets(const QListWidget &presetList)
{
    QList<int> presets;
    for (int row = 0; row < presetList.count(); ++row)
        presets.append(presetList.item(row)->data(Qt::UserRole).toInt());
    return presets;
}
