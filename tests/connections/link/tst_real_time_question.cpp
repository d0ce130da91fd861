// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/real_time_question.h>

#include "support/patient_try.h"

#include <QPointer>
#include <QSignalSpy>
#include <QStringList>
#include <QTest>

#include <memory>

using namespace Velk;

class Asker : public QObject
{
    Q_OBJECT

public:
    QStringList answers;

public Q_SLOTS:
    void gotAnswer(bool isSupported) { answers << QString(isSupported ? "yes" : "no"); }
};

class TestRealTimeQuestion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void askersBeforeAndAfterTheAnswerGetTheSame();
    void theConnectionIsAskedOnce();
    void theAnswerComesFromTheEventLoop();
    void theFirstAnswerCounts();
    void anAskerThatIsGoneIsNotAnswered();
    void theAnswerIsReportedOnceWhenItIsQueuedToAnAsker();
    void aSlotOfTheReportMayDeleteTheQuestion();
    void aQuestionOfNobodyIsIgnored();
};

void TestRealTimeQuestion::askersBeforeAndAfterTheAnswerGetTheSame()
{
    RealTimeQuestion question;
    Asker early;
    Asker late;
    question.ask(&early, "gotAnswer");

    question.answer(true);
    question.ask(&late, "gotAnswer");

    QTRY_COMPARE(early.answers, QStringList("yes"));
    QTRY_COMPARE(late.answers, QStringList("yes"));
}

void TestRealTimeQuestion::theConnectionIsAskedOnce()
{
    RealTimeQuestion question;
    QSignalSpy asked(&question, &RealTimeQuestion::asked);
    Asker asker;

    question.ask(&asker, "gotAnswer");
    question.ask(&asker, "gotAnswer");
    QCOMPARE(asked.count(), 1);
    question.answer(true);
    question.ask(&asker, "gotAnswer");

    QCOMPARE(asked.count(), 1);
    QTRY_COMPARE(asker.answers, QStringList({"yes", "yes", "yes"}));
}

void TestRealTimeQuestion::theAnswerComesFromTheEventLoop()
{
    RealTimeQuestion question;
    QSignalSpy answered(&question, &RealTimeQuestion::answered);
    Asker asker;
    question.answer(false);

    question.ask(&asker, "gotAnswer");

    QCOMPARE(asker.answers, QStringList());
    QCOMPARE(answered.count(), 1);
    QTRY_COMPARE(asker.answers, QStringList("no"));
}

void TestRealTimeQuestion::theFirstAnswerCounts()
{
    RealTimeQuestion question;
    QVERIFY(!question.answer());

    question.answer(false);
    question.answer(true);

    QCOMPARE(question.answer(), std::optional<bool>(false));
}

void TestRealTimeQuestion::anAskerThatIsGoneIsNotAnswered()
{
    RealTimeQuestion question;
    auto asker = std::make_unique<Asker>();
    question.ask(asker.get(), "gotAnswer");

    QSignalSpy answered(&question, &RealTimeQuestion::answered);
    asker.reset();
    question.answer(true);
    QCoreApplication::processEvents();

    QCOMPARE(question.answer(), std::optional<bool>(true));
    QCOMPARE(answered.count(), 0);
}

void TestRealTimeQuestion::theAnswerIsReportedOnceWhenItIsQueuedToAnAsker()
{
    RealTimeQuestion question;
    QSignalSpy answered(&question, &RealTimeQuestion::answered);
    Asker asker;
    question.ask(&asker, "gotAnswer");
    question.ask(&asker, "gotAnswer");

    question.answer(true);
    QCOMPARE(answered.count(), 1);
    question.ask(&asker, "gotAnswer");

    QCOMPARE(answered.count(), 1);
    QTRY_COMPARE(asker.answers, QStringList({"yes", "yes", "yes"}));
}

void TestRealTimeQuestion::aSlotOfTheReportMayDeleteTheQuestion()
{
    const QPointer<RealTimeQuestion> question(new RealTimeQuestion);
    connect(question, &RealTimeQuestion::answered, this, [question] { delete question; });
    Asker early;
    Asker late;
    question->ask(&early, "gotAnswer");
    question->ask(&late, "gotAnswer");

    question->answer(true);

    QVERIFY(!question);
    QTRY_COMPARE(early.answers, QStringList("yes"));
    QTRY_COMPARE(late.answers, QStringList("yes"));
}

void TestRealTimeQuestion::aQuestionOfNobodyIsIgnored()
{
    RealTimeQuestion question;
    QSignalSpy asked(&question, &RealTimeQuestion::asked);
    Asker asker;

    question.ask(nullptr, "gotAnswer");
    question.ask(&asker, nullptr);

    QCOMPARE(asked.count(), 0);
}

QTEST_GUILESS_MAIN(TestRealTimeQuestion)
#include "tst_real_time_question.moc"
