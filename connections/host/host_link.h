#ifndef CONNECTIONS_HOST_HOST_LINK_H
#define CONNECTIONS_HOST_HOST_LINK_H

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_loop.h>
#include <connections/host/host_export.h>
#include <connections/host/host_robot.h>

namespace Velk {

/// The link to the computer that this program runs on. Its figures are read on a thread of its own while the link is
/// open. It has no real-time sampling: the figures do not change that fast.
class HOST_EXPORT HostLink : public EmbeddedLink
{
    Q_OBJECT

public:
    /// `root` is where proc and sys are found.
    explicit HostLink(const QString& root = QStringLiteral("/"), QObject* parent = nullptr);
    ~HostLink() override;

    /// The link that the URL "host:" names; null when the URL is another one, with *error, if given, set to a sentence
    /// that says what is wrong and what is possible.
    static std::unique_ptr<HostLink> fromUrl(const QString& url, QString* error);

    QString url() const override;

protected:
    void startRobot() override;
    void stopRobot() override;

private:
    void prepareRobot();
    void readRobot();

    HostRobot m_robot; // used on the loop's thread only
    int m_run = 0;
    RobotLoop m_loop; // last: its thread ends before what it uses
};

} // namespace Velk

#endif
