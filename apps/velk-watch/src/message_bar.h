// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_MESSAGE_BAR_H
#define APPS_VELK_WATCH_MESSAGE_BAR_H

#include <QFrame>
#include <QList>

class QLabel;
class QToolButton;

namespace Velk {

/// Shows failures and results above the views, without blocking them: a title and a message, one at a time, the oldest
/// first. Hidden while there is no message.
class MessageBar : public QFrame
{
    Q_OBJECT

public:
    explicit MessageBar(QWidget* parent = nullptr);

    /// The number of messages: the one that is shown and those that wait.
    int count() const { return int(m_messages.size()); }
    /// The title and the text of the message that is shown; empty without one.
    QString title() const;
    QString message() const;

public Q_SLOTS:
    /// Shows the message, or adds it to those that wait. A message that is shown or waits already is not added again:
    /// a repeated failure does not hide the others.
    void showMessage(const QString& title, const QString& message);
    /// Removes the message that is shown and shows the next one.
    void dismiss();
    void dismissAll();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Message
    {
        QString title;
        QString text;
    };

    void updateView();

    QList<Message> m_messages;
    QLabel* m_title;
    QLabel* m_text;
    QLabel* m_more;
    QToolButton* m_dismissButton;
};

} // namespace Velk

#endif
