// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// A robot of one key, and both models on it: what a user of the installed package writes.
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key_list_model.h>
#include <robotconnection/connection_manager.h>
#include <robotconnection/memory_interface.h>

#include <QCoreApplication>
#include <QFutureInterface>
#include <QTextStream>

#include <boost/make_shared.hpp>

namespace {

QFuture<QStringList> finishedList(const QStringList& names)
{
    QFutureInterface<QStringList> list;
    list.reportStarted();
    list.reportResult(names);
    list.reportFinished();
    return list.future();
}

class Memory : public Velk::MemoryInterface
{
public:
    QFuture<QStringList> getDataList() override { return finishedList({QStringLiteral("Arm")}); }
    QFuture<QStringList> getEventList() override { return finishedList({}); }
    QFuture<QStringList> getMicroEventList() override { return finishedList({}); }
    void watchKey(const QString&, int) override {}
    void unwatchKey(const QString&) override {}
    void unwatchAll() override {}
    void startWatcher(int, int) override {}
    void stopWatcher() override {}
    void setGatherPeriod(int) override {}
    void setSamplingPeriod(int) override {}
    void isRealTimeSupported(QObject* receiver, const char* member) override
    {
        QMetaObject::invokeMethod(receiver, member, Qt::QueuedConnection, Q_ARG(bool, true));
    }
};

class Connection : public Velk::ConnectionManager
{
public:
    boost::shared_ptr<Velk::MemoryInterface> memoryInterface() override { return memory; }
    bool isConnected() const override { return true; }

    boost::shared_ptr<Memory> memory = boost::make_shared<Memory>();
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    Connection connection;
    Velk::DisplayedMemoryKeyListModel model(&connection);
    emit connection.connectionEstablished();
    Velk::MemoryKeyListModel catalogue(&connection, {});
    QObject::connect(&catalogue, &Velk::MemoryKeyListModel::ready, [&] {
        model.addKeys(catalogue.keys());
        emit connection.memory->dataGathered({{QStringLiteral("Arm"), {{1.0, 42}}}});
        const QSet<Velk::DisplayedMemoryKey> keys = model.displayedKeys();
        for (const Velk::DisplayedMemoryKey& displayed : keys) {
            QTextStream(stdout) << "Qt " << QT_VERSION_MAJOR << ": " << displayed.key().name() << ' '
                                << displayed.key().natureToString() << ' ' << displayed.valueHistory().last().toString()
                                << '\n';
        }
        application.quit();
    });
    return application.exec();
}
