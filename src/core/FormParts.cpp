#include "FormParts.h"

#include <QFrame>
#include <QLabel>

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
