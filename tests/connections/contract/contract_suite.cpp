// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_blocking_tests.h"
#include "contract_connection_tests.h"
#include "contract_list_tests.h"
#include "contract_model_tests.h"
#include "contract_occurrence_tests.h"
#include "contract_sampling_tests.h"
#include "contract_subject.h"
#include "contract_watcher_tests.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QTest>

namespace Velk {

namespace {

/// Whether the program's arguments name test functions of this object, or none at all.
bool isAskedFor(const QObject& tests, const QStringList& arguments)
{
    bool areFunctionsNamed = false;
    for (const QString& argument : arguments.mid(1)) {
        const QByteArray function = argument.section(QLatin1Char(':'), 0, 0).toLatin1() + "()";
        if (tests.metaObject()->indexOfMethod(function) >= 0)
            return true;
        areFunctionsNamed = areFunctionsNamed || !argument.startsWith(QLatin1Char('-'));
    }
    return !areFunctionsNamed;
}

} // namespace

int runContractSuite(int argc, char** argv, const ContractSubjectFactory& createSubject)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    ContractConnectionTests connectionTests(createSubject);
    ContractListTests listTests(createSubject);
    ContractWatcherTests watcherTests(createSubject);
    ContractSamplingTests samplingTests(createSubject);
    ContractOccurrenceTests occurrenceTests(createSubject);
    ContractModelTests modelTests(createSubject);
    ContractBlockingTests blockingTests(createSubject);
    int failures = 0;
    int runs = 0;
    for (QObject* tests : {static_cast<QObject*>(&connectionTests), static_cast<QObject*>(&listTests),
                           static_cast<QObject*>(&watcherTests), static_cast<QObject*>(&samplingTests),
                           static_cast<QObject*>(&occurrenceTests), static_cast<QObject*>(&modelTests),
                           static_cast<QObject*>(&blockingTests)}) {
        if (!isAskedFor(*tests, arguments))
            continue;
        failures += QTest::qExec(tests, arguments);
        ++runs;
    }
    if (runs == 0) {
        qCritical("No test function of that name: %s", qPrintable(arguments.mid(1).join(QLatin1Char(' '))));
        return 1;
    }
    return failures;
}

} // namespace Velk
