// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <apps/velk/src/watch_screen.h>

#include <QTest>

using namespace Velk;

namespace {

QVector<WatchRow> rows(int count)
{
    QVector<WatchRow> result;
    for (int i = 1; i <= count; ++i)
        result.append({QStringLiteral("Key/%1").arg(i), QStringLiteral("DATA"), QStringLiteral("12:00:00.000"),
                       QString::number(i * 1.5)});
    return result;
}

} // namespace

class TestWatchScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTableHasAHeaderAndALinePerKey();
    void theTableIsWrittenOverTheOneBefore();
    void rowsThatDoNotFitAreCounted();
    void longLinesAreCut();
    void whatIsErasedIsNotWrittenOverAgain();
};

void TestWatchScreen::theTableHasAHeaderAndALinePerKey()
{
    WatchScreen screen;

    QCOMPARE(screen.paint(rows(2), {24, 80}), QByteArray("KEY    NATURE   TIME          VALUE\x1b[K\n"
                                                         "Key/1  DATA     12:00:00.000  1.5\x1b[K\n"
                                                         "Key/2  DATA     12:00:00.000  3\x1b[K\n"
                                                         "\x1b[J"));
}

void TestWatchScreen::theTableIsWrittenOverTheOneBefore()
{
    WatchScreen screen;
    screen.paint(rows(2), {24, 80});

    QVERIFY(screen.paint(rows(2), {24, 80}).startsWith("\x1b[3A\rKEY"));
}

void TestWatchScreen::rowsThatDoNotFitAreCounted()
{
    WatchScreen screen;
    const QByteArray text = screen.paint(rows(20), {10, 80});

    QCOMPARE(text.count('\n'), 9);
    QVERIFY(text.contains("Key/7 "));
    QVERIFY(!text.contains("Key/8 "));
    QVERIFY(text.contains("and 13 more"));
    QVERIFY(screen.paint(rows(20), {10, 80}).startsWith("\x1b[9A\r"));
}

void TestWatchScreen::longLinesAreCut()
{
    WatchScreen screen;

    QCOMPARE(screen.paint(rows(1), {24, 12}), QByteArray("KEY    NATU\x1b[K\n"
                                                         "Key/1  DATA\x1b[K\n"
                                                         "\x1b[J"));
}

void TestWatchScreen::whatIsErasedIsNotWrittenOverAgain()
{
    WatchScreen screen;
    screen.paint(rows(2), {24, 80});

    QCOMPARE(screen.erase(), QByteArray("\x1b[3A\r\x1b[J"));
    QCOMPARE(screen.erase(), QByteArray());
    QVERIFY(screen.paint(rows(2), {24, 80}).startsWith("KEY"));
}

QTEST_APPLESS_MAIN(TestWatchScreen)

#include "tst_watch_screen.moc"
