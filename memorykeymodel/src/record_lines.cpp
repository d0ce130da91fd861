#include "record_lines.h"

#include <QMetaType>

namespace Velk {

namespace {

QString quoted(QString text)
{
    const QChar quote = QLatin1Char('"');
    return quote + text.replace(quote, QStringLiteral("\"\"")) + quote;
}

// The types whose text stands in its cell as it is. The one-byte character types are numbers to Qt's conversions but
// characters to those who write them: they are quoted like text.
bool isWrittenUnquoted(int type)
{
    switch (type) {
    case QMetaType::UnknownType:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::VoidStar:
    case QMetaType::Long:
    case QMetaType::Short:
    case QMetaType::ULong:
    case QMetaType::UShort:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

QString cellText(const QVariant& value)
{
    const QString text = value.toString();
    return isWrittenUnquoted(value.userType()) ? text : quoted(text);
}

} // namespace

QByteArray recordHeader(const QSet<DisplayedMemoryKey>& columns)
{
    QString header = QStringLiteral("Time");
    for (const DisplayedMemoryKey& column : columns)
        header += QLatin1Char(';') + quoted(column.key().name());
    header += QLatin1Char('\n');
    return header.toUtf8();
}

RecordRows recordRows(const QSet<DisplayedMemoryKey>& columns, const QMap<QString, QMap<double, QVariant>>& batch)
{
    RecordRows rows;
    int columnIndex = 0;
    for (const DisplayedMemoryKey& column : columns) {
        const auto samples = batch.constFind(column.key().name());
        if (samples != batch.cend()) {
            for (auto sample = samples->cbegin(); sample != samples->cend(); ++sample) {
                QVector<QString>& cells = rows[sample.key()];
                if (cells.isEmpty())
                    cells.resize(columns.size());
                cells[columnIndex] = cellText(sample.value());
            }
        }
        ++columnIndex;
    }
    return rows;
}

QByteArray recordLine(double time, const QVector<QString>& cells)
{
    QString line = QString::number(time, 'g', 6);
    for (const QString& cell : cells)
        line += QLatin1Char(';') + cell;
    line += QLatin1Char('\n');
    return line.toUtf8();
}

} // namespace Velk
