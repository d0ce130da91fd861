// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordfile/src/publish_file.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

using namespace Velk;

namespace {

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test cannot write its file.");
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

} // namespace

class TestPublishFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aFileGetsItsName();
    void aNameThatIsTakenIsRefusedInTheSameStep();
    void aNameThatIsTakenIsReplacedWhenAskedFor();
    void anotherFileSystemNeedsACopy_data();
    void anotherFileSystemNeedsACopy();
    void aFileWithoutANameNeedsACopy();
    void aFailureHasTheReasonOfTheSystem();
    void aCopyIsCompleteAndHasTheGivenPermissions();
    void aCopyThatCannotBePublishedLeavesNoFile_data();
    void aCopyThatCannotBePublishedLeavesNoFile();
    void aPipeHasNothingToSync();

private:
    QStringList namesInDirectory() const
    {
        return QDir(m_directory->path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }

    QScopedPointer<QTemporaryDir> m_directory;
    QString m_from;
    QString m_to;
};

void TestPublishFile::init()
{
    m_directory.reset(new QTemporaryDir);
    m_from = m_directory->filePath(QStringLiteral("from"));
    m_to = m_directory->filePath(QStringLiteral("to"));
    writeFile(m_from, "new");
}

void TestPublishFile::aFileGetsItsName()
{
    QCOMPARE(publishFile(m_from, m_to, false).outcome, PublishResult::Published);

    QCOMPARE(contentOf(m_to), QByteArray("new"));
    QVERIFY(!QFile::exists(m_from));
}

void TestPublishFile::aNameThatIsTakenIsRefusedInTheSameStep()
{
    writeFile(m_to, "precious");

    QCOMPARE(publishFile(m_from, m_to, false).outcome, PublishResult::Exists);

    QCOMPARE(contentOf(m_to), QByteArray("precious"));
    QCOMPARE(contentOf(m_from), QByteArray("new"));
}

void TestPublishFile::aNameThatIsTakenIsReplacedWhenAskedFor()
{
    writeFile(m_to, "old");

    QCOMPARE(publishFile(m_from, m_to, true).outcome, PublishResult::Published);

    QCOMPARE(contentOf(m_to), QByteArray("new"));
    QVERIFY(!QFile::exists(m_from));
}

void TestPublishFile::anotherFileSystemNeedsACopy_data()
{
    QTest::addColumn<bool>("replace");
    QTest::newRow("an existing file is kept") << false;
    QTest::newRow("an existing file is replaced") << true;
}

void TestPublishFile::anotherFileSystemNeedsACopy()
{
    QFETCH(bool, replace);
    QTemporaryDir other(QStringLiteral("/dev/shm/publish-XXXXXX"));

    QCOMPARE(publishFile(m_from, other.filePath(QStringLiteral("to")), replace).outcome, PublishResult::MustBeCopied);

    QCOMPARE(contentOf(m_from), QByteArray("new"));
}

void TestPublishFile::aFileWithoutANameNeedsACopy()
{
    QVERIFY(QFile::remove(m_from));

    QCOMPARE(publishFile(m_from, m_to, false).outcome, PublishResult::MustBeCopied);
}

void TestPublishFile::aFailureHasTheReasonOfTheSystem()
{
    const PublishResult result = publishFile(m_from, m_directory->filePath(QStringLiteral("nowhere/to")), false);

    QCOMPARE(result.outcome, PublishResult::Failed);
    QCOMPARE(result.reason, QString::fromLocal8Bit(std::strerror(ENOENT)));
    QCOMPARE(contentOf(m_from), QByteArray("new"));
}

void TestPublishFile::aCopyIsCompleteAndHasTheGivenPermissions()
{
    QFile from(m_from);
    QVERIFY(from.open(QIODevice::ReadOnly));

    QCOMPARE(publishCopy(from, 2, m_to, 0604, false).outcome, PublishResult::Published);

    QCOMPARE(contentOf(m_to), QByteArray("ne"));
    struct stat status;
    QCOMPARE(::stat(QFile::encodeName(m_to).constData(), &status), 0);
    QCOMPARE(int(status.st_mode & 0777), 0604);
    QCOMPARE(namesInDirectory(), (QStringList{"from", "to"}));
}

void TestPublishFile::aCopyThatCannotBePublishedLeavesNoFile_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QString>("to");
    QTest::addColumn<int>("outcome");
    QTest::newRow("the name is taken") << qint64(3) << "taken" << int(PublishResult::Exists);
    QTest::newRow("the source ends early") << qint64(4) << "to" << int(PublishResult::Failed);
    QTest::newRow("no directory") << qint64(3) << "nowhere/to" << int(PublishResult::Failed);
}

void TestPublishFile::aCopyThatCannotBePublishedLeavesNoFile()
{
    QFETCH(qint64, size);
    QFETCH(QString, to);
    QFETCH(int, outcome);
    writeFile(m_directory->filePath("taken"), "precious");
    QFile from(m_from);
    QVERIFY(from.open(QIODevice::ReadOnly));

    const PublishResult result = publishCopy(from, size, m_directory->filePath(to), 0600, false);

    QCOMPARE(int(result.outcome), outcome);
    QCOMPARE(result.reason.isEmpty(), outcome != PublishResult::Failed);
    QCOMPARE(namesInDirectory(), (QStringList{"from", "taken"}));
    QCOMPARE(contentOf(m_directory->filePath("taken")), QByteArray("precious"));
}

void TestPublishFile::aPipeHasNothingToSync()
{
    int ends[2];
    QCOMPARE(::pipe(ends), 0);
    QFile pipe;
    QVERIFY(pipe.open(ends[1], QIODevice::WriteOnly, QFileDevice::AutoCloseHandle));

    QVERIFY(syncToDisk(pipe));

    ::close(ends[0]);
}

QTEST_APPLESS_MAIN(TestPublishFile)

#include "tst_publish_file.moc"
