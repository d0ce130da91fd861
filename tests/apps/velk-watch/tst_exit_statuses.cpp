// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <support/english_environment.h>

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace {

// The exit statuses of a program by number, as its help text lists them.
QMap<int, QString> statusesInHelpOf(const QString& program)
{
    QProcess process;
    process.setProcessEnvironment(Velk::englishEnvironment());
    process.start(program, {QStringLiteral("--help")});
    if (!process.waitForFinished(60000))
        return {};
    const QString list = QString::fromUtf8(process.readAllStandardOutput()).section("Exit status:\n", 1);
    const QRegularExpression line("^ +(\\d+)  +(.*)$", QRegularExpression::MultilineOption);
    QMap<int, QString> statuses;
    auto lines = line.globalMatch(list);
    while (lines.hasNext()) {
        const QRegularExpressionMatch match = lines.next();
        statuses.insert(match.captured(1).toInt(), match.captured(2));
    }
    return statuses;
}

// The exit statuses on the page of velk-watch.
QList<int> statusesOnThePage()
{
    QFile page(QStringLiteral(WATCH_PAGE));
    if (!page.open(QIODevice::ReadOnly))
        qFatal("The test cannot read %s.", WATCH_PAGE);
    const QString table = QString::fromUtf8(page.readAll()).section("## Exit status\n", 1);
    const QRegularExpression row("^\\| (\\d+) \\|", QRegularExpression::MultilineOption);
    QList<int> statuses;
    auto rows = row.globalMatch(table);
    while (rows.hasNext())
        statuses.append(rows.next().captured(1).toInt());
    return statuses;
}

} // namespace

class TestExitStatuses : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStatusHasOneMeaningInVelkAndVelkWatch()
    {
        const QList<int> ofVelk = statusesInHelpOf(QStringLiteral(VELK_PROGRAM)).keys();
        const QList<int> ofVelkWatch = statusesInHelpOf(QStringLiteral(VELK_WATCH_PROGRAM)).keys();

        QVERIFY(ofVelk.size() > 10);
        QList<int> ofBoth;
        for (int status : ofVelkWatch) {
            if (ofVelk.contains(status))
                ofBoth.append(status);
        }
        // Done, a wrong command line, a wrong URL: the ends that both programs have.
        QCOMPARE(ofBoth, QList<int>({0, 2, 3}));
    }

    void thePageListsTheStatusesOfTheHelpText()
    {
        QCOMPARE(statusesOnThePage(), statusesInHelpOf(QStringLiteral(VELK_WATCH_PROGRAM)).keys());
    }
};

QTEST_GUILESS_MAIN(TestExitStatuses)
#include "tst_exit_statuses.moc"
