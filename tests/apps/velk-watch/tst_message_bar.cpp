// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/message_bar.h>

#include <QLabel>
#include <QTest>
#include <QToolButton>

using namespace Velk;

namespace {

void show(MessageBar& bar, int number)
{
    bar.showMessage(QStringLiteral("Title %1").arg(number), QStringLiteral("Message %1").arg(number));
}

QString shownText(const MessageBar& bar, const char* label)
{
    return bar.findChild<QLabel*>(QLatin1String(label))->text();
}

} // namespace

class TestMessageBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBarIsHiddenUntilThereIsAMessage()
    {
        QWidget window;
        MessageBar bar(&window);
        window.show();
        QVERIFY(!bar.isVisible());

        show(bar, 1);

        QVERIFY(bar.isVisible());
        QCOMPARE(shownText(bar, "messageTitle"), QStringLiteral("Title 1"));
        QCOMPARE(shownText(bar, "messageText"), QStringLiteral("Message 1"));
    }

    void messagesWaitInTheirOrder()
    {
        MessageBar bar;
        show(bar, 1);
        show(bar, 2);
        show(bar, 3);
        QCOMPARE(bar.title(), QStringLiteral("Title 1"));
        QCOMPARE(shownText(bar, "messageMore"), QStringLiteral("2 more"));

        bar.dismiss();

        QCOMPARE(bar.title(), QStringLiteral("Title 2"));
        QCOMPARE(bar.count(), 2);
    }

    void aMessageThatWaitsIsNotRepeated()
    {
        MessageBar bar;
        show(bar, 1);
        show(bar, 2);

        show(bar, 2);
        show(bar, 1);

        QCOMPARE(bar.count(), 2);
    }

    void theLastDismissalHidesTheBar()
    {
        MessageBar bar;
        bar.show();
        show(bar, 1);

        QTest::mouseClick(bar.findChild<QToolButton*>(), Qt::LeftButton);

        QVERIFY(!bar.isVisible());
        QCOMPARE(bar.title(), QString());
    }

    void escapeDismisses()
    {
        MessageBar bar;
        show(bar, 1);
        show(bar, 2);

        QTest::keyClick(bar.findChild<QToolButton*>(), Qt::Key_Escape);

        QCOMPARE(bar.title(), QStringLiteral("Title 2"));
    }

    void dismissingNothingDoesNothing()
    {
        MessageBar bar;

        bar.dismiss();

        QCOMPARE(bar.count(), 0);
    }

    void markupIsShownAsText()
    {
        MessageBar bar;

        bar.showMessage(QStringLiteral("<b>x</b>"), QStringLiteral("a < b"));

        QCOMPARE(bar.findChild<QLabel*>(QStringLiteral("messageTitle"))->textFormat(), Qt::PlainText);
        QCOMPARE(bar.findChild<QLabel*>(QStringLiteral("messageText"))->textFormat(), Qt::PlainText);
    }

    void theFocusStaysWhereItIs()
    {
        QWidget window;
        auto* button = new QToolButton(&window);
        auto* bar = new MessageBar(&window);
        button->setFocusPolicy(Qt::StrongFocus);
        window.show();
        window.activateWindow();
        button->setFocus();

        show(*bar, 1);

        QCOMPARE(window.focusWidget(), button);
    }
};

QTEST_MAIN(TestMessageBar)
#include "tst_message_bar.moc"
