#include <connections/host/host_link.h>

#include <connections/embedded/robot_memory.h>

#include <QUrl>

#include <chrono>

namespace Velk {

HostLink::HostLink(const QString& root, QObject* parent)
    : EmbeddedLink(std::make_shared<RobotMemory>(), parent)
    , m_robot(memory(), root)
    , m_loop(
          std::chrono::milliseconds(HostRobot::readingPeriodMs), [this] { prepareRobot(); }, [this] { readRobot(); })
{
    setRealTimeSupported(false);
}

HostLink::~HostLink()
{
    m_loop.stop();
}

std::unique_ptr<HostLink> HostLink::fromUrl(const QString& url, QString* error)
{
    const QUrl parsed(url, QUrl::StrictMode);
    if (parsed.isValid() && parsed.toString(QUrl::FullyEncoded) == QLatin1String("host:"))
        return std::make_unique<HostLink>();
    if (error && parsed.hasQuery())
        *error = tr("This computer has no parameter “%1”. Its URL is written host: without any.")
                     .arg(parsed.query(QUrl::FullyDecoded));
    else if (error)
        *error = tr("“%1” is not the URL of this computer. It is written host: and nothing more.").arg(url);
    return nullptr;
}

QString HostLink::url() const
{
    return QStringLiteral("host:");
}

void HostLink::startRobot()
{
    ++m_run;
    m_loop.start();
}

void HostLink::stopRobot()
{
    m_loop.stop();
    ++m_run; // what the robot has posted already belongs to the run that ended
}

void HostLink::prepareRobot()
{
    const int run = m_run; // read on the loop's thread, and changed only while there is none
    const bool isReadable = m_robot.isReadable();
    readRobot();
    QMetaObject::invokeMethod(
        this,
        [this, run, isReadable] {
            if (run != m_run)
                return;
            if (isReadable)
                robotStarted();
            else
                robotFailed(tr("No figures of this computer"),
                            tr("Nothing can be read below /proc.\nThe figures are available on Linux, with /proc "
                               "mounted."));
        },
        Qt::QueuedConnection);
}

void HostLink::readRobot()
{
    m_robot.read(std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count());
}

} // namespace Velk
