// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <support/english_environment.h>

#include <QProcess>
#include <QTest>

namespace {

struct Run
{
    int status = -1;
    QString output;
    QString errors;
};

// Runs velk-watch as a user would, with these variables in place of those that name a display.
Run run(const QStringList& arguments, const QMap<QString, QString>& variables = {})
{
    QProcess process;
    QProcessEnvironment environment = Velk::englishEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "QT_QPA_PLATFORM", "VELK_ROBOT"})
        environment.remove(QLatin1String(name));
    for (auto variable = variables.cbegin(); variable != variables.cend(); ++variable)
        environment.insert(variable.key(), variable.value());
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VELK_WATCH_PROGRAM), arguments);
    Run result;
    if (!process.waitForStarted() || !process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return result;
    result.status = process.exitCode();
    result.output = QString::fromUtf8(process.readAllStandardOutput());
    result.errors = QString::fromUtf8(process.readAllStandardError());
    return result;
}

} // namespace

class TestWatchProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutADisplayTheMessageSaysWhatToDo()
    {
        const Run result = run({QStringLiteral("--robot"), QStringLiteral("sim:"), QStringLiteral("--watch"),
                                QStringLiteral("Arm/Elbow/Position")});

        QCOMPARE(result.status, 11);
        QVERIFY2(result.errors.contains(QStringLiteral("velk watch --robot sim: Arm/Elbow/Position")),
                 qPrintable(result.errors));
        QCOMPARE(result.output, QString());
    }

    void requestsWithoutAWindowNeedNoDisplay()
    {
        QCOMPARE(run({QStringLiteral("--version")}).status, 0);
        const Run help = run({QStringLiteral("--help")});
        QCOMPARE(help.status, 0);
        QVERIFY(help.output.startsWith(QStringLiteral("Usage: velk-watch")));
    }

    void badCommandLines_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::newRow("an unknown option") << QStringList{QStringLiteral("--nonsense")} << 2;
        QTest::newRow("an unknown scheme") << QStringList{QStringLiteral("--robot"), QStringLiteral("nonsense:")} << 3;
    }

    void badCommandLines()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);

        const Run result = run(arguments, {{QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen")}});

        QCOMPARE(result.status, status);
        QVERIFY2(result.errors.contains(QStringLiteral("velk-watch: ")), qPrintable(result.errors));
        QVERIFY(result.errors.contains(QStringLiteral("nonsense")));
    }

    void theDesktopFilesAreValid_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("desktop entry") << QStringLiteral("desktop-file-validate")
                                       << QStringList{QStringLiteral(DATA_FOLDER "/velk-watch.desktop")};
        QTest::newRow("AppStream") << QStringLiteral("appstreamcli")
                                   << QStringList{QStringLiteral("validate"), QStringLiteral("--no-net"),
                                                  QStringLiteral("--pedantic"),
                                                  QStringLiteral(DATA_FOLDER "/velk-watch.metainfo.xml")};
    }

    void theDesktopFilesAreValid()
    {
        QFETCH(QString, program);
        QFETCH(QStringList, arguments);
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);

        process.start(program, arguments);

        QVERIFY2(process.waitForFinished(60000), qPrintable(process.errorString()));
        QVERIFY2(process.exitCode() == 0, process.readAll().constData());
    }
};

QTEST_GUILESS_MAIN(TestWatchProgram)
#include "tst_watch_program.moc"
