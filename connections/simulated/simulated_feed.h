// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_SIMULATED_SIMULATED_FEED_H
#define CONNECTIONS_SIMULATED_SIMULATED_FEED_H

#include <connections/embedded/loop_feed.h>
#include <connections/simulated/simulated_export.h>
#include <connections/simulated/simulated_robot.h>

#include <QCoreApplication>

#include <memory>

namespace Velk {

/// A simulated robot that runs in real time while its link is open, and goes on where it stopped when it is opened
/// again.
class SIMULATED_EXPORT SimulatedFeed : public LoopFeed
{
    Q_DECLARE_TR_FUNCTIONS(Velk::SimulatedFeed)

public:
    explicit SimulatedFeed(const SimulatedRobot::Parameters& parameters);
    ~SimulatedFeed() override;

    /// The robot that a URL "sim:[?seed=N][&keys=N]" names; null when the URL is not valid, with *error, if given, set
    /// to a sentence that says what is wrong and what is possible.
    static std::shared_ptr<SimulatedFeed> fromUrl(const QString& url, QString* error);

    /// The largest number of extra keys.
    static constexpr int maxExtraKeys = 10000000;

    QString url() const override;

protected:
    void prepare() override;
    void step() override;

private:
    const SimulatedRobot::Parameters m_parameters;
    SimulatedRobot m_robot; // used on the loop's thread only
};

} // namespace Velk

#endif
