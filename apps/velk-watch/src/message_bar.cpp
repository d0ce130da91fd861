// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "message_bar.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace Velk {

MessageBar::MessageBar(QWidget* parent)
    : QFrame(parent)
    , m_title(new QLabel(this))
    , m_text(new QLabel(this))
    , m_more(new QLabel(this))
    , m_dismissButton(new QToolButton(this))
{
    setObjectName(QStringLiteral("messageBar"));
    setAccessibleName(tr("Messages"));
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);

    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_title->setObjectName(QStringLiteral("messageTitle"));
    m_text->setObjectName(QStringLiteral("messageText"));
    m_more->setObjectName(QStringLiteral("messageMore"));
    for (QLabel* label : {m_title, m_text}) {
        // Text of a robot or a file system is never interpreted as rich text.
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label->setForegroundRole(QPalette::ToolTipText);
    }
    m_more->setForegroundRole(QPalette::ToolTipText);
    m_dismissButton->setObjectName(QStringLiteral("dismissMessage"));
    m_dismissButton->setText(tr("&Dismiss"));
    m_dismissButton->setToolTip(tr("Dismiss this message (Escape)"));
    m_dismissButton->setFocusPolicy(Qt::StrongFocus);
    connect(m_dismissButton, &QToolButton::clicked, this, &MessageBar::dismiss);

    auto* icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(24, 24));
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_title);
    texts->addWidget(m_text);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addLayout(texts, 1);
    layout->addWidget(m_more);
    layout->addWidget(m_dismissButton);
    updateView();
}

QString MessageBar::title() const
{
    return m_messages.isEmpty() ? QString() : m_messages.first().title;
}

QString MessageBar::message() const
{
    return m_messages.isEmpty() ? QString() : m_messages.first().text;
}

void MessageBar::showMessage(const QString& title, const QString& message)
{
    const auto isSame = [&](const Message& other) { return other.title == title && other.text == message; };
    if (std::any_of(m_messages.cbegin(), m_messages.cend(), isSame))
        return;
    m_messages.append({title, message});
    updateView();
}

void MessageBar::dismiss()
{
    if (!m_messages.isEmpty())
        m_messages.removeFirst();
    updateView();
}

void MessageBar::dismissAll()
{
    m_messages.clear();
    updateView();
}

void MessageBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        dismiss();
    else
        QFrame::keyPressEvent(event);
}

void MessageBar::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange && m_title) {
        QFont bold = font();
        bold.setBold(true);
        m_title->setFont(bold);
    }
}

void MessageBar::updateView()
{
    m_title->setText(title());
    m_text->setText(message());
    m_text->setVisible(!message().isEmpty());
    const int others = count() - 1;
    m_more->setText(others > 0 ? tr("%n more", nullptr, others) : QString());
    m_more->setVisible(others > 0);
    setAccessibleDescription(m_messages.isEmpty() ? QString() : QStringLiteral("%1. %2").arg(title(), message()));
    // A screen reader reads the message; the focus stays where the user works.
    if (!m_messages.isEmpty()) {
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
    setVisible(!m_messages.isEmpty());
}

} // namespace Velk
