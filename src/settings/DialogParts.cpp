#include "DialogParts.h"

#include <QFrame>
#include <QLabel>

#include "FormParts.h"

namespace {

const QString sectionHeaderStyle =
    QStringLiteral("color:#888;font-size:10px;font-weight:bold;letter-spacing:1px;");
const QString separatorStyle = QStringLiteral("color:#3a3a3a;");

} // namespace

QLabel *makeSectionHeader(const QString &title, QWidget *input)
{
    QLabel *header = makeTitle(title, input);
    header->setStyleSheet(sectionHeaderStyle);
    return header;
}

QFrame *makeSeparator()
{
    return makeLine(separatorStyle);
}
