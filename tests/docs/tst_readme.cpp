// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "connections/redis/support/redis_server.h"
#include "connections/redis/support/redis_test_client.h"
#include "support/english_environment.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <utility>

namespace {

QString contentOf(const QString& name)
{
    QFile file(QStringLiteral(PROJECT_FOLDER "/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The test cannot read %s.", qPrintable(name));
    return QString::fromUtf8(file.readAll());
}

// The code blocks of README.md that are marked with this language.
QStringList blocks(const QString& language)
{
    const QRegularExpression block("^```" + language + "\n(.*?)^```$",
                                   QRegularExpression::MultilineOption |
                                       QRegularExpression::DotMatchesEverythingOption);
    QStringList texts;
    auto matches = block.globalMatch(contentOf("README.md"));
    while (matches.hasNext())
        texts << matches.next().captured(1);
    return texts;
}

struct Call
{
    QString command;
    QStringList output;
};

// What the console blocks show: commands and the lines that they print.
QVector<Call> consoleCalls()
{
    QVector<Call> calls;
    const QStringList lines = blocks("console").join(QString()).split('\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        if (line.startsWith("$ "))
            calls.append({line.mid(2), {}});
        else if (!calls.isEmpty())
            calls.last().output << line;
    }
    return calls;
}

// A line without what differs from run to run: figures, and the order of a record file's columns.
QString shape(QString line)
{
    static const QRegularExpression row("^[-0-9.e+]+(;[^;]*)+$");
    if (row.match(line).hasMatch())
        return QStringLiteral("a row of %1 cells").arg(line.count(';'));
    if (line.startsWith("Time;")) {
        QStringList names = line.split(';');
        std::sort(names.begin() + 1, names.end());
        return names.join(';');
    }
    static const QRegularExpression size("\\([0-9.]+ (bytes|kB)\\)");
    static const QRegularExpression figure("\\b[0-9]+(\\.[0-9]+)?\\b");
    return line.replace(size, QStringLiteral("(a size)")).replace(figure, QStringLiteral("#"));
}

QStringList shapes(const QStringList& lines)
{
    QStringList result;
    for (const QString& line : lines)
        result << shape(line);
    return result;
}

// A shell in a folder of the test, which finds velk.
void prepareShell(QProcess* shell, const QTemporaryDir& folder)
{
    QProcessEnvironment environment = Velk::englishEnvironment();
    const QString velk = QFileInfo(QStringLiteral(VELK_PROGRAM)).path();
    environment.insert("PATH", velk + ':' + environment.value("PATH"));
    environment.insert("TMPDIR", folder.path());
    for (const char* name : {"VELK_ROBOT", "VELK_REDIS_PASSWORD", "VELK_REDIS_SENTINEL_PASSWORD"})
        environment.remove(QLatin1String(name));
    shell->setProcessEnvironment(environment);
    shell->setWorkingDirectory(folder.path());
    shell->setProcessChannelMode(QProcess::MergedChannels);
}

void endWithSigterm(QProcess* shell)
{
    shell->terminate();
    if (!shell->waitForFinished(60000))
        shell->kill();
}

} // namespace

class TestReadme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theConsoleShowsWhatTheToolsPrint();
    void aServedRobotIsWatchedOnTheServer();
    void theChecksRunEveryOtherCommand();
};

void TestReadme::theConsoleShowsWhatTheToolsPrint()
{
    const QVector<Call> calls = consoleCalls();
    QVERIFY(calls.size() >= 3);
    QTemporaryDir folder; // one for all: a later command reads what an earlier one wrote

    for (const Call& call : calls) {
        QProcess shell;
        prepareShell(&shell, folder);
        shell.start("/bin/sh", {"-c", call.command});
        QVERIFY2(shell.waitForFinished(60000), qPrintable(call.command));
        const QStringList printed = QString::fromUtf8(shell.readAll()).split('\n', Qt::SkipEmptyParts);

        QVERIFY2(shapes(printed) == shapes(call.output), qPrintable(call.command + " printed\n" + printed.join('\n')));
        QCOMPARE(shell.exitCode(), 0);
    }
}

void TestReadme::aServedRobotIsWatchedOnTheServer()
{
    RedisServer server;
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    const QRegularExpression pair("^(velk serve .*redis://127\\.0\\.0\\.1/lab1)\n(velk watch .*)\n$");
    QRegularExpressionMatch commands;
    const QStringList candidates = blocks("sh");
    for (const QString& block : candidates) {
        if (pair.match(block).hasMatch())
            commands = pair.match(block);
    }
    QVERIFY2(commands.hasMatch(), "README.md has no block of velk serve and velk watch");
    const QString url = server.url("lab1");
    const QByteArray key = "Arm/Elbow/Position";
    QTemporaryDir folder;
    QProcess serve;
    QProcess watch;

    prepareShell(&serve, folder);
    serve.start("/bin/sh", {"-c", "exec " + commands.captured(1).replace("redis://127.0.0.1/lab1", url)});
    RedisTestClient client(server.port());
    QVERIFY(waitUntil([&] { return client.command({"SISMEMBER", "mem:{lab1}:data", key}) == "1"; }));
    prepareShell(&watch, folder);
    watch.start("/bin/sh", {"-c", "exec " + commands.captured(2).replace("redis://127.0.0.1/lab1", url)});

    QByteArray printed;
    const bool hasValues = waitUntil([&] {
        watch.waitForReadyRead(100);
        printed += watch.readAll();
        return printed.contains("\t" + key + "\t");
    });
    endWithSigterm(&watch);
    endWithSigterm(&serve);
    QVERIFY2(hasValues, (printed + serve.readAll()).constData());
}

void TestReadme::theChecksRunEveryOtherCommand()
{
    const QStringList checks = contentOf(".ci/run").split('\n');
    const auto isRun = [&checks](const QString& command) {
        return std::any_of(checks.cbegin(), checks.cend(), [&command](const QString& line) {
            return line == command || line.startsWith(command + ' ');
        });
    };
    QStringList commands;
    const QStringList lines = blocks("sh").join(QString()).split('\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        const QStringList parts = line.section(" #", 0, 0).split(" && ");
        for (const QString& part : parts)
            commands << part.trimmed().remove(QRegularExpression("^sudo "));
    }
    QVERIFY(commands.contains("./scripts/demo"));

    for (const QString& command : std::as_const(commands)) {
        if (!command.startsWith("velk ")) // the tests above run these
            QVERIFY2(isRun(command), qPrintable(".ci/run does not run " + command));
    }
}

QTEST_GUILESS_MAIN(TestReadme)

#include "tst_readme.moc"
