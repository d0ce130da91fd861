#ifndef APPS_VELK_WATCH_PERIOD_CONTROL_H
#define APPS_VELK_WATCH_PERIOD_CONTROL_H

#include <QObject>
#include <QString>

namespace Velk {

class DisplayedMemoryKeyListModel;

/// The sampling period that the user asked for, and what the robot makes of it.
///
/// The model forgets what was asked once it has bounded it. The control asks again whenever the robot's limit has
/// changed, so that a fast period comes into force as soon as a robot is found to be able to keep it.
class PeriodControl : public QObject
{
    Q_OBJECT

public:
    /// The model must outlive the control, or be its parent.
    explicit PeriodControl(DisplayedMemoryKeyListModel* model, QObject* parent = nullptr);

    /// Milliseconds; the model's own period at first.
    int askedPeriod() const { return m_askedPeriod; }
    void ask(int periodMs);
    /// Milliseconds; what the model samples with.
    int periodInForce() const;

    /// Both in a sentence, with the robot's limit where it matters.
    QString text() const;
    /// The sentence for given figures, in milliseconds.
    static QString text(int asked, int inForce, int min, int max);

Q_SIGNALS:
    /// text() may have changed.
    void changed();

private:
    void askAgain();

    DisplayedMemoryKeyListModel* m_model;
    int m_askedPeriod;
};

} // namespace Velk

#endif
