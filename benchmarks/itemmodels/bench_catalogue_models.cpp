// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "benchmarks/core/bench_robot.h"
#include "report.h"

#include <itemmodels/catalogue_filter_model.h>
#include <itemmodels/catalogue_tree_model.h>
#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>

namespace Velk {

namespace {

QStringList nestedNames(int count)
{
    static const char* const signalNames[] = {"Position", "Velocity", "Torque", "Temperature", "Status/Code"};
    QStringList names;
    names.reserve(count);
    for (int i = 0; i < count; ++i)
        names << QStringLiteral("Device/Unit%1/Joint%2/%3")
                     .arg(i / 100)
                     .arg(i / 5 % 20)
                     .arg(QLatin1String(signalNames[i % 5]));
    return names;
}

struct KeyPresses
{
    double worst = 0.0;
    double sum = 0.0;
    int count = 0;
};

// Types the text into the filter, character by character, and deletes it again. A press ends when the table and the
// tree have shown the result.
KeyPresses typeText(CatalogueFilterModel& filter, const CatalogueTreeModel& tree, const QString& text)
{
    KeyPresses presses;
    const auto press = [&](const QString& typed) {
        const double ms = millisecondsOf([&] {
            filter.setText(typed);
            readFirstRows(filter);
            readFirstRows(tree);
        });
        presses.worst = std::max(presses.worst, ms);
        presses.sum += ms;
        ++presses.count;
        filter.finishFiltering();
    };
    for (int length = 1; length <= text.size(); ++length)
        press(text.left(length));
    for (int length = int(text.size()) - 1; length >= 0; --length)
        press(text.left(length));
    return presses;
}

void printTyping(const char* what, CatalogueFilterModel& filter, const CatalogueTreeModel& tree, const char* text)
{
    const KeyPresses presses = typeText(filter, tree, QString::fromUtf8(text));
    char line[100];
    std::snprintf(line, sizeof line, "a key press of \"%s\", %s: worst", text, what);
    printRow(line, presses.worst, "ms");
    printRow("  on average", presses.sum / presses.count, "ms");
}

} // namespace

void benchCatalogueModels(int names)
{
    std::printf("%d names\n", names);
    BenchConnection connection;
    connection.memory->dataNames = nestedNames(names);
    MemoryKeyListModel catalogue(&connection, {});

    // Connected before the models: the clock starts when ready() is emitted.
    QElapsedTimer sinceReady;
    bool isReady = catalogue.isReady();
    QObject::connect(&catalogue, &MemoryKeyListModel::ready, &connection, [&] {
        sinceReady.start();
        isReady = true;
    });
    CatalogueModel table;
    CatalogueFilterModel filter(&table);
    CatalogueTreeModel tree(&filter);
    table.setCatalogue(&catalogue);
    while (!isReady)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    readFirstRows(filter);
    readFirstRows(tree);
    printRow("from ready() to the first rows of table and tree", double(sinceReady.nsecsElapsed()) / 1e6, "ms");

    printTyping("case counts", filter, tree, "Torque");
    filter.setFilterCaseSensitivity(Qt::CaseInsensitive);
    printTyping("case does not count", filter, tree, "torque");
    printTyping("wildcards", filter, tree, "unit1*status");
    printTyping("wildcards with a set", filter, tree, "joint[1-3]/?or");
    filter.setSyntax(CatalogueFilterModel::RegularExpression);
    printTyping("a regular expression", filter, tree, "joint1\\d/(pos|vel)");
    filter.setText(QString());

    printRow("a nature switched off and on", millisecondsOf([&] {
                 filter.setNatureShown(DataNature, false);
                 filter.setNatureShown(DataNature, true);
                 readFirstRows(filter);
                 readFirstRows(tree);
             }),
             "ms");
    printRow("a key that the user types in",
             millisecondsOf([&] { catalogue.addUserKey(QStringLiteral("Device/Unit5/Mine")); }), "ms");
    printRow("a check box", millisecondsOf([&] { table.setSelected(names / 2, true); }), "ms");
    printRow("sorted by description",
             millisecondsOf([&] { filter.sort(CatalogueModel::DescriptionColumn, Qt::DescendingOrder); }), "ms");
}

} // namespace Velk
