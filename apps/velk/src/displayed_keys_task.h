#ifndef APPS_VELK_SRC_DISPLAYED_KEYS_TASK_H
#define APPS_VELK_SRC_DISPLAYED_KEYS_TASK_H

#include "robot_task.h"

#include <memorykeymodel/memory_key.h>

#include <QSet>
#include <QStringList>
#include <QVector>

namespace Velk {

class DisplayedMemoryKeyListModel;

/// Which keys a command displays, and how often they are sampled.
struct DisplayedKeysOptions
{
    QStringList keys; ///< names and patterns
    bool all = false; ///< every key that the robot lists
    int periodMs = 0; ///< 0: the model's own
    int forMs = 0;    ///< how long; 0: until interrupted
};

/// A task on the displayed key set. Prepares it: the keys are chosen from the catalogue, and the sampling period is
/// settled with the robot, before the first key is displayed.
class DisplayedKeysTask : public RobotTask
{
    Q_OBJECT

public:
    DisplayedKeysTask(RobotLink& link, Console& console, int timeoutMs, const DisplayedKeysOptions& options);

protected:
    DisplayedMemoryKeyListModel& model() { return *m_model; }
    const DisplayedKeysOptions& options() const { return m_options; }
    /// Whether the command is to end by itself.
    bool hasEnd() const { return m_options.forMs > 0; }

    /// The keys are chosen, at least one, and the period is settled; nothing is displayed yet. Once.
    virtual void begin(const QVector<MemoryKey>& keys) = 0;
    /// The model reported an error.
    virtual void onModelError(const QString& title, const QString& message);
    /// Tells what was not delivered, and ends the task.
    void finish(int status) override;

    void onListed(const MemoryKeyListModel& catalogue) override;
    void onLost() override;

private Q_SLOTS:
    // By name: the memory service answers the question by invoking it.
    void onRealTimeSupported(bool supported);

private:
    enum RealTimeAnswer
    {
        NotAsked,
        Asked,
        Unsupported,
        Supported
    };

    void onKeysUpdated();
    void beginWhenPrepared();
    void choosePeriod();
    bool isPeriodLimitKnown();

    DisplayedKeysOptions m_options;
    DisplayedMemoryKeyListModel* m_model;
    QSet<MemoryKey> m_listedKeys;
    bool m_isListed = false;
    bool m_isModelReady = false;
    RealTimeAnswer m_realTime = NotAsked;
    const int m_minPeriodWithoutRealTime;
};

} // namespace Velk

#endif
