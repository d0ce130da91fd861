// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/network/network_secret.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using Velk::NetworkCredentials;
using Velk::NetworkSecret;

namespace {

const char* const fallback = "VELK_TEST_FALLBACK";

// "user/password", or the error.
QString credentials(const NetworkSecret& secret)
{
    QString error;
    const std::optional<NetworkCredentials> found = secret.credentials(fallback, &error);
    return found ? QString::fromLatin1(found->user + '/' + found->password.toPercentEncoding()) : error;
}

NetworkSecret inFile(const QString& path)
{
    NetworkSecret secret;
    secret.user = QStringLiteral("viewer");
    secret.passwordFile = path;
    return secret;
}

NetworkSecret inVariable(const QString& name)
{
    NetworkSecret secret;
    secret.passwordVariable = name;
    return secret;
}

} // namespace

class TestNetworkSecret : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qunsetenv(fallback);
        qunsetenv("VELK_TEST_SECRET");
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        m_path = m_folder->filePath(QStringLiteral("password"));
    }

    void withoutASecretTheFallbackVariableIsUsed()
    {
        QCOMPARE(credentials(NetworkSecret()), QString("/"));
        qputenv(fallback, "usual");
        QCOMPARE(credentials(NetworkSecret()), QString("/usual"));
    }

    void aPasswordOfItsOwnComesFirst()
    {
        qputenv(fallback, "usual");
        NetworkSecret secret;
        secret.password = QByteArray("own");
        QCOMPARE(credentials(secret), QString("/own"));
        secret.password = QByteArray("");
        QCOMPARE(credentials(secret), QString("/"));
    }

    void aFileIsReadEachTimeWithoutItsLineEnd()
    {
        write("another one");
        QCOMPARE(credentials(inFile(m_path)), QString("viewer/another%20one"));
        write("secret\r\n");
        QCOMPARE(credentials(inFile(m_path)), QString("viewer/secret"));
        write(" se\ncret \n\n");
        QCOMPARE(credentials(inFile(m_path)), QString("viewer/%20se%0Acret%20%0A"));
    }

    void aFileThatCannotBeUsedIsAnError()
    {
        QCOMPARE(credentials(inFile(m_path)), QString("The password file %1 does not exist or is no regular file: "
                                                      "correct the path in the URL.")
                                                  .arg(m_path));
        QCOMPARE(credentials(inFile(m_folder->path())),
                 QString("The password file %1 does not exist or is no regular file: correct the path in the URL.")
                     .arg(m_folder->path()));
        write("\n");
        QCOMPARE(credentials(inFile(m_path)),
                 QString("The password file %1 is empty: it must hold the password.").arg(m_path));
        write(QByteArray(4097, 'x'));
        QCOMPARE(credentials(inFile(m_path)),
                 QString("The password file %1 is longer than 4096 bytes: it must hold the password and nothing else.")
                     .arg(m_path));
    }

    void aNamedVariableMustBeSet()
    {
        qputenv(fallback, "usual");
        QCOMPARE(credentials(inVariable("VELK_TEST_SECRET")),
                 QString("The environment variable VELK_TEST_SECRET, which is to hold the password, is not set."));
        qputenv("VELK_TEST_SECRET", "named");
        QCOMPARE(credentials(inVariable("VELK_TEST_SECRET")), QString("/named"));
    }

    void oneSourceOfThePasswordIsAllowed()
    {
        QString error;
        NetworkSecret secret;
        QVERIFY(secret.check(&error));
        secret.passwordFile = QStringLiteral("/run/secret");
        QVERIFY(secret.check(&error));
        QCOMPARE(error, QString());
        secret.password = QByteArray("");
        QVERIFY(!secret.check(&error));
        QVERIFY2(error.startsWith("The URL says in more than one way what the password is"), qPrintable(error));
    }

    void variablesHaveNamesOfLettersDigitsAndUnderscores_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isName");
        QTest::newRow("letters") << "SECRET" << true;
        QTest::newRow("all that is allowed") << "_a1" << true;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("begins with a digit") << "1A" << false;
        QTest::newRow("dash") << "A-B" << false;
        QTest::newRow("equals sign") << "A=" << false;
        QTest::newRow("line feed at the end") << "A\n" << false;
    }
    void variablesHaveNamesOfLettersDigitsAndUnderscores()
    {
        QFETCH(QString, text);
        QFETCH(bool, isName);

        QCOMPARE(NetworkSecret::isVariableName(text), isName);
    }

private:
    void write(const QByteArray& content)
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

QTEST_GUILESS_MAIN(TestNetworkSecret)
#include "tst_network_secret.moc"
