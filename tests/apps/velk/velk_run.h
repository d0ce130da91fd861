// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_APPS_VELK_VELK_RUN_H
#define TESTS_APPS_VELK_VELK_RUN_H

#include <QByteArray>
#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <sys/types.h>

/// The velk that is installed, and the same on robots under the test's hand (velk_with_test_robot.cpp).
extern const QString velkProgram;
extern const QString testVelkProgram;

/// velk with pipes, as in a script. A test waits for what it writes, never for time.
class VelkRun
{
public:
    explicit VelkRun(const QString& program = testVelkProgram);
    ~VelkRun();

    /// Acts as a full disk for files of more than so many blocks of 512 bytes. Call it before start().
    void setFileSizeLimit(int blocks) { m_fileSizeLimit = blocks; }
    void setVariable(const QString& name, const QString& value) { m_environment.insert(name, value); }
    /// The folder of velk's temporary files; a test checks that it is empty afterwards.
    QString temporaryDirectory() const { return m_temporaryDirectory.path(); }

    void start(const QStringList& arguments);
    /// Waits until the output matches. False if velk ends first, or after a long time.
    bool waitForOutput(const QString& pattern);
    bool waitForMessage(const QString& pattern);
    void sendSignal(int signalNumber);
    /// The exit status; -1 when velk crashed, or does not end and is killed.
    int end();
    /// start() and end().
    int run(const QStringList& arguments);

    QString output() const { return QString::fromUtf8(m_output); }
    QString messages() const { return QString::fromUtf8(m_messages); }
    /// The messages without the line that reports only missed ticks; on a busy machine velk adds it.
    QString messagesButMissedTicks() const;

private:
    bool waitFor(const QByteArray& text, const QString& pattern);
    void read();

    QString m_program;
    QTemporaryDir m_temporaryDirectory;
    QProcessEnvironment m_environment;
    QProcess m_process;
    int m_fileSizeLimit = 0;
    QByteArray m_output;
    QByteArray m_messages;
};

/// velk on a terminal of 24 rows and 80 columns.
class VelkTerminal
{
public:
    explicit VelkTerminal(const QString& program = testVelkProgram);
    ~VelkTerminal();

    void start(const QStringList& arguments);
    /// Waits until the bytes on the terminal match, control sequences included. False if velk ends first, or after a
    /// long time.
    bool waitFor(const QString& pattern);
    /// Forgets the text: the next wait sees only what comes later.
    void forget() { m_text.clear(); }
    /// The key combination, as the user types it.
    void typeCtrlC();
    void sendSignal(int signalNumber);
    int end();

    QString text() const { return QString::fromUtf8(m_text); }

private:
    bool read();

    QString m_program;
    QTemporaryDir m_temporaryDirectory;
    pid_t m_process = -1;
    int m_terminal = -1;
    QByteArray m_text;
};

#endif
