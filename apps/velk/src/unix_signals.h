// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_UNIX_SIGNALS_H
#define APPS_VELK_SRC_UNIX_SIGNALS_H

#include <QObject>

QT_BEGIN_NAMESPACE
class QSocketNotifier;
QT_END_NAMESPACE

namespace Velk {

/// The signals that ask velk to end (SIGINT, SIGTERM, SIGHUP), delivered by the event loop. One object at a time. The
/// signals stay caught after its end: a signal that comes while velk ends changes nothing.
class UnixSignals : public QObject
{
    Q_OBJECT

public:
    explicit UnixSignals(QObject* parent = nullptr);
    ~UnixSignals() override;

    /// Whether a signal has come at any time. May be called without an object.
    static bool isPending();

    /// Ignores the signals that would end velk at a failed write, whose result is enough: SIGPIPE, and SIGXFSZ for a
    /// limit on the size of files.
    static void ignoreWriteSignals();

Q_SIGNALS:
    void received(int signalNumber);

private:
    void onReadable();

    QSocketNotifier* m_notifier;
};

} // namespace Velk

#endif
