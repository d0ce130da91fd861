// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/links/robot_links.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Velk;

class TestFactoryPlugins : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void theSchemesOfPluginsComeAfterTheBuiltOnes();
    void aPluginOpensItsUrls();
    void theErrorOfAPluginIsReported();
    void aBuiltSchemeIsNotTakenByAPlugin();
    void aPluginThatCannotBeLoadedIsNamedWhenASchemeIsUnknown();
    void eachPluginThatCannotBeLoadedIsNamedWithTheReason_data();
    void eachPluginThatCannotBeLoadedIsNamedWithTheReason();
    void aPluginOfAnotherProgramIsNoFailure();
    void aRobotOfAPluginThatCannotWriteIsNotWrittenTo();

private:
    QTemporaryDir m_brokenFolder;
};

// The folders are read once in a program: this program has a good one, one that is not there, one with a
// file that is no library, and one with libraries that are no connection of this version.
void TestFactoryPlugins::initTestCase()
{
    QFile broken(m_brokenFolder.filePath("broken.so"));
    QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("no library") > 0);
    QFile other(m_brokenFolder.filePath("README.txt"));
    QVERIFY(other.open(QIODevice::WriteOnly));
    const QStringList folders{QStringLiteral(PLUGINS), QStringLiteral("/nowhere"), m_brokenFolder.path(),
                              QStringLiteral(WRONG_PLUGINS)};
    qputenv("MEMORYKEYMODEL_CONNECTIONS", folders.join(QDir::listSeparator()).toLocal8Bit());
}

void TestFactoryPlugins::theSchemesOfPluginsComeAfterTheBuiltOnes()
{
    QStringList names;
    for (const UrlScheme& scheme : RobotLinks::schemes())
        names << scheme.name;

    QCOMPARE(names.first(), QStringLiteral("sim"));
    QCOMPARE(names.mid(names.size() - 2), QStringList({"plugged", "sim"}));
}

void TestFactoryPlugins::aPluginOpensItsUrls()
{
    QString error;

    const std::unique_ptr<RobotLink> link = RobotLinks::createLink("PLUGGED:", &error);

    QVERIFY2(link, qPrintable(error));
    QCOMPARE(link->state(), RobotLink::Disconnected);
    link->open();
    QTRY_VERIFY_WITH_TIMEOUT(link->isConnected(), 60000);
}

void TestFactoryPlugins::theErrorOfAPluginIsReported()
{
    QString error;

    QVERIFY(!RobotLinks::createLink("plugged:other", &error));

    QCOMPARE(error, QStringLiteral("no such plugged robot"));
}

void TestFactoryPlugins::aBuiltSchemeIsNotTakenByAPlugin()
{
    QString error;

    QVERIFY(!RobotLinks::createLink("sim:plugged", &error));

    QVERIFY2(error.contains("sim:plugged") && !error.contains("no such plugged robot"), qPrintable(error));
}

void TestFactoryPlugins::aPluginThatCannotBeLoadedIsNamedWhenASchemeIsUnknown()
{
    QString error;

    QVERIFY(!RobotLinks::createLink("unknown:", &error));

    QVERIFY2(error.contains("“unknown”") && error.contains("plugged:"), qPrintable(error));
    QVERIFY2(error.contains(m_brokenFolder.filePath("broken.so")), qPrintable(error));
    QVERIFY2(!error.contains("README.txt"), qPrintable(error));
}

void TestFactoryPlugins::eachPluginThatCannotBeLoadedIsNamedWithTheReason_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    QTest::newRow("not a library") << m_brokenFolder.filePath("broken.so") << QString();
    QTest::newRow("a library that is no plugin") << QStringLiteral(WRONG_PLUGINS "/libno_plugin.so") << QString();
    QTest::newRow("an older interface") << QStringLiteral(WRONG_PLUGINS "/libolder_connection.so")
                                        << QStringLiteral("MemoryKeyModel.ConnectionFactory/0.9");
    QTest::newRow("no factory") << QStringLiteral(WRONG_PLUGINS "/libno_factory.so")
                                << QStringLiteral("It is no connection of a robot.");
}

void TestFactoryPlugins::eachPluginThatCannotBeLoadedIsNamedWithTheReason()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);

    const QStringList failures = RobotLinks::pluginFailures().filter(file);

    QCOMPARE(failures.size(), 1);
    const QString stated = failures.first().section(file + QStringLiteral(" cannot be loaded: "), 1);
    QVERIFY2(!stated.trimmed().isEmpty(), qPrintable(failures.first()));
    QVERIFY2(stated.contains(reason), qPrintable(failures.first()));
}

void TestFactoryPlugins::aPluginOfAnotherProgramIsNoFailure()
{
    QVERIFY(QFile::exists(QStringLiteral(WRONG_PLUGINS "/libother_program.so")));

    QCOMPARE(RobotLinks::pluginFailures().filter("other_program"), QStringList());
}

void TestFactoryPlugins::aRobotOfAPluginThatCannotWriteIsNotWrittenTo()
{
    QString error;

    QVERIFY(!RobotLinks::createWriter("plugged:", &error));

    QVERIFY2(!error.isEmpty(), qPrintable(error));
}

QTEST_GUILESS_MAIN(TestFactoryPlugins)
#include "tst_factory_plugins.moc"
