// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/clear_model.h"
#include "support/fuzz_time.h"
#include "support/recording_robot.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryFile>
#include <QTest>

#include <algorithm>
#include <utility>

using namespace Velk;

namespace {

/// The models and the clear model, which get the same random calls.
class CallSequence
{
public:
    explicit CallSequence(quint32 seed)
        : m_random(seed)
        , m_robot({})
        , m_memory(m_robot.connection.memory)
        , m_clear([this] { return m_robot.columns(); })
        , m_seed(seed)
    {
        QObject::disconnect(&m_robot.model, nullptr, &m_robot.connection, nullptr);
        using Model = DisplayedMemoryKeyListModel;
        logWholeKeys("keysAdded", &Model::keysAdded);
        logWholeKeys("keysRemoved", &Model::keysRemoved);
        logWholeKeys("keysUpdated", &Model::keysUpdated);
        QStringList* const log = &m_robot.connection.log;
        QObject::connect(&m_robot.model, &Model::robotConnected, &m_robot.connection,
                         [=](bool on) { log->append(on ? "robotConnected true" : "robotConnected false"); });
        QObject::connect(&m_robot.model, &Model::recording, &m_robot.connection,
                         [=](bool on) { log->append(on ? "recording true" : "recording false"); });
        QObject::connect(&m_robot.model, &Model::minSamplingPeriodUpdated, &m_robot.connection,
                         [=](int period) { log->append(QString("minSamplingPeriodUpdated %1").arg(period)); });
        QObject::connect(&m_robot.model, &Model::sampligPeriodUpdated, &m_robot.connection,
                         [=](int period) { log->append(QString("sampligPeriodUpdated %1").arg(period)); });
        QObject::connect(&m_robot.model, &Model::error, &m_robot.connection,
                         [=](const QString& type, const QString& message) {
                             log->append(QString("error [%1] %2").arg(type, message));
                         });
        m_robot.connection.connected = false;
    }

    /// Does one random operation on both. Returns false when they differ afterwards.
    bool step()
    {
        const QString operation = perform();
        m_past << operation;
        return same("log", sortedCalls(m_robot.takeLog()), sortedCalls(m_clear.takeLog())) &&
               same("displayed keys", text(m_robot.model.displayedKeys()), m_clear.displayedText()) &&
               same("selected keys", names(m_robot.model.selectedKeys()), m_clear.selectedNames()) &&
               same("keys held by the application", m_heldText, heldText()) &&
               same("record file", fileBytes(), {QString::fromUtf8(m_clear.fileBytes())});
    }

private:
    template <typename Signal>
    void logWholeKeys(const char* name, Signal signal)
    {
        QObject::connect(&m_robot.model, signal, &m_robot.connection,
                         [this, name](const QSet<DisplayedMemoryKey>& keys) {
                             m_robot.connection.log << (QStringList(name) + text(keys)).join(' ');
                             if (m_random.bounded(20) == 0)
                                 hold(keys);
                         });
    }

    QString perform()
    {
        switch (m_random.bounded(24)) {
        case 0:
        case 1: {
            const QStringList some = someNames();
            m_robot.model.addKeys(keySet(some));
            m_clear.addKeys(some);
            return "addKeys " + some.join(' ');
        }
        case 2: {
            const QStringList some = someNames();
            m_robot.model.removeKeys(keySet(some));
            m_clear.removeKeys(some);
            return "removeKeys " + some.join(' ');
        }
        case 3: {
            const QStringList some = someNames();
            m_robot.model.setSelectedKeys(keySet(some));
            m_clear.setSelectedKeys(some);
            return "setSelectedKeys " + some.join(' ');
        }
        case 4: {
            const bool ownPeriods = m_random.bounded(2);
            m_robot.model.startWatcher(ownPeriods);
            m_clear.startWatcher(ownPeriods);
            return "startWatcher";
        }
        case 5:
            m_robot.model.stopWatcher();
            m_clear.stopWatcher();
            return "stopWatcher";
        case 6: {
            const int period = QList<int>{-1, 5, 10, 50, 199, 200, 201, 1000, 9999990, 10000000}[m_random.bounded(10)];
            m_robot.model.setSamplingPeriod(period);
            m_clear.setSamplingPeriod(period);
            return QString("setSamplingPeriod %1").arg(period);
        }
        case 7: {
            if (m_memory->fetchCount() == 0)
                return "nothing";
            const bool supported = m_random.bounded(2);
            m_memory->answerRealTimeSupported(supported);
            m_clear.answerRealTimeSupported(supported);
            return "answerRealTimeSupported";
        }
        case 8:
        case 9: {
            const bool isConnected = m_random.bounded(3) != 0;
            isConnected ? m_robot.connection.establish() : m_robot.connection.lose();
            m_clear.connectionChanged(isConnected);
            return isConnected ? "establish" : "lose";
        }
        case 10:
        case 11: {
            if (m_finished == m_memory->fetchCount())
                return "nothing";
            const QStringList data = someNames();
            const QStringList events = someNames();
            const QStringList microEvents = someNames();
            m_memory->finishLists(data, events, microEvents, m_finished);
            QCoreApplication::processEvents();
            m_clear.finishLists(m_finished, data, events, microEvents);
            ++m_finished;
            return "finishLists";
        }
        case 12:
            m_robot.model.startRecording();
            m_clear.startRecording();
            return "startRecording";
        case 13:
            m_robot.model.stopRecording();
            m_clear.stopRecording();
            return "stopRecording";
        case 14:
            if (m_clear.isRecording())
                return "nothing";
            delete m_robot.model.takeRecordFile();
            m_clear.dropRecordFile();
            return "take the file";
        case 15:
            m_clear.hasMemory = !m_clear.hasMemory;
            m_robot.connection.memory = m_clear.hasMemory ? m_memory : nullptr;
            return "memory interface comes or goes";
        default: {
            // Like a robot: the same keys in most batches, with other values.
            if (m_random.bounded(4) == 0)
                m_deliveredNames = someNames();
            Batch batch;
            for (const QString& name : std::as_const(m_deliveredNames)) {
                Samples samples;
                for (int count = int(m_random.bounded(3)); count >= 0; --count)
                    samples.insert(m_time + m_random.bounded(5) * 0.125, anyValue());
                if (m_random.bounded(20) == 0)
                    samples.clear();
                batch.insert(name, samples);
            }
            m_time += m_random.bounded(4) * 0.1;
            m_memory->deliver(batch);
            m_clear.deliver(batch);
            return "deliver " + m_deliveredNames.join(' ');
        }
        }
    }

    QStringList someNames()
    {
        static const QStringList all{"A",  "B",  "b",  "Base/X", "Base/Y", "Q\"t", "",   "Gr\u00f6\u00dfe",
                                     "K1", "K2", "K3", "K4",     "K5",     "K6",   "K7", "K8",
                                     "K9", "L1", "L2", "L3",     "L4",     "L5",   "L6", "L7"};
        QStringList some;
        const quint32 share = m_random.bounded(1, 9);
        for (const QString& name : all) {
            if (m_random.bounded(9u) < share)
                some << name;
        }
        return some;
    }

    QVariant anyValue()
    {
        switch (m_random.bounded(6)) {
        case 0:
            return m_random.generateDouble() * 1000;
        case 1:
            return int(m_random.bounded(100000));
        case 2:
            return m_random.bounded(2) == 1;
        case 3:
            return QString("text \"%1\"").arg(m_random.bounded(10));
        case 4:
            return QVariant();
        default:
            return qlonglong(m_random.generate64());
        }
    }

    void hold(const QSet<DisplayedMemoryKey>& keys)
    {
        m_held = keys;
        m_heldText = text(keys);
    }
    QStringList heldText() const { return text(m_held); }

    static QStringList text(const QSet<DisplayedMemoryKey>& keys)
    {
        QMap<QString, QString> result;
        for (const DisplayedMemoryKey& displayed : keys) {
            const MemoryKey& memoryKey = displayed.key();
            result.insert(memoryKey.name(), QString("%1/%2/%3{%4}")
                                                .arg(memoryKey.name())
                                                .arg(memoryKey.description())
                                                .arg(int(memoryKey.nature()))
                                                .arg(samplesText(displayed.valueHistory())));
        }
        return result.values();
    }

    /// Sorts calls that were made in the order of a set, which is arbitrary.
    static QStringList sortedCalls(QStringList log)
    {
        const auto isKeyCall = [](const QString& line) {
            return line.startsWith("watchKey") || line.startsWith("unwatchKey");
        };
        for (auto begin = std::find_if(log.begin(), log.end(), isKeyCall); begin != log.end();) {
            const auto end = std::find_if_not(begin, log.end(), isKeyCall);
            std::sort(begin, end);
            begin = std::find_if(end, log.end(), isKeyCall);
        }
        return log;
    }

    QStringList fileBytes() const
    {
        QTemporaryFile* const file = m_robot.recordFile();
        return {file ? QString::fromUtf8(m_robot.recorded()) : QString()};
    }

    bool same(const char* what, const QStringList& product, const QStringList& clear)
    {
        if (product == clear)
            return true;
        qWarning().noquote() << what << "differ, seed" << m_seed
                             << "after\n  " + m_past.mid(m_past.size() - 12).join("\n  ")
                             << "\nproduct:\n  " + product.join("\n  ") << "\nclear model:\n  " + clear.join("\n  ");
        return false;
    }

    QRandomGenerator m_random;
    RecordingRobot m_robot;
    boost::shared_ptr<FakeMemoryInterface> m_memory;
    ClearModel m_clear;
    quint32 m_seed;
    QStringList m_past;
    QStringList m_deliveredNames{"A", "B", "K1", "K2"};
    QSet<DisplayedMemoryKey> m_held;
    QStringList m_heldText;
    int m_finished = 0;
    double m_time = 0.0;
};

} // namespace

class TestAgainstClearModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyCallsHaveTheEffectsOfTheClearModel();
};

void TestAgainstClearModel::anyCallsHaveTheEffectsOfTheClearModel()
{
    const QDeadlineTimer time = fuzzTime();
    int sequences = 0;
    while (!time.hasExpired()) {
        CallSequence sequence(QRandomGenerator::global()->generate());
        for (int i = 0; i < 150; ++i)
            QVERIFY(sequence.step());
        ++sequences;
    }
    QVERIFY(sequences > 0);
}

QTEST_GUILESS_MAIN(TestAgainstClearModel)
#include "tst_against_clear_model.moc"
