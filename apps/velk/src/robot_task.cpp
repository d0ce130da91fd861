#include "robot_task.h"

#include "console.h"

#include <connections/link/robot_link.h>
#include <memorykeymodel/memory_key_list_model.h>

namespace Velk {

RobotTask::RobotTask(RobotLink& link, Console& console, int timeoutMs)
    : m_link(link)
    , m_console(console)
{
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(timeoutMs);
    connect(&m_timeout, &QTimer::timeout, this, &RobotTask::onTimeout);
    connect(&m_link, &RobotLink::failed, this, &RobotTask::onFailed);
}

RobotTask::~RobotTask() = default;

void RobotTask::start()
{
    // Here and not on construction: the models of a derived class follow the same signals and are to see them first.
    connect(&m_link, &ConnectionManager::connectionEstablished, this, &RobotTask::onConnected);
    connect(&m_link, &ConnectionManager::connectionLost, this, &RobotTask::onDisconnected);
    connect(&m_link, &ConnectionManager::disconnected, this, &RobotTask::onDisconnected);
    m_timeout.start();
    m_link.open();
}

void RobotTask::interrupt(int signalNumber)
{
    finish(interruptedBy(signalNumber));
}

void RobotTask::setWorking()
{
    m_isWorking = true;
    m_timeout.stop();
    dropCatalogue();
}

void RobotTask::tell(const QString& text)
{
    m_console.message(text);
}

void RobotTask::tell(const QString& title, const QString& text)
{
    tell(title + QStringLiteral(": ") + text);
}

void RobotTask::finish(int status)
{
    if (m_isFinished)
        return;
    m_isFinished = true;
    m_timeout.stop();
    m_console.setStatusLine(QString());
    emit finished(status);
}

void RobotTask::onConnected()
{
    if (m_isFinished)
        return;
    m_lastFailure.clear();
    if (m_isWorking) {
        onConnectedAgain();
        return;
    }
    dropCatalogue();
    m_catalogue = new MemoryKeyListModel(&m_link, {});
    if (m_catalogue->isReady())
        onCatalogueReady();
    else
        connect(m_catalogue, &MemoryKeyListModel::ready, this, &RobotTask::onCatalogueReady);
}

void RobotTask::onDisconnected()
{
    if (m_isFinished)
        return;
    dropCatalogue();
    onLost();
}

void RobotTask::onCatalogueReady()
{
    if (m_isFinished || m_isWorking || !m_catalogue)
        return;
    // A service that is gone again gives empty lists; the next connection brings the real ones.
    if (!m_link.isConnected())
        return;
    onListed(*m_catalogue);
}

void RobotTask::onFailed(const QString& title, const QString& message)
{
    if (m_isFinished)
        return;
    // A link that keeps trying fails in the same way again and again.
    const QString failure = title + QStringLiteral(": ") + message;
    if (failure != m_lastFailure)
        tell(title, message);
    m_lastFailure = failure;
    if (m_link.state() == RobotLink::Disconnected)
        finish(m_isWorking ? ConnectionLost : NotConnected);
}

void RobotTask::onTimeout()
{
    const QString seconds = QString::number(m_timeout.interval() / 1000.0);
    if (m_link.isConnected())
        tell(QStringLiteral("Robot does not answer"),
             QStringLiteral("%1 is connected but has not told its keys and its limits within %2 s.\n"
                            "Check the robot, or allow more time with --timeout.")
                 .arg(m_link.url(), seconds));
    else
        tell(QStringLiteral("Not connected"),
             QStringLiteral("No connection to %1 within %2 s.\n"
                            "Check that the robot runs and its URL, or allow more time with --timeout.")
                 .arg(m_link.url(), seconds));
    finish(NotConnected);
}

void RobotTask::dropCatalogue()
{
    // Later: this may run in a slot of the catalogue's own signal.
    if (m_catalogue) {
        m_catalogue->disconnect(this);
        m_catalogue->deleteLater();
    }
    m_catalogue.clear();
}

} // namespace Velk
