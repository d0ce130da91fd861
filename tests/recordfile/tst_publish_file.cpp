#include <recordfile/src/publish_file.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>

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
    void aFailureHasItsErrorNumber();

private:
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
    QTest::newRow("keeping what exists") << false;
    QTest::newRow("replacing it") << true;
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

void TestPublishFile::aFailureHasItsErrorNumber()
{
    const PublishResult result = publishFile(m_from, m_directory->filePath(QStringLiteral("nowhere/to")), false);

    QCOMPARE(result.outcome, PublishResult::Failed);
    QCOMPARE(result.errorNumber, ENOENT);
    QCOMPARE(contentOf(m_from), QByteArray("new"));
}

QTEST_APPLESS_MAIN(TestPublishFile)

#include "tst_publish_file.moc"
