// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordtext/record_reader.h>

#include <QIODevice>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

constexpr int chunkSize = 1 << 16;
constexpr int maxLineSize = 1 << 30; // an array of Qt 5 has room for little more

/// Splits one line into its fields.
class Fields
{
    Q_DECLARE_TR_FUNCTIONS(RecordReader)

public:
    /// The line has its line feed.
    explicit Fields(const QByteArray& line)
        : m_line(line)
    {}

    /// Sets the next field, with its quotes. Returns false after the last one, and at a field that breaks the format.
    bool next(QByteArray* field)
    {
        if (m_end + 1 == m_line.size())
            return false;
        m_begin = m_end + 1;
        m_end = m_line[m_begin] == '"' ? endOfQuoted() : endOfPlain();
        *field = m_line.mid(m_begin, m_end - m_begin);
        return m_error.isEmpty();
    }

    /// Why next() returned false; empty after the last field.
    const QString& error() const { return m_error; }
    /// The line feeds in front of the field of the last next().
    qint64 lineFeedsBefore() const { return std::count(m_line.cbegin(), m_line.cbegin() + m_begin, '\n'); }

private:
    bool isEnd(int position) const { return m_line[position] == ';' || position + 1 == m_line.size(); }

    int endOfPlain()
    {
        int end = m_begin;
        while (!isEnd(end)) {
            if (m_line[end++] == '"')
                m_error = tr("a quote is inside a field that does not begin with one");
        }
        return end;
    }

    int endOfQuoted()
    {
        int end = m_begin + 1;
        while (end < m_line.size() && (m_line[end] != '"' || m_line[end + 1] == '"'))
            end += m_line[end] == '"' ? 2 : 1;
        ++end; // after the closing quote, which every complete line has
        if (!isEnd(end))
            m_error = tr("a quoted text is followed by neither a semicolon nor the end of the line");
        return end;
    }

    const QByteArray& m_line;
    int m_begin = 0;
    int m_end = -1; ///< the separator, or the line feed, behind the last field
    QString m_error;
};

/// number = [ "-" ] 1*DIGIT [ "." 1*DIGIT ] [ "e" ( "+" / "-" ) 1*DIGIT ] / "inf" / "-inf" / "nan"
bool isNumber(const QByteArray& field)
{
    if (field == "inf" || field == "-inf" || field == "nan")
        return true;
    const char* at = field.constData(); // ends with a null character, which is no digit
    const auto skipDigits = [&at] {
        const char* const begin = at;
        while (*at >= '0' && *at <= '9')
            ++at;
        return at != begin;
    };
    if (*at == '-')
        ++at;
    if (!skipDigits())
        return false;
    if (*at == '.' && (++at, !skipDigits()))
        return false;
    if (*at == 'e') {
        ++at;
        if ((*at != '+' && *at != '-') || (++at, !skipDigits()))
            return false;
    }
    return at == field.constData() + field.size();
}

/// The text of a quoted field. Returns false when its bytes are not UTF-8.
bool unquote(const QByteArray& field, QString* text)
{
    // Decoded with its quotes: a byte-order mark at the start of the bytes would be dropped. And with its size: Qt 5
    // stops at a zero byte of a QByteArray.
    const QString decoded = QString::fromUtf8(field.constData(), int(field.size()));
    // Qt replaces bytes that are not UTF-8: the text is then encoded as other bytes.
    if (decoded.toUtf8() != field)
        return false;
    *text = decoded.mid(1, decoded.size() - 2).replace(QLatin1String("\"\""), QLatin1String("\""));
    return true;
}

bool isQuoted(const QByteArray& field)
{
    return field.startsWith('"');
}

} // namespace

RecordReader::RecordReader(QIODevice* device)
    : m_device(device)
{
    readHeader();
}

void RecordReader::readHeader()
{
    // Before a line is searched: a large file of another format may not have a line.
    const QByteArray begin = m_device->peek(4);
    if (!QByteArray("Time").startsWith(begin))
        return fail(tr("the file does not begin with \"Time\", so it is not a record file"), 1);
    QByteArray line;
    if (!readLine(&line))
        return;

    Fields fields(line);
    QByteArray field;
    fields.next(&field);
    if (field != "Time")
        return fail(tr("the file does not begin with \"Time\", so it is not a record file"), 1);
    QStringList columns;
    while (fields.next(&field)) {
        QString name;
        if (!isQuoted(field))
            return fail(tr("the name of a column is not quoted"), 1 + fields.lineFeedsBefore());
        if (!unquote(field, &name))
            return fail(tr("the name of a column is not UTF-8"), 1 + fields.lineFeedsBefore());
        columns << name;
    }
    if (!fields.error().isEmpty())
        return fail(fields.error(), 1 + fields.lineFeedsBefore());
    m_columns = columns;
}

bool RecordReader::readRow(RecordRow* row)
{
    const qint64 firstLine = m_lineCount + 1;
    QByteArray line;
    if (hasError() || !readLine(&line))
        return false;

    Fields fields(line);
    const auto failInField = [&](const QString& what) {
        fail(what, firstLine + fields.lineFeedsBefore());
        return false;
    };
    QByteArray field;
    bool isTime = false;
    if (fields.next(&field) && isNumber(field))
        row->time = field.toDouble(&isTime);
    if (!isTime)
        return failInField(fields.error().isEmpty() ? tr("the time is not a number") : fields.error());

    row->cells.clear();
    while (fields.next(&field)) {
        RecordField cell;
        if (isQuoted(field)) {
            cell.type = RecordField::Text;
            if (!unquote(field, &cell.text))
                return failInField(tr("a text is not UTF-8"));
        } else if (!field.isEmpty()) {
            if (field == "true" || field == "false")
                cell.type = RecordField::Truth;
            else if (isNumber(field))
                cell.type = RecordField::Number;
            else
                return failInField(tr("a cell is neither a number nor \"true\", \"false\" or quoted"));
            cell.text = QString::fromLatin1(field);
        }
        row->cells.push_back(std::move(cell));
    }
    return fields.error().isEmpty() || failInField(fields.error());
}

QByteArray RecordReader::unfinishedLine() const
{
    return hasError() ? QByteArray() : m_buffer.mid(m_nextLine);
}

bool RecordReader::readLine(QByteArray* line)
{
    for (;;) {
        const char* const buffer = m_buffer.constData();
        if (const char* const end = m_scan.addLine(buffer + m_scanned, buffer + m_buffer.size())) {
            m_scanned = int(end - buffer);
            *line = m_buffer.mid(m_nextLine, m_scanned - m_nextLine);
            m_nextLine = m_scanned;
            m_lineCount += line->count('\n');
            return true;
        }
        m_buffer.remove(0, m_nextLine);
        m_nextLine = 0;
        m_scanned = int(m_buffer.size());
        if (m_scanned > maxLineSize) {
            fail(tr("the line is longer than 1 GiB"), m_lineCount + 1);
            return false;
        }

        m_buffer.resize(m_scanned + chunkSize);
        const qint64 size = m_device->read(m_buffer.data() + m_scanned, chunkSize);
        m_buffer.resize(m_scanned + int(std::max<qint64>(size, 0)));
        if (size < 0)
            fail(tr("the file cannot be read: %1").arg(m_device->errorString()), m_lineCount + 1);
        if (size <= 0)
            return false;
    }
}

void RecordReader::fail(const QString& what, qint64 line)
{
    m_errorString = what;
    m_errorLine = line;
}

} // namespace Velk
