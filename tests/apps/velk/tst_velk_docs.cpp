// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk_run.h"

#include <QFile>
#include <QTest>

namespace {

struct Block
{
    QString command;
    QString output;
};

// The blocks of the page that begin with a command: "$ velk …".
QVector<Block> commandBlocks()
{
    QFile page(QStringLiteral(VELK_DOCS));
    if (!page.open(QIODevice::ReadOnly))
        qFatal("The test cannot read %s.", VELK_DOCS);
    const QRegularExpression block(QStringLiteral("```text\n\\$ velk ([^\n]*)\n(.*?)\n```"),
                                   QRegularExpression::DotMatchesEverythingOption);
    QVector<Block> blocks;
    auto matches = block.globalMatch(QString::fromUtf8(page.readAll()));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        blocks.append({match.captured(1), match.captured(2)});
    }
    return blocks;
}

} // namespace

class TestVelkDocs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePageShowsWhatVelkWrites_data();
    void thePageShowsWhatVelkWrites();
    void everyCommandIsOnThePage();
};

void TestVelkDocs::thePageShowsWhatVelkWrites_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("output");

    const QVector<Block> blocks = commandBlocks();
    for (const Block& block : blocks)
        QTest::newRow(qPrintable(block.command)) << block.command << block.output;
}

void TestVelkDocs::thePageShowsWhatVelkWrites()
{
    QFETCH(QString, command);
    QFETCH(QString, output);
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(command.split(QLatin1Char(' '))), 0);

    // An ellipsis replaces the list of exit statuses, which the page has once.
    QString written = velk.output().trimmed();
    if (output.endsWith(QStringLiteral("\n…")))
        written = written.left(written.indexOf(QStringLiteral("Exit status:"))) + QStringLiteral("…");
    QCOMPARE(written, output);
}

void TestVelkDocs::everyCommandIsOnThePage()
{
    VelkRun velk(velkProgram);
    QCOMPARE(velk.run({QStringLiteral("--help")}), 0);
    QStringList documented;
    const QVector<Block> blocks = commandBlocks();
    for (const Block& block : blocks)
        documented << block.command;

    const QString list =
        velk.output().section(QStringLiteral("Subcommands:\n"), 1).section(QStringLiteral("\n\n"), 0, 0);
    QStringList missing;
    const QStringList lines = list.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QString command = line.trimmed().section(QLatin1Char(' '), 0, 0);
        if (command != QStringLiteral("robots") && !documented.contains(command + QStringLiteral(" --help")))
            missing << command;
    }

    QVERIFY2(lines.size() >= 4, qPrintable(list));
    QCOMPARE(missing, QStringList());
}

QTEST_GUILESS_MAIN(TestVelkDocs)

#include "tst_velk_docs.moc"
