#include "Record.h"

#include "AppSettings.h"

namespace {

QString textOf(const QVariant &value)
{
    if (value.userType() == QMetaType::QColor) {
        const auto color = value.value<QColor>();
        return color.isValid() ? color.name(QColor::HexArgb) : QStringLiteral("invalid");
    }
    if (value.userType() == qMetaTypeId<QList<int>>()) {
        QStringList texts;
        for (const int number : value.value<QList<int>>())
            texts << QString::number(number);
        return texts.join(QLatin1Char(','));
    }
    return value.toString();
}

} // namespace

QStringList fieldLines(const AppSettings &settings)
{
    QStringList lines;
    const RecordFields fields = fieldsOf(settings);
    for (auto field = fields.cbegin(); field != fields.cend(); ++field)
        lines << field.key() + QLatin1Char('=') + textOf(field.value());
    return lines;
}

QStringList storedLines()
{
    AppSettings stored;
    loadSettings(stored);
    return fieldLines(stored);
}
