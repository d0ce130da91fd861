// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "embedded_subject.h"

#include <connections/simulated/simulated_feed.h>

int main(int argc, char** argv)
{
    return Velk::runContractSuite(argc, argv, [] {
        return std::make_unique<Velk::EmbeddedSubject>(
            std::make_shared<Velk::SimulatedFeed>(Velk::SimulatedRobot::Parameters()));
    });
}
