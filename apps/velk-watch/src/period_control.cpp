#include "period_control.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>

namespace Velk {

PeriodControl::PeriodControl(DisplayedMemoryKeyListModel* model, QObject* parent)
    : QObject(parent)
    , m_model(model)
    , m_askedPeriod(model->samplingPeriod())
{
    connect(m_model, &DisplayedMemoryKeyListModel::minSamplingPeriodUpdated, this, &PeriodControl::askAgain);
    connect(m_model, &DisplayedMemoryKeyListModel::sampligPeriodUpdated, this, &PeriodControl::changed);
}

void PeriodControl::ask(int periodMs)
{
    m_askedPeriod = periodMs;
    askAgain();
}

void PeriodControl::askAgain()
{
    m_model->setSamplingPeriod(m_askedPeriod);
    // Without a robot the model keeps the period and says nothing.
    emit changed();
}

int PeriodControl::periodInForce() const
{
    return m_model->samplingPeriod();
}

QString PeriodControl::text() const
{
    return text(m_askedPeriod, m_model->samplingPeriod(), m_model->minSamplingPeriod(), m_model->maxSamplingPeriod());
}

QString PeriodControl::text(int asked, int inForce, int min, int max)
{
    if (asked < min && inForce >= min)
        return tr("%1 ms asked, this robot gives %2 ms and more: %3 ms in force").arg(asked).arg(min).arg(inForce);
    if (asked > max)
        return tr("%1 ms asked, this robot gives %2 ms at most: %3 ms in force").arg(asked).arg(max).arg(inForce);
    if (inForce < min)
        return tr("%1 ms in force, below the %2 ms that this robot gives").arg(inForce).arg(min);
    return tr("%1 ms in force, this robot gives %2 ms and more").arg(inForce).arg(min);
}

} // namespace Velk
