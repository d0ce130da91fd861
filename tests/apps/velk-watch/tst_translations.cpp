// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/translations.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

#include <algorithm>

using namespace Velk;

namespace {

struct Message
{
    QString source;
    QStringList translations; // one for each plural form
    bool isFinished = true;
};

QString fileOf(const QString& language)
{
    return QStringLiteral(TRANSLATIONS_FOLDER "/velk-watch_%1.ts").arg(language);
}

QList<Message> readMessages(const QString& fileName)
{
    QFile file(fileName);
    QList<Message> messages;
    if (!file.open(QIODevice::ReadOnly))
        return messages;
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == QLatin1String("message")) {
            messages.append(Message());
        } else if (reader.name() == QLatin1String("source")) {
            messages.last().source = reader.readElementText();
        } else if (reader.name() == QLatin1String("translation")) {
            messages.last().isFinished = !reader.attributes().hasAttribute(QLatin1String("type"));
            QString text;
            while (
                !(reader.readNext() == QXmlStreamReader::EndElement && reader.name() == QLatin1String("translation"))) {
                if (reader.tokenType() == QXmlStreamReader::StartElement)
                    messages.last().translations << reader.readElementText();
                else
                    text += reader.text();
            }
            if (messages.last().translations.isEmpty())
                messages.last().translations << text;
        }
    }
    return messages;
}

// "%1 %L2 %n": the places of arguments in the text, sorted.
QString placesIn(const QString& text)
{
    static const QRegularExpression place(QStringLiteral("%L?(\\d+|n)"));
    QStringList places;
    for (auto match = place.globalMatch(text); match.hasNext();)
        places << match.next().captured();
    places.sort();
    return places.join(QLatin1Char(' '));
}

// Every folder of the project whose texts the window may show. The item models have translations of their own.
QStringList foldersOfTheProgram()
{
    const QStringList others{QStringLiteral("apps"),     QStringLiteral("benchmarks"), QStringLiteral("build"),
                             QStringLiteral("examples"), QStringLiteral("itemmodels"), QStringLiteral("tests")};
    QStringList folders{QStringLiteral("apps/velk-watch/src")};
    const QDir project(QStringLiteral(PROJECT_FOLDER));
    for (const QString& folder : project.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (!others.contains(folder) && project.exists(folder + QStringLiteral("/CMakeLists.txt")))
            folders << folder;
    }
    return folders;
}

} // namespace

class TestTranslations : public QObject
{
    Q_OBJECT

private:
    static void languages()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("German") << QStringLiteral("de");
        QTest::newRow("French") << QStringLiteral("fr");
        QTest::newRow("English plurals") << QStringLiteral("en");
    }

private Q_SLOTS:
    void everyTextIsTranslated_data() { languages(); }

    void everyTextIsTranslated()
    {
        QFETCH(QString, language);
        const QList<Message> messages = readMessages(fileOf(language));
        QVERIFY(!messages.isEmpty());

        QStringList open;
        for (const Message& message : messages) {
            const bool isEmpty = std::any_of(message.translations.cbegin(), message.translations.cend(),
                                             [](const QString& text) { return text.isEmpty(); });
            if (!message.isFinished || isEmpty)
                open << message.source;
        }

        QCOMPARE(open.join(QLatin1Char('\n')), QString());
    }

    void everyTranslationHasThePlacesOfItsSource_data() { languages(); }

    void everyTranslationHasThePlacesOfItsSource()
    {
        QFETCH(QString, language);
        QStringList wrong;
        for (const Message& message : readMessages(fileOf(language))) {
            for (const QString& translation : message.translations) {
                if (placesIn(translation) != placesIn(message.source))
                    wrong << translation;
            }
        }

        QCOMPARE(wrong.join(QLatin1Char('\n')), QString());
    }

    void theFilesHaveTheTextsOfTheSources_data() { languages(); }

    void theFilesHaveTheTextsOfTheSources()
    {
        QFETCH(QString, language);
        QTemporaryDir folder;
        const QString copy = folder.filePath(QStringLiteral("copy.ts"));
        QVERIFY(QFile::copy(fileOf(language), copy));
        QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner);

        QStringList arguments{QStringLiteral("-silent"), QStringLiteral("-no-obsolete"), QStringLiteral("-locations"),
                              QStringLiteral("none"),    QStringLiteral("-I"),           QStringLiteral(".")};
        arguments << foldersOfTheProgram() << QStringLiteral("-ts") << copy;
        if (language == QStringLiteral("en"))
            arguments << QStringLiteral("-pluralonly");
        QProcess lupdate;
        lupdate.setWorkingDirectory(QStringLiteral(PROJECT_FOLDER));
        lupdate.start(QStringLiteral(LUPDATE), arguments);
        QVERIFY2(lupdate.waitForStarted(), qPrintable(lupdate.errorString()));
        QVERIFY(lupdate.waitForFinished(120000));
        QCOMPARE(lupdate.exitCode(), 0);

        QStringList missing;
        const QList<Message> messages = readMessages(copy);
        for (const Message& message : messages) {
            if (!message.isFinished)
                missing << message.source;
        }
        QCOMPARE(missing.join(QLatin1Char('\n')), QString());
        QCOMPARE(messages.size(), readMessages(fileOf(language)).size()); // fewer: a text is in no source any more
    }

    void theLanguageOfTheLocaleIsLoaded_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("quit");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("header");
        const QString value = QStringLiteral("Value");
        const QString english = QStringLiteral("Not connected to a robot");
        QTest::newRow("Austria") << QLocale(QLocale::German, QLocale::Austria) << QStringLiteral("&Beenden")
                                 << QStringLiteral("Mit keinem Roboter verbunden") << QStringLiteral("2 Zeilen")
                                 << QStringLiteral("Wert");
        QTest::newRow("France") << QLocale(QLocale::French) << QStringLiteral("&Quitter")
                                << QStringLiteral("Aucun robot connecté") << QStringLiteral("2 lignes")
                                << QStringLiteral("Valeur");
        QTest::newRow("Britain") << QLocale(QLocale::English) << QStringLiteral("&Quit") << english
                                 << QStringLiteral("2 rows") << value;
        QTest::newRow("a language without a translation")
            << QLocale(QLocale::Finnish) << QStringLiteral("&Quit") << english << QStringLiteral("2 rows") << value;
    }

    void theLanguageOfTheLocaleIsLoaded()
    {
        QFETCH(QLocale, locale);
        const auto translated = [](const char* context, const char* text) {
            return QCoreApplication::translate(context, text);
        };
        int argc = 1;
        char name[] = "test";
        char* argv[] = {name, nullptr};
        QCoreApplication application(argc, argv);
        installTranslations(&application, locale);

        QTEST(translated("Velk::WindowMenus", "&Quit"), "quit");
        QTEST(translated("Velk::DisplayedMemoryKeyListModel", "Not connected to a robot"), "error");
        QTEST(translated("Velk::WatchModel", "Value"), "header");
        QTEST(QCoreApplication::translate("Velk::RecordingControl", "%L1 row(s)", nullptr, 2).arg(2), "rows");
    }
};

QTEST_APPLESS_MAIN(TestTranslations)
#include "tst_translations.moc"
