#include "Button.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

// Styles draw the ring in a shade of the window's colour, about two thirds as bright. The ring
// then has a contrast of more than 4 : 1 to the ground of the program's windows.
const QColor ringSource(0xc8, 0xc8, 0xc8);

} // namespace

void Button::paintEvent(QPaintEvent * /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionButton label;
    initStyleOption(&label);

    // Everything but the label: the frame, and the focus where the style shows it.
    QStyleOptionButton frame = label;
    frame.text.clear();
    frame.icon = QIcon();
    painter.drawControl(QStyle::CE_PushButton, frame);

    // The contents rectangle, widened about its own centre to the size of the text. An icon is not
    // counted: the one button that has one is wide enough.
    const QRect contents = style()->subElementRect(QStyle::SE_PushButtonContents, &label, this);
    const QSize text(label.fontMetrics.horizontalAdvance(label.text), label.fontMetrics.height());
    label.rect.setSize(text.expandedTo(contents.size()));
    label.rect.moveCenter(contents.center());
    painter.drawControl(QStyle::CE_PushButtonLabel, label);
}

void RadioButton::initStyleOption(QStyleOptionButton *option) const
{
    QRadioButton::initStyleOption(option);
    option->palette.setColor(QPalette::Window, ringSource);
}
