#include "displayed_keys_task.h"

#include "console.h"
#include "key_choice.h"

#include <connections/link/robot_link.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key_list_model.h>
#include <robotconnection/memory_interface.h>

namespace Velk {

DisplayedKeysTask::DisplayedKeysTask(RobotLink& link, Console& console, int timeoutMs,
                                     const DisplayedKeysOptions& options)
    : RobotTask(link, console, timeoutMs)
    , m_options(options)
    , m_model(new DisplayedMemoryKeyListModel(&link))
    , m_minPeriodWithoutRealTime(m_model->minSamplingPeriod())
{
    connect(m_model, &DisplayedMemoryKeyListModel::keysUpdated, this, &DisplayedKeysTask::onKeysUpdated);
    connect(m_model, &DisplayedMemoryKeyListModel::minSamplingPeriodUpdated, this,
            &DisplayedKeysTask::beginWhenPrepared);
    connect(m_model, &DisplayedMemoryKeyListModel::error, this,
            [this](const QString& title, const QString& message) { onModelError(title, message); });
}

void DisplayedKeysTask::onModelError(const QString& title, const QString& message)
{
    tell(title, message);
}

void DisplayedKeysTask::finish(int status)
{
    if (isFinished())
        return;
    const SampleLosses losses = link().losses();
    if (losses.total() > 0) {
        QStringList causes;
        if (losses.skippedTicks > 0)
            causes << QStringLiteral("%1 sampling ticks skipped, the robot was too slow").arg(losses.skippedTicks);
        if (losses.dropped > 0)
            causes << QStringLiteral("%1 occurrences dropped, they came too fast").arg(losses.dropped);
        if (losses.trimmed > 0)
            causes << QStringLiteral("%1 occurrences discarded by the robot").arg(losses.trimmed);
        if (losses.missedTicks > 0)
            causes
                << QStringLiteral("%1 sampling ticks missed, this program was busy or stopped").arg(losses.missedTicks);
        tell(QStringLiteral("Not everything was delivered"), causes.join(QStringLiteral("; ")));
    }
    RobotTask::finish(status);
}

// The preparations. After a connection the model asks for the robot's limits and rebuilds its keys from a catalogue of
// its own, which would drop keys that are displayed before it is ready.

void DisplayedKeysTask::onListed(const MemoryKeyListModel& catalogue)
{
    m_listedKeys = catalogue.keys();
    m_isListed = true;
    beginWhenPrepared();
}

void DisplayedKeysTask::onKeysUpdated()
{
    // Without a connection it is a late catalogue of the one before; the next one brings another.
    if (m_isModelReady || !link().isConnected())
        return;
    m_isModelReady = true;
    beginWhenPrepared();
}

void DisplayedKeysTask::onLost()
{
    if (isWorking())
        return;
    m_isListed = false;
    m_isModelReady = false;
    m_realTime = NotAsked;
}

void DisplayedKeysTask::beginWhenPrepared()
{
    if (isWorking() || isFinished() || !m_isListed || !m_isModelReady || !isPeriodLimitKnown())
        return;
    const KeyChoice choice = chooseKeys(m_listedKeys, m_options.keys, m_options.all);
    m_listedKeys.clear();
    setWorking();
    choosePeriod();
    for (const QString& pattern : choice.patternsWithoutAMatch)
        tell(QStringLiteral("No key of the robot matches %1.").arg(pattern));
    for (const QString& name : choice.unlistedNames)
        tell(QStringLiteral("The robot does not list %1: UNKNOWN, watched all the same.").arg(name));
    if (choice.keys.isEmpty()) {
        tell(QStringLiteral("There is no key to display"),
             QStringLiteral("see `velk keys` for those that %1 lists.").arg(link().url()));
        finish(NoKeys);
        return;
    }
    begin(choice.keys);
}

void DisplayedKeysTask::choosePeriod()
{
    const int wanted = m_options.periodMs;
    if (wanted == 0)
        return;
    m_model->setSamplingPeriod(wanted);
    const int granted = m_model->samplingPeriod();
    if (granted != wanted)
        tell(QStringLiteral("%1 ms asked for; this robot grants %2 ms.").arg(wanted).arg(granted));
}

// The model keeps the period within limits which the robot tells in its own time, later than its keys perhaps.
bool DisplayedKeysTask::isPeriodLimitKnown()
{
    if (m_options.periodMs == 0 || m_options.periodMs >= m_model->minSamplingPeriod())
        return true;
    if (m_realTime == NotAsked) {
        // The model has asked too, and tells a change only: it would say nothing about a no.
        const boost::shared_ptr<MemoryInterface> memory = link().memoryInterface();
        if (!memory)
            return false;
        m_realTime = Asked;
        memory->isRealTimeSupported(this, "onRealTimeSupported");
    }
    // After a yes the model's own answer is awaited.
    return m_realTime == Unsupported ||
           (m_realTime == Supported && m_model->minSamplingPeriod() < m_minPeriodWithoutRealTime);
}

void DisplayedKeysTask::onRealTimeSupported(bool supported)
{
    m_realTime = supported ? Supported : Unsupported;
    beginWhenPrepared();
}

} // namespace Velk
