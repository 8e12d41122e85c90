#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QLayout>

#include "AboutDialog.h"

/// What a person sees of the About card, found in the dialog's layouts.
class AboutCard
{
public:
    explicit AboutCard(const AboutDialog &dialog)
        : card(dialog.findChild<QWidget *>("aboutCard"))
    {
    }

    QWidget *widget() const { return card; }
    QBoxLayout *column() const { return qobject_cast<QBoxLayout *>(card->layout()); }
    QLayoutItem *item(int index) const { return card->layout()->itemAt(index); }

    QBoxLayout *crossRow() const { return qobject_cast<QBoxLayout *>(item(0)->layout()); }
    QAbstractButton *crossButton() const { return button(crossRow()->itemAt(1)); }
    QLabel *logo() const { return qobject_cast<QLabel *>(item(1)->widget()); }
    QAbstractButton *webSiteButton() const { return button(item(14)); }
    QAbstractButton *updateButton() const { return button(item(18)); }
    QAbstractButton *closeButton() const { return button(item(20)); }

private:
    static QAbstractButton *button(QLayoutItem *item)
    {
        return qobject_cast<QAbstractButton *>(item->widget());
    }

    QWidget *card;
};

/// The layout's items in order, one a line: a widget's class, a spacing's size, a nested
/// layout's items in brackets.
inline QStringList outline(const QLayout &layout)
{
    QStringList items;
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem *item = layout.itemAt(i);
        if (const QWidget *widget = item->widget())
            items.append(widget->metaObject()->className());
        else if (const QLayout *nested = item->layout())
            items.append('[' + outline(*nested).join(' ') + ']');
        else if (item->expandingDirections())
            items.append("stretch");
        else
            items.append(QString::number(item->sizeHint().height()));
    }
    return items;
}
