// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/list_fetch.h>

#include <QTest>

#include <optional>
#include <utility>

using namespace Velk;

namespace {

/// "2 finished: A B": the state and the results of a future.
QString text(const QFuture<QStringList>& future)
{
    QString state = QString::number(future.resultCount()) + (future.isFinished() ? " finished" : "");
    if (future.isCanceled())
        state += " cancelled";
    return future.resultCount() > 0 ? state + ": " + future.result().join(' ') : state;
}

} // namespace

class TestListFetch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFetchIsStartedAndFinishesWithItsNames();
    void onlyTheFirstFinishCounts();
    void aFetchThatIsDroppedFinishesEmpty();
    void aFetchThatIsMovedFinishesOnce();
    void aFetchThatIsReplacedFinishesEmpty();
    void aFinishedListIsThereAtOnce();
};

void TestListFetch::aFetchIsStartedAndFinishesWithItsNames()
{
    ListFetch fetch;
    const QFuture<QStringList> future = fetch.future();
    QVERIFY(future.isStarted());
    QCOMPARE(text(future), QStringLiteral("0"));

    fetch.finish({"A", "B"});

    QCOMPARE(text(future), QStringLiteral("1 finished: A B"));
}

void TestListFetch::onlyTheFirstFinishCounts()
{
    ListFetch fetch;
    fetch.finish({"A"});

    fetch.finish({"B"});

    QCOMPARE(text(fetch.future()), QStringLiteral("1 finished: A"));
}

void TestListFetch::aFetchThatIsDroppedFinishesEmpty()
{
    std::optional<ListFetch> fetch(std::in_place);
    const QFuture<QStringList> future = fetch->future();

    fetch.reset();

    QCOMPARE(text(future), QStringLiteral("1 finished: "));
}

void TestListFetch::aFetchThatIsMovedFinishesOnce()
{
    std::optional<ListFetch> fetch(std::in_place);
    const QFuture<QStringList> future = fetch->future();
    ListFetch moved(std::move(*fetch));
    fetch.reset();
    QCOMPARE(text(future), QStringLiteral("0"));

    moved.finish({"A"});

    QCOMPARE(text(future), QStringLiteral("1 finished: A"));
}

void TestListFetch::aFetchThatIsReplacedFinishesEmpty()
{
    ListFetch fetch;
    const QFuture<QStringList> former = fetch.future();

    fetch = ListFetch();

    QCOMPARE(text(former), QStringLiteral("1 finished: "));
    QCOMPARE(text(fetch.future()), QStringLiteral("0"));
}

void TestListFetch::aFinishedListIsThereAtOnce()
{
    QCOMPARE(text(ListFetch::finished()), QStringLiteral("1 finished: "));
    QCOMPARE(text(ListFetch::finished({"A"})), QStringLiteral("1 finished: A"));
}

QTEST_APPLESS_MAIN(TestListFetch)
#include "tst_list_fetch.moc"
