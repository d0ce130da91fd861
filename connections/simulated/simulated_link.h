#ifndef CONNECTIONS_SIMULATED_SIMULATED_LINK_H
#define CONNECTIONS_SIMULATED_SIMULATED_LINK_H

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_loop.h>
#include <connections/simulated/simulated_export.h>
#include <connections/simulated/simulated_robot.h>

namespace Velk {

/// The link to a simulated robot of its own, which runs in real time on its own thread while the link is open, and
/// goes on where it stopped when it is opened again.
class SIMULATED_EXPORT SimulatedLink : public EmbeddedLink
{
    Q_OBJECT

public:
    explicit SimulatedLink(const SimulatedRobot::Parameters& parameters, QObject* parent = nullptr);
    ~SimulatedLink() override;

    /// The link that a URL "sim:[?seed=N][&keys=N]" names; null when the URL is not valid, with *error, if given, set
    /// to a sentence that says what is wrong and what is possible.
    static std::unique_ptr<SimulatedLink> fromUrl(const QString& url, QString* error);

    /// The largest number of extra keys.
    static constexpr int maxExtraKeys = 10000000;

    QString url() const override;

protected:
    void startRobot() override;
    void stopRobot() override;

private:
    void prepareRobot();

    const SimulatedRobot::Parameters m_parameters;
    SimulatedRobot m_robot; // used on the loop's thread only
    int m_run = 0;
    RobotLoop m_loop; // last: its thread ends before what it uses
};

} // namespace Velk

#endif
