// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/item_model_translator.h>

#include "model_text.h"

#include <itemmodels/watch_model.h>

#include <QFile>
#include <QTranslator>
#include <QXmlStreamReader>
#include <QtTest>

using namespace Velk;

namespace {

QString valueHeader()
{
    return WatchModel().headerData(WatchModel::ValueColumn, Qt::Horizontal).toString();
}

} // namespace

class TestItemModelTranslator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void translates_data();
    void translates();
    void hasNothingForOtherLanguages();
    void isComplete_data();
    void isComplete();
};

void TestItemModelTranslator::translates_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("header");

    QTest::newRow("German") << QLocale(QLocale::German, QLocale::Switzerland) << text("Wert");
    QTest::newRow("French") << QLocale(QLocale::French, QLocale::Canada) << text("Valeur");
}

void TestItemModelTranslator::translates()
{
    QFETCH(QLocale, locale);
    const std::unique_ptr<QTranslator> translator = createItemModelTranslator(locale);
    QVERIFY(translator);

    QVERIFY(QCoreApplication::installTranslator(translator.get()));
    QTEST(valueHeader(), "header");

    QCoreApplication::removeTranslator(translator.get());
    QCOMPARE(valueHeader(), text("Value"));
}

void TestItemModelTranslator::hasNothingForOtherLanguages()
{
    QVERIFY(!createItemModelTranslator(QLocale(QLocale::English)));
    QVERIFY(!createItemModelTranslator(QLocale(QLocale::Japanese)));
}

void TestItemModelTranslator::isComplete_data()
{
    QTest::addColumn<QString>("file");

    QTest::newRow("German") << QStringLiteral(TRANSLATIONS "/itemmodels_de.ts");
    QTest::newRow("French") << QStringLiteral(TRANSLATIONS "/itemmodels_fr.ts");
}

void TestItemModelTranslator::isComplete()
{
    QFETCH(QString, file);
    QFile source(file);
    QVERIFY(source.open(QIODevice::ReadOnly));
    QXmlStreamReader reader(&source);

    int translations = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement() || reader.name() != QLatin1String("translation"))
            continue;
        const bool isFinished = reader.attributes().value(QLatin1String("type")).isEmpty();
        const QString translated = reader.readElementText();
        QVERIFY2(isFinished && !translated.isEmpty(), qPrintable(translated));
        ++translations;
    }
    QVERIFY(!reader.hasError());
    QVERIFY(translations > 50);
}

QTEST_GUILESS_MAIN(TestItemModelTranslator)

#include "tst_item_model_translator.moc"
