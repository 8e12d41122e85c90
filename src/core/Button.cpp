#include "Button.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

// Styles draw the ring in a shade of the window's colour, about two thirds as bright. The ring
// then has a contrast of more than 4 : 1 to the ground of the program's windows.
const QColor ringSource(0xc8, 0xc8, 0xc8);

// The gap that QPushButton leaves between icon and text, in pixels.
constexpr int iconGap = 4;

QSize labelSize(const QStyleOptionButton &option)
{
    QSize size = option.fontMetrics.size(Qt::TextShowMnemonic, option.text);
    if (!option.icon.isNull()) {
        size.rwidth() += option.iconSize.width() + iconGap;
        size.setHeight(qMax(size.height(), option.iconSize.height()));
    }
    return size;
}

// The contents rectangle, widened about its own centre to the label's size.
QRect labelRect(const QRect &contents, const QSize &label)
{
    const int dx = qMax(0, label.width() - contents.width() + 1) / 2;
    const int dy = qMax(0, label.height() - contents.height() + 1) / 2;
    return contents.adjusted(-dx, -dy, dx, dy);
}

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

    const QRect contents = style()->subElementRect(QStyle::SE_PushButtonContents, &label, this);
    label.rect = labelRect(contents, labelSize(label));
    painter.drawControl(QStyle::CE_PushButtonLabel, label);
}

void RadioButton::initStyleOption(QStyleOptionButton *option) const
{
    QRadioButton::initStyleOption(option);
    option->palette.setColor(QPalette::Window, ringSource);
}
