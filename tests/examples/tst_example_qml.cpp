// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <support/english_environment.h>

#include <QProcess>
#include <QtTest>

class TestExampleQml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheCatalogueAndValuesInItsViews();
};

void TestExampleQml::showsTheCatalogueAndValuesInItsViews()
{
    QProcess example;
    QProcessEnvironment environment = Velk::englishEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    example.setProcessEnvironment(environment);

    example.start(QStringLiteral(EXAMPLE), {QStringLiteral("--until-values")});
    QVERIFY2(example.waitForFinished(120000), qPrintable(example.errorString()));

    const QByteArray messages = example.readAllStandardError();
    const QStringList shown =
        QString::fromUtf8(example.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QVERIFY2(example.exitStatus() == QProcess::NormalExit && example.exitCode() == 0, messages.constData());
    QVERIFY2(!messages.contains("Main.qml"), messages.constData()); // what QML has to complain about
    QCOMPARE(shown.size(), 3);
    QCOMPARE(shown.at(0), QStringLiteral("Arm/Elbow/Command (DATA)"));
    QCOMPARE(shown.at(1), QStringLiteral("Battery/Charge"));
    bool isNumber = false;
    shown.at(2).toDouble(&isNumber);
    QVERIFY2(isNumber, qPrintable(shown.at(2)));
}

QTEST_GUILESS_MAIN(TestExampleQml)

#include "tst_example_qml.moc"
