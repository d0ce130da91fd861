// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "report.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    for (int names : {1000, 20000, 100000})
        Velk::benchCatalogueModels(names);
    for (int keys : {50, 1000, 5000})
        Velk::benchWatchModels(keys, 5);
    return 0;
}
