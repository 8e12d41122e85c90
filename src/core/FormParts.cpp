#include "FormParts.h"

#include <QFrame>
#include <QLabel>
#include <QSpinBox>

QFrame *makeLine(const QString &styleSheet)
{
    auto *line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    if (!styleSheet.isEmpty())
        line->setStyleSheet(styleSheet);
    return line;
}

QLabel *makeTitle(const QString &title)
{
    return new QLabel(title.toUpper());
}

QSpinBox *makeSpinBox(int minimum, int maximum, const QString &suffix, int value)
{
    auto *spinBox = new QSpinBox;
    spinBox->setRange(minimum, maximum);
    spinBox->setValue(value);
    spinBox->setSuffix(suffix);
    return spinBox;
}
