// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_CONSOLE_H
#define APPS_VELK_SRC_CONSOLE_H

#include "exit_status.h"

#include <QByteArray>
#include <QString>

namespace Velk {

/// Standard output, for data, and standard error, for messages. Nothing is buffered: what was written has been handed
/// to the system when the call returns.
class Console
{
public:
    struct Size
    {
        int rows;
        int columns;
    };

    /// Takes the two descriptors as they are; they stay open.
    explicit Console(int outputDescriptor = 1, int messageDescriptor = 2);

    /// Whether standard output is a terminal whose cursor can be moved.
    bool isOutputTerminal() const { return m_isOutputTerminal; }
    /// The same for standard error.
    bool isMessageTerminal() const { return m_isMessageTerminal; }
    /// The present size of the output terminal; 24 by 80 if the terminal does not report it.
    Size outputSize() const;

    /// Writes data. Returns false when that failed, now or before. outputStatus() is then the exit status, and a
    /// message has been printed unless the reader has gone; Success means that a signal interrupted the write.
    bool write(const QByteArray& data);
    int outputStatus() const { return m_outputStatus; }

    /// Writes a message, "velk: …", each further line of it indented.
    void message(const QString& text);

    /// Shows the text in the last line of the message terminal, in place of the one before; an empty text clears it.
    /// Nothing when standard error is not a terminal.
    void setStatusLine(const QString& text);

    /// The text with control characters and line breaks written as escapes: a robot may have any byte in a name or in a
    /// value.
    static QString printable(const QString& text);

private:
    int m_outputDescriptor;
    int m_messageDescriptor;
    bool m_isOutputTerminal;
    bool m_isMessageTerminal;
    int m_outputStatus = Success;
    bool m_hasStatusLine = false;
};

} // namespace Velk

#endif
